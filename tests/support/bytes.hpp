#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace support {

/// "01 02 0a" as bytes; blanks are only for the eye.
inline std::string from_hex(std::string_view hex) {
    std::string bytes;
    std::string digits;
    for (char const c : hex) {
        digits += c == ' ' ? "" : std::string(1, c);
        if (digits.size() == 2) {
            bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
            digits.clear();
        }
    }
    return bytes;
}

/// Numbers as they stand in a stream.
template <class Number, class... Numbers>
std::string stored(Number first, Numbers... others) {
    std::array<Number, 1 + sizeof...(others)> const all{first, static_cast<Number>(others)...};
    return {reinterpret_cast<char const*>(all.data()), sizeof all};
}

inline std::string u32(std::uint64_t number) {
    return stored(static_cast<std::uint32_t>(number));
}

/// A map of one entry in its stored form.
inline std::string body_of(std::string const& key, int tag, std::string const& payload) {
    return u32(1) + u32(key.size()) + key + u32(static_cast<std::uint32_t>(tag)) + payload;
}

}  // namespace support
