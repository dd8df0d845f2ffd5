"""Texts, identifiers and bytes."""

import codecs

import gdb

from velum_gdb import memory
from velum_gdb.memory import Broken
from velum_gdb.printer import Printer, complaint, plural

NO_TEXT = "no text, or not made yet"


def charset():
    """That of the terminal, where gdb tells."""
    try:
        return codecs.lookup(gdb.host_charset()).name
    except (AttributeError, LookupError):
        return "ascii"


def quoted(data, cut=False):
    """As C++ writes it, in letters that the terminal has."""
    escaped = data.replace(b"\\", b"\\\\").replace(b'"', b'\\"').decode("utf-8", "surrogateescape")
    letters = (each if each.isprintable() else "".join(f"\\{byte:03o}" for byte in each.encode("utf-8", "surrogateescape"))
               for each in escaped)
    return '"' + "".join(letters).encode(charset(), "backslashreplace").decode(charset()) + '"' + ("..." if cut else "")


def string(address):
    """Where the bytes are, how many, and room for 15 or the room that there is."""
    start, length, room = memory.words(address, 3)
    if length > (15 if start == address + 16 else room):
        raise Broken(NO_TEXT)
    most = memory.limit()
    return quoted(memory.read(start, min(length, most)), length > most)


def interned(start):
    if start == 0:
        raise Broken(NO_TEXT)
    most = memory.limit()
    text = memory.text_at(start, most + 1)
    return quoted(text[:most], len(text) > most)


# The two kinds are read without their types, as clang may know their names alone.
SIZES = {"std::string": 32, "velum::ustring": 8}


def at(address, name):
    try:
        return string(address) if name == "std::string" else interned(memory.words(address, 1)[0])
    except (gdb.error, Broken) as why:
        return complaint(why)


def ustring(value):
    address = value.address  # a value that a function gave has none
    return Printer(interned(int(value["text_"])) if address is None else at(int(address), "velum::ustring"))


def guid(value):
    data = value["bytes_"]["data"]
    digits = "".join(f"{int(data[i]):02X}" for i in range(16))
    return Printer("{" + "-".join((digits[:8], digits[8:12], digits[12:16], digits[16:20], digits[20:])) + "}")


def bytes_(value):
    start, length = memory.extent(value)
    most = memory.limit()
    shown = memory.read(int(start), min(length, most)).hex(" ").upper()
    title = "velum::byte_vector of " + plural(length, "byte", "bytes")
    return Printer(title + (": " if shown else "") + shown + (" ..." if length > most else ""))
