"""iptr: the class of the object and how many references there are, which velum/core says where to find."""

import gdb

from velum_gdb import memory, names
from velum_gdb.memory import Broken
from velum_gdb.printer import Parts, Printer, complaint, plural


class Object:
    """The whole object around an interface."""

    def __init__(self, interface):
        self.address, self.class_name = memory.dynamic_class(interface)
        self.name = names.short(self.class_name)

    def value(self):
        return memory.value_at(self.address, memory.type_named(self.class_name))

    def is_within(self, other):
        return other.address <= self.address < other.address + other.value().type.sizeof


def with_bases(value):
    value = value.cast(value.type.strip_typedefs())
    yield value
    for field in value.type.fields():
        if field.is_base_class:
            yield from with_bases(value[field])


def counted(thing, depth=0):
    """The object whose count is that of `thing`, and the count. A nested object (aggregatable.hpp) sends the question
    on to its controlling unknown; any other that is made from the building blocks counts by itself (counted.hpp)."""
    value = thing.value()
    for base in with_bases(value):
        name = base.type.name or ""
        if name.startswith("velum::nested_t<"):
            if int(base["outer"]) == 0 or depth > 16:
                raise Broken("nobody controls it yet")
            return counted(Object(int(base["outer"])), depth + 1)
        if name.startswith("velum::counted_t<"):
            own = value.cast(base.type.template_argument(0))
            return thing, int(own["ref_count"])
    raise Broken("a count of its own")


def description(thing):
    try:
        keeper, count = counted(thing)
    except Broken as why:
        return f"{thing.name}, {complaint(why)}"
    except gdb.error:
        return f"{thing.name}, <no debug information about the class>"
    where = "" if thing.is_within(keeper) else f" within {keeper.name}"
    return f"{thing.name}{where}, {plural(count, 'reference', 'references')}"


def iptr(value):
    pointer = value["pointer_"]
    if int(pointer) == 0:
        return Printer("null")
    thing = Object(int(pointer))

    def parts():
        try:
            yield "object", thing.value().address
        except gdb.error:
            yield "object", pointer

    return Parts(f"{names.of(value.type)} to {description(thing)}", parts)
