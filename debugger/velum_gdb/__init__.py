"""gdb's views of velum's types, for programs with libstdc++ on 64-bit little-endian systems."""

import re

import gdb
import gdb.printing

from velum_gdb import maths, names, objects, texts, values
from velum_gdb.printer import PROBLEMS, Printer, complaint

PRINTERS = [(re.compile(pattern), describe) for pattern, describe in (
    (r"velum::iptr<.*", objects.iptr),
    (r"velum::ustring", texts.ustring),
    (r"velum::guid_t", texts.guid),
    (r"velum::byte_vector", texts.bytes_),
    (r"velum::u?any_map", values.map_),
    (r"std::vector<(boost::any|velum::u?any_map)>", values.vector),
    (r"boost::any", lambda value: values.held_by(value, printer_for)),
    (r"math::(vec|quat)<.*", maths.row),
    (r"math::linear_space_n<.*|velum::linear_space3", maths.linear_space),
    (r"math::affine_space<.*|velum::affine_space3", maths.affine_space),
    (r"tessa::mat<.*", maths.matrix),
)]


def printer_for(value):
    """None for a type that isn't velum's."""
    if value.type.strip_typedefs().code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        value = value.referenced_value()
    name = names.of(value.type)
    for pattern, describe in PRINTERS:
        if pattern.fullmatch(name):
            try:
                return describe(value)
            except PROBLEMS as why:
                return Printer(complaint(why))
    return None


class Collection(gdb.printing.PrettyPrinter):
    """For `info pretty-printer` and `disable pretty-printer`."""

    def __call__(self, value):
        return printer_for(value)


def register(objfile):
    gdb.printing.register_pretty_printer(objfile, Collection("velum"), replace=True)
