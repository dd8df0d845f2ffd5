#include "support/bytes.hpp"
#include "support/failure.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using ivec3 = math::vec<int, 3, math::use_simd_tag>;
using vec2 = math::vec<float, 2, math::use_simd_tag>;
using vec3 = math::vec<float, 3, math::use_simd_tag>;
using quat = math::quat<float>;
using column = tessa::mat<double, 3, 1>;
using space = velum::linear_space3;
using affine = velum::affine_space3;

template <std::size_t Alignment, class T>
void expect_lanes(T const& value, std::string const& lanes) {
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) == Alignment);
    T const zero;
    EXPECT_EQ(std::string(reinterpret_cast<char const*>(&value), sizeof value), lanes) << typeid(T).name();
    EXPECT_EQ(std::string(reinterpret_cast<char const*>(&zero), sizeof zero), std::string(sizeof zero, '\0'));
}

TEST(math, values_lie_in_memory_as_stored_documents_need) {
    using support::stored;
    space const s(vec3(1, 2, 3), vec3(4, 5, 6), vec3(7, 8, 9));
    expect_lanes<4>(vec2(1, 2), stored(1.F, 2));
    expect_lanes<16>(ivec3(1, 2, 3), stored(1, 2, 3, 3));
    expect_lanes<4>(quat(1, 2, 3, 4), stored(1.F, 2, 3, 4));
    expect_lanes<8>(column(1, 2, 3), stored(1., 2, 3));
    expect_lanes<16>(affine(s, vec3(0, 1, 2)), stored(1.F, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9, 9, 0, 1, 2, 2));
    column const c(1, 2, 3);
    int const last = static_cast<int>(stored(c).size() / sizeof(double)) - 1;
    EXPECT_TRUE(s[2][1] == 8 && c[last] == 3 && column(1, 2, 3)[1] == 2 && quat(1, 2, 3, 4)[3] == 4);
}

// How the components decide is a matter of any_compare too, and checked there.
TEST(math, spaces_are_unequal_by_their_last_component_and_not_by_the_fourth_lane) {
    vec3 const low(0, 0, 1), high(0, 0, 2);
    space const lows(low, low, low), highs(low, low, high);
    EXPECT_TRUE(lows == lows && lows != highs && affine(lows, low) == affine(lows, low));
    EXPECT_TRUE(affine(lows, low) != affine(lows, high) && affine(lows, low) != affine(highs, low));
    vec3 other = low;
    std::memset(reinterpret_cast<char*>(&other) + 12, 0x5A, 4);
    EXPECT_TRUE(other == low && !(other < low) && !(low < other));
}

// Filled to the last byte and released; the address sanitizer sees what goes beside.
TEST(aligned_allocator, blocks_begin_at_multiples_and_are_released) {
    sys::aligned_allocator<double, 64> allocator;
    for (std::size_t n = 0; n < 200; ++n) {
        double* const block = allocator.allocate(n);
        std::uint32_t distance = 0;
        std::memcpy(&distance, reinterpret_cast<char const*>(block) - sizeof distance, sizeof distance);
        EXPECT_TRUE(distance >= 5 && distance <= 68 && reinterpret_cast<std::uintptr_t>(block) % 64 == 0) << distance;
        std::fill_n(block, n, 1.);
        allocator.deallocate(block, n);
    }
    EXPECT_TRUE(allocator == (sys::aligned_allocator<char, 64>()));
    std::size_t const most = std::numeric_limits<std::size_t>::max();
    for (std::size_t const volatile n : {most, most / 2, most / 8, most / 8 - 7, most / 8 + 1}) {
        EXPECT_EQ(support::failure_of([&] { allocator.allocate(n); }), "std::runtime_error: memory allocation failed");
    }
}

}  // namespace
