#pragma once

#include <velum/core/api.hpp>

#include <boost/uuid/uuid.hpp>

#include <compare>
#include <cstddef>
#include <functional>
#include <string>
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

    /// The 16 bytes in memory order.
    unsigned char const* data() const { return bytes_.data; }

    /// The text form: 38 characters, braces, dashes and upper-case digits.
    VELUM_API std::string string() const;

    friend bool operator==(guid_t const& a, guid_t const& b) { return a.bytes_ == b.bytes_; }
    VELUM_API friend std::strong_ordering operator<=>(guid_t const& a, guid_t const& b);

private:
    boost::uuids::uuid bytes_{};
};

static_assert(sizeof(guid_t) == 16 && std::is_trivially_copyable_v<guid_t>);

/// The hash of the 16 bytes. It is the same in every build, so it may be stored.
VELUM_API std::size_t hash_value(guid_t const& id);

}  // namespace velum

template <>
struct std::hash<velum::guid_t> {
    std::size_t operator()(velum::guid_t const& id) const { return hash_value(id); }
};
