"""Vectors, quaternions, spaces and matrices, by their elements."""

from velum_gdb import names
from velum_gdb.printer import Parts, array


def elements(value):
    """Those of a vector without the lane that holds none, or all of anything else."""
    field = value[value.type.strip_typedefs().fields()[-1]]
    first, last = field.type.range()
    if names.of(value.type).startswith("math::vec<"):
        last = int(value.type.strip_typedefs().template_argument(1)) - 1
    return [field[i] for i in range(first, last + 1)]


def in_braces(parts):
    return "{" + ", ".join(part if isinstance(part, str) else part.format_string() for part in parts) + "}"


def row(value):
    return array(names.of(value.type), elements(value))


def vectors(space):
    return [in_braces(elements(vector)) for vector in elements(space)]


def linear_space(value):
    return array(names.of(value.type), vectors(value))


def affine_space(value):
    def parts():
        yield "linear", in_braces(vectors(value["linear"]))
        yield "origin", in_braces(elements(value["origin"]))

    return Parts(names.of(value.type), parts)


def matrix(value):
    all, columns = elements(value), int(value.type.strip_typedefs().template_argument(2))
    return array(names.of(value.type), [in_braces(all[i:i + columns]) for i in range(0, len(all), columns)])
