"""The memory of the program, read without types: what is there even where nobody has debug information."""

import functools
import re
import struct

import gdb


class Broken(Exception):
    """What lies there isn't what it should be."""


def limit():
    """How many bytes or elements a user wants to see at most."""
    return gdb.parameter("print elements") or 1 << 20


def read(address, count):
    return gdb.selected_inferior().read_memory(address % (1 << 64), count).tobytes() if count else b""


def words(address, count):
    return struct.unpack(f"<{count}Q", read(address, 8 * count))


def text_at(address, most):
    """The bytes up to a zero. No piece goes over the end of a page, behind which there may be nothing."""
    text = b""
    while len(text) < most and b"\0" not in text:
        here = address + len(text)
        text += read(here, 64 - here % 64)
    return text.split(b"\0")[0][:most]


def dynamic_class(address):
    """The address and the name of the object that has a virtual table at `address`, by what the compilers agree on: a
    table begins behind the way to the whole object and its `type_info`, which has the name as its second word."""
    table = words(address, 1)[0]
    to_whole, info = struct.unpack("<qQ", read(table - 16, 16))
    mangled = text_at(words(info + 8, 1)[0], 1 << 16).decode("latin-1").lstrip("*")
    if not re.fullmatch(r"[\w.$]+", mangled, re.ASCII):
        raise Broken("no object of any class")
    return (address + to_whole) % (1 << 64), demangled(mangled)


@functools.lru_cache(1000)
def demangled(mangled):
    return gdb.execute(f"demangle -- _ZTI{mangled}", to_string=True).strip().removeprefix("typeinfo for ")


def type_named(name):
    """The type of that name, or `gdb.error`. Compilers write a number among the arguments of a template with its suffix
    or without."""
    if name.endswith("*"):
        return type_named(name[:-1].removesuffix(" const")).pointer()
    try:
        return gdb.lookup_type(name)
    except gdb.error:
        return gdb.lookup_type(re.sub(r"\b(\d+)[ul]+\b", r"\1", name))


def extent(vector):
    """The first element of a std::vector and how many there are."""
    start, end, room = (vector["_M_impl"][name] for name in ("_M_start", "_M_finish", "_M_end_of_storage"))
    size, length = start.type.strip_typedefs().target().sizeof, int(end) - int(start)
    if not int(start) <= int(end) <= int(room) or length % size or int(start) == int(room) != 0:
        raise Broken("no vector, or not made yet")
    if length:
        read(int(end) - size, size)
    return start, length // size


def value_at(address, type):
    return gdb.Value(address).cast(type.pointer()).dereference()
