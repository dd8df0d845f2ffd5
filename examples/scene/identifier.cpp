#include "identifier.hpp"

#include <cstdint>
#include <iomanip>
#include <sstream>
#include <string_view>

namespace scene {
namespace {

constexpr std::uint64_t start_of_hash = 0xcbf29ce484222325;

std::uint64_t fnv1a(std::uint64_t hash, std::string_view text) {
    for (char const c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    }
    return hash;
}

}  // namespace

velum::guid_t mesh_identifier(std::string const& name, std::size_t position) {
    std::string const text = name + '#' + std::to_string(position);
    std::uint64_t const first = fnv1a(start_of_hash, text);
    std::ostringstream digits;
    digits << std::hex << std::setfill('0') << std::setw(16) << first << std::setw(16) << fnv1a(first, text);
    return velum::guid_t(digits.str());
}

}  // namespace scene
