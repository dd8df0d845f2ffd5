#include <velum/wire/detail/sources.hpp>

#include <random>

namespace velum::detail {

std::uint64_t probe_bits() {
    static std::uint64_t const bits = [] {
        std::random_device random;
        return (std::uint64_t{random()} << 32U | random()) | 0x0101010101010101U;
    }();
    return bits;
}

}  // namespace velum::detail
