#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace inspect {

/// How a value stands in a stream.
enum class form {
    truth,       // a 32-bit word
    numbers,     // as many of one kind as the type has
    identifier,  // 16 bytes
    text,        // a 32-bit length and the bytes
    bytes,       // a 64-bit length and the bytes
    map,         // a 32-bit count, then keys and values
    maps,        // a 32-bit count, then maps
    values,      // a 32-bit count, then values with their tags
    object_map,  // a 32-bit count, then keys and objects
    object,      // a null, a reference or a new object
    tagged,      // a tag, and what it says
    raw,         // as many bytes as something before them says
    row,         // a field as often as something before it says, or up to a null
};

enum class number_kind { u8, u16, u32, u64, i8, i16, i32, i64, f32, f64 };

std::size_t size_of(number_kind kind);

/// What stands in a stream under one name: a type of the catalogue, or one of those that only the stages of objects
/// have.
struct stored_type {
    std::string name;
    int tag = 0;  // 0 for what has none
    form shape{};
    number_kind kind{};  // of its numbers
    std::size_t count = 0;
};

/// Null for a tag that no type has.
stored_type const* type_of_tag(std::uint32_t tag);

/// A type in the description of a class; null for a word that is none.
stored_type const* type_of_word(std::string_view word);

}  // namespace inspect
