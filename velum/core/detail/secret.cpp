#include <velum/core/detail/secret.hpp>

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

template <class Word>
std::uint64_t word_at(char const* place) {
    Word word = 0;
    std::memcpy(&word, place, sizeof word);
    return word;
}

// The last bytes of a text, up to 8 of them. Where it has more, or fewer than are read at once, some are read twice.
std::uint64_t last_word(std::string_view text) {
    char const* const end = text.data() + text.size();
    if (text.size() >= 8) {
        return word_at<std::uint64_t>(end - 8);
    }
    if (text.size() >= 4) {
        return word_at<std::uint32_t>(text.data()) << 32U | word_at<std::uint32_t>(end - 4);
    }
    if (text.empty()) {
        return 0;
    }
    auto const byte = [](char const& c) { return std::uint64_t{static_cast<unsigned char>(c)}; };
    return byte(text.front()) << 16U | byte(text[text.size() / 2]) << 8U | byte(text.back());
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
    char const* at = text.data();
    char const* const end = at + text.size();
    for (; end - at > 8; at += 8) {
        hash = folded(hash ^ word_at<std::uint64_t>(at), factor);
    }
    return folded(folded(hash ^ last_word(text), factor), factor);
}

}  // namespace velum::detail
