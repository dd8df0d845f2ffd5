#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace support {

/// The beginnings of all that reading and writing may throw, as `failure_of` gives it: the one list of what the headers
/// of the stored forms allow. A plain `std::bad_alloc` isn't in it: no input brings a machine that has memory to one.
inline constexpr std::array documented_failures = {
    std::string_view("velum::unknown_type: unknown type in the any_map: "),
    std::string_view("velum::length_exceeds_stream: length exceeds the stream"),
    std::string_view("velum::i_object_factory_t::class_not_registered: object not registered in this factory"),
    std::string_view("std::runtime_error: i_unknown serialization not possible with this type of stream"),
    std::string_view("std::runtime_error: object not deserialized yet"),
    std::string_view("std::runtime_error: object is not deserializable"),
    std::string_view("std::runtime_error: object is not serializable"),
    std::string_view("std::runtime_error: nesting too deep"),
    std::string_view("std::runtime_error: memory allocation failed"),
    std::string_view("std::length_error: vector too long"),
    std::string_view("std::ios_base::failure"),  // of a stream that has exceptions enabled
};

/// The place of a failure in the list, or its size for one that nobody documents.
inline std::size_t documented_place(std::string_view failure) {
    auto const found = std::find_if(documented_failures.begin(), documented_failures.end(),
                                    [&](std::string_view known) { return failure.starts_with(known); });
    return static_cast<std::size_t>(found - documented_failures.begin());
}

inline bool is_documented(std::string_view failure) {
    return documented_place(failure) != documented_failures.size();
}

/// The memory that reading may take for so many bytes that have come.
inline std::size_t allowed_memory(std::size_t consumed) {
    return (std::size_t{17} << 20U) + 64 * consumed;
}

}  // namespace support
