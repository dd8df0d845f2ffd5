#include <velum/core/guid.hpp>

#include <boost/uuid/string_generator.hpp>

#include <cstdint>
#include <cstring>

namespace velum {

guid_t::guid_t(std::string const& text) : bytes_(boost::uuids::string_generator{}(text.begin(), text.end())) {}

std::string guid_t::string() const {
    static char const digits[] = "0123456789ABCDEF";
    std::string text = "{";
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            text += '-';
        }
        text += digits[data()[i] >> 4U];
        text += digits[data()[i] & 15U];
    }
    return text += '}';
}

std::strong_ordering operator<=>(guid_t const& a, guid_t const& b) {
    return std::memcmp(a.data(), b.data(), sizeof(guid_t)) <=> 0;
}

// Written out, so that the values do not follow changes of the Boost version.
std::size_t hash_value(guid_t const& id) {
    std::uint64_t h = 0;
    for (int i = 0; i < 16; ++i) {
        h ^= id.data()[i] + std::uint64_t{0x9e3779b9} + (h << 6U) + (h >> 2U);
    }
    return h;
}

}  // namespace velum
