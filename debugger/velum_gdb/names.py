"""Types by the names that the manual has for them."""

import re

TEXT = r"std::(__cxx11::)?basic_string<char(, std::char_traits<char>, std::allocator<char> )?>"
MAP = r"std::map<{0}, boost::any(, std::less<{0} ?>, std::allocator<std::pair<({0} const|const {0}), boost::any> > )?>"
SHORTER = [(re.compile(pattern), short) for pattern, short in (
    (TEXT, "std::string"),
    (MAP.format("std::string"), "velum::any_map"),
    (MAP.format("velum::ustring"), "velum::uany_map"),
    (r"std::vector<([\w:]+), std::allocator<\1 ?> ?>", r"std::vector<\1>"),
    (r"std::vector<unsigned char, sys::aligned_allocator<unsigned char, 64[ul]*> ?>", "velum::byte_vector"),
    (r", math::use_simd_tag>", ">"),
    (r"math::linear_space_n<math::vec<float, 3>, 3>", "velum::linear_space3"),
    (r"math::affine_space<velum::linear_space3 ?>", "velum::affine_space3"),
    (r"velum::detail::outer_of<(.*\S) ?>", r"\1"),
)]

# Whether a stream can carry the type; velum/values/catalogue.hpp has the list.
CATALOGUE = re.compile(
    r"std::string|bool|int|float|double|long long|tessa::mat<(float|double), ([234], 1|3, [34]|4, 4)>"
    r"|tessa::mat<int, [234], 1>|math::vec<(int|float), [234]>|math::quat<float>|velum::(linear|affine)_space3"
    r"|velum::(guid_t|ustring|byte_vector|iptr<velum::i_unknown_t>)|(std::vector<)?velum::u?any_map>?"
    r"|std::vector<boost::any>")


def short(name):
    for pattern, shorter in SHORTER:
        name = pattern.sub(shorter, name)
    return name


def of(type):
    """The name of a gdb type; those of pointers and the like have none."""
    return short(type.strip_typedefs().unqualified().name or "")
