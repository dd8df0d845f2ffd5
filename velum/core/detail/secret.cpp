#include <velum/core/detail/secret.hpp>

#include <chrono>
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

}  // namespace

std::uint64_t secret_bits() {
    static std::uint64_t const bits = random_bits() | 0x0101010101010101U;
    return bits;
}

}  // namespace velum::detail
