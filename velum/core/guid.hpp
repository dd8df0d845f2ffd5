#pragma once

#include <velum/core/api.hpp>

#include <boost/uuid/uuid.hpp>

#include <array>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

namespace velum {

/// A 128-bit identifier of an interface or a class.
///
/// The 16 bytes lie in memory in the order of the text form, read from the left; they are ordered as unsigned bytes,
/// and go to a stream as they lie. A default identifier is all zero.
class VELUM_SHARED_TYPE guid_t {
public:
    constexpr guid_t() = default;

    /// Parses "{F39ECE85-3AF5-444c-857E-337C7401A53F}", in either case, also without braces or without dashes.
    /// Throws `std::runtime_error` ("invalid uuid string") for any other text.
    VELUM_API explicit guid_t(std::string const& text);

    /// The same for a literal, of which no other text compiles in a constant expression. Allocates nothing.
    template <std::size_t Size>
    explicit constexpr guid_t(char const (&text)[Size]) {
        std::string_view all(text, Size);
        all = all.substr(0, all.find('\0'));
        if (!parse(all)) {
            *this = guid_t(std::string(all));  // which refuses it
        }
    }

    /// The 16 bytes in memory order.
    unsigned char const* data() const { return bytes_.data; }

    /// The text form: 38 characters, braces, dashes and upper-case digits.
    VELUM_API std::string string() const;

    /// By the bytes, unsigned, from the first on.
    /// @{
    friend constexpr bool operator==(guid_t const& a, guid_t const& b) {
        auto const x = std::bit_cast<words>(a.bytes_), y = std::bit_cast<words>(b.bytes_);
        return ((x[0] ^ y[0]) | (x[1] ^ y[1])) == 0;
    }
    VELUM_API friend std::strong_ordering operator<=>(guid_t const& a, guid_t const& b);
    /// @}

private:
    using words = std::array<std::uint64_t, 2>;

    static constexpr int value_of(char digit) {
        if (digit >= '0' && digit <= '9') {
            return digit - '0';
        }
        char const lower = static_cast<char>(digit | 0x20);
        return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
    }

    // False for what is no identifier.
    constexpr bool parse(std::string_view text) {
        if (text.size() > 2 && text.front() == '{' && text.back() == '}') {
            text = text.substr(1, text.size() - 2);
        }
        bool const has_dashes = text.size() == 36;
        if (!has_dashes && text.size() != 32) {
            return false;
        }
        std::size_t at = 0;
        for (std::size_t i = 0; i < 16; ++i) {
            if (has_dashes && (i == 4 || i == 6 || i == 8 || i == 10) && text[at++] != '-') {
                return false;
            }
            int const high = value_of(text[at]), low = value_of(text[at + 1]);
            if (high < 0 || low < 0) {
                return false;
            }
            bytes_.data[i] = static_cast<unsigned char>(high * 16 + low);
            at += 2;
        }
        return true;
    }

    boost::uuids::uuid bytes_{};
};

static_assert(sizeof(guid_t) == 16 && std::is_trivially_copyable_v<guid_t>);

/// The hash of the 16 bytes. It is the same in every build, so it may be stored.
VELUM_API std::size_t hash_value(guid_t const& id);

}  // namespace velum

/// @cond
template <>
struct std::hash<velum::guid_t> {
    std::size_t operator()(velum::guid_t const& id) const { return hash_value(id); }
};
/// @endcond
