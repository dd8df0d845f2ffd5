"""Maps of boost::any, vectors of such maps or of boost::any, and what a boost::any holds."""

import gdb

from velum_gdb import memory, names, texts
from velum_gdb.memory import Broken
from velum_gdb.printer import Parts, Printer, array, complaint, plural

NO_MAP = "no map, or not made yet"


def nodes(root, header):
    """The nodes of a red-black tree in order. Each knows the one above it, which tells a tree from other memory."""
    waiting, node, above = [], root, header
    while waiting or node:
        while node:
            color, its_above, left, right = memory.words(node, 4)
            if color % (1 << 32) > 1 or its_above != above or len(waiting) > 128:
                raise Broken(f"no node of a map at 0x{node:x}")
            waiting.append((node, right))
            node, above = left, node
        above, node = waiting.pop()
        yield above


def map_(value):
    type = value.type.strip_typedefs()
    tree = value["_M_t"]["_M_impl"]
    header, count = tree["_M_header"], int(tree["_M_node_count"])
    root, first = int(header["_M_parent"]), int(header["_M_left"])
    if (root == 0) != (count == 0) or first == 0 or int(header["_M_color"]) > 1:
        raise Broken(NO_MAP)
    top = memory.words(root, 4)[1] if root else 0
    if root and memory.words(top, 4)[1] != root:
        raise Broken(NO_MAP)
    key = names.of(type.template_argument(0))

    def parts():
        met = 0
        for met, node in enumerate(nodes(root, top), 1):
            yield "key", texts.at(node + 32, key)
            yield "value", memory.value_at(node + 32 + texts.SIZES[key], type.template_argument(1))
        if met != count:
            raise Broken(f"{met} of {count} entries found")

    return Parts(f"{names.of(type)} with {plural(count, 'entry', 'entries')}", parts, "map")


def vector(value):
    start, length = memory.extent(value)
    return array(f"{names.of(value.type)} of {length}", (start[i] for i in range(length)))


def held_by(value, printer_for):
    """The printer of what a boost::any holds, with the type in front of it."""
    content = int(value["content"])
    if content == 0:
        return Printer("empty")
    _, holder = memory.dynamic_class(content)
    if not holder.startswith("boost::any::holder<"):
        raise Broken("no boost::any, or not made yet")
    type_name = holder.removeprefix("boost::any::holder<")[:-1].strip()
    name = names.short(type_name)
    if name in texts.SIZES:
        return Printer(f"({name}) {texts.at(content + 8, name)}")
    label = name if names.CATALOGUE.fullmatch(name) else f"{name}, outside the catalogue"
    try:
        type = memory.type_named(type_name)
    except gdb.error:
        return Printer(f"({label}) <no debug information about the type>")
    held = memory.value_at(content + max(8, type.alignof), type)
    printer = printer_for(held) or Printer(held.format_string())
    if label != name or not printer.text.startswith(name):
        printer.text = f"({label}) {printer.text}"
    return printer
