#include <velum/core/detail/secret.hpp>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <exception>
#include <random>

namespace velum::detail {
namespace {

// Where the system has nothing random to give, what it does with addresses and time must do.
std::uint64_t random_bits() {
    try {
        std::random_device random;
        return std::uint64_t{random()} << 32U | random();
    } catch (std::exception const&) {
        int here = 0;
        auto const now = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
        return std::mt19937_64(now ^ reinterpret_cast<std::uintptr_t>(&here))();
    }
}

__extension__ using wide = unsigned __int128;

// Both halves of the product: each bit of it depends on what nobody knows.
std::uint64_t folded(std::uint64_t a, std::uint64_t b) {
    wide const product = wide{a} * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

}  // namespace

std::uint64_t secret_bits() {
    static std::uint64_t const bits = random_bits() | 0x0101010101010101U;
    return bits;
}

std::uint64_t secret_hash(std::string_view text) {
    std::uint64_t const secret = secret_bits();
    std::uint64_t const factor = std::rotl(secret, 29) | 1U;
    std::uint64_t hash = secret ^ text.size();
    while (!text.empty()) {
        std::uint64_t word = 0;
        std::size_t const size = std::min(text.size(), sizeof word);
        std::memcpy(&word, text.data(), size);
        hash = folded(hash ^ word, factor);
        text.remove_prefix(size);
    }
    return folded(hash, factor);
}

}  // namespace velum::detail
