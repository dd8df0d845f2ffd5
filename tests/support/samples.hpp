#pragma once

#include "support/bytes.hpp"

#include <velum/values/catalogue.hpp>

#include <bit>
#include <limits>
#include <string>
#include <vector>

namespace support {

/// A value of the catalogue and what stands behind its tag in a stream.
struct sample {
    int tag;
    boost::any value;
    std::string payload;
};

/// One value or more for each row of the catalogue: the one place in the tests that names all of its types.
inline std::vector<sample> samples() {
    using namespace velum;
    using math::use_simd_tag;
    using std::string;
    using fvec3 = math::vec<float, 3, use_simd_tag>;
    int const low = std::numeric_limits<int>::min();
    float const odd_nan = std::bit_cast<float>(0x7FC01234);
    string const f9 = stored(1.F, 2, 3, 4, 5, 6, 7, 8, 9), f12 = f9 + stored(10.F, 11, 12);
    string const d9 = stored(1., 2, 3, 4, 5, 6, 7, 8, 9), d12 = d9 + stored(10., 11, 12);
    linear_space3 const space(fvec3(1, 2, 3), fvec3(4, 5, 6), fvec3(7, 8, 9));
    return {
        {1, string(), from_hex("00000000")},
        {1, string("a\0\xFFz", 4), from_hex("04000000 6100ff7a")},
        {2, false, from_hex("00000000")},
        {2, true, from_hex("01000000")},
        {3, low + 1, from_hex("01000080")},
        {4, 1.5F, from_hex("0000c03f")},
        {4, odd_nan, from_hex("3412c07f")},
        {5, tessa::mat<float, 2, 1>(1, 2), from_hex("0000803f 00000040")},
        {6, tessa::mat<float, 3, 1>(1, 2, 3), stored(1.F, 2, 3)},
        {7, tessa::mat<float, 4, 1>(1, 2, 3, odd_nan), stored(1.F, 2, 3) + from_hex("3412c07f")},
        {8, tessa::mat<float, 3, 3>(1, 2, 3, 4, 5, 6, 7, 8, 9), f9},
        {9, tessa::mat<float, 3, 4>(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12), f12},
        {10, tessa::mat<float, 4, 4>(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
         f12 + stored(13.F, 14, 15, 16)},
        {11, tessa::mat<int, 2, 1>(1, -2), from_hex("01000000 feffffff")},
        {12, tessa::mat<int, 3, 1>(1, -2, 3), stored(1, -2, 3)},
        {13, tessa::mat<int, 4, 1>(1, -2, 3, low), stored(1, -2, 3, low)},
        {14, -2.25, from_hex("00000000 000002c0")},
        {14, std::bit_cast<double>(0x7FF8000000ABCDEFU), from_hex("efcdab00 0000f87f")},
        {15, tessa::mat<double, 2, 1>(1, 2), from_hex("00000000 0000f03f 00000000 00000040")},
        {16, tessa::mat<double, 3, 1>(1, 2, 3), stored(1., 2, 3)},
        {17, tessa::mat<double, 4, 1>(1, 2, 3, 4), stored(1., 2, 3, 4)},
        {18, tessa::mat<double, 3, 3>(1, 2, 3, 4, 5, 6, 7, 8, 9), d9},
        {19, tessa::mat<double, 3, 4>(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12), d12},
        {20, tessa::mat<double, 4, 4>(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
         d12 + stored(13., 14, 15, 16)},
        {21, math::vec<int, 2, use_simd_tag>(1, -2), stored(1, -2)},
        {22, math::vec<int, 3, use_simd_tag>(1, -2, 3), stored(1, -2, 3)},
        {23, math::vec<int, 4, use_simd_tag>(1, -2, 3, low), stored(1, -2, 3, low)},
        {24, math::vec<float, 2, use_simd_tag>(1, 2), stored(1.F, 2)},
        {25, fvec3(1, 2, odd_nan), stored(1.F, 2) + from_hex("3412c07f")},
        {26, math::vec<float, 4, use_simd_tag>(1, 2, 3, 4), stored(1.F, 2, 3, 4)},
        {27, math::quat<float>(1, 2, 3, 4), stored(1.F, 2, 3, 4)},
        {28, space, f9},
        {29, affine_space3(space, fvec3(10, 11, 12)), f12},
        {31, static_cast<long long>(0x8070605040302010), from_hex("10203040 50607080")},
        {32, guid_t("{F39ECE85-3AF5-444c-857E-337C7401A53F}"), from_hex("f39ece85 3af5444c 857e337c 7401a53f")},
        {40, any_map{{string("b\0c", 3), 5}, {"", true}},
         from_hex("02000000 00000000 02000000 01000000 03000000 620063 03000000 05000000")},
        {41, std::vector<any_map>{{}, {{"k", 6}}},
         from_hex("02000000 00000000 01000000 01000000 6b 03000000 06000000")},
        {42, ustring(), from_hex("00000000")},
        {42, ustring("name"), from_hex("04000000 6e616d65")},
        {43, uany_map{{"key", 7}}, from_hex("01000000 03000000 6b6579 03000000 07000000")},
        {44, std::vector<uany_map>{{{"k", ustring("v")}}, {}},
         from_hex("02000000 01000000 01000000 6b 2a000000 01000000 76 00000000")},
        {45, byte_vector(), from_hex("00000000 00000000")},
        {45, byte_vector{0, 255, 1}, from_hex("03000000 00000000 00ff01")},
        {46, std::vector<boost::any>{true, string("x"), std::vector<boost::any>{any_map()}},
         from_hex("03000000 02000000 01000000 01000000 01000000 78 2e000000 01000000 28000000 00000000")},
        {47, iptr<i_unknown_t>(), from_hex("00000000")},
    };
}

/// All samples but the object, under keys of their own.
inline velum::any_map map_of_samples() {
    velum::any_map map;
    for (auto const& [tag, value, payload] : samples()) {
        if (tag != 47) {
            map.emplace("a value with the number " + std::to_string(1000 + map.size()), value);
        }
    }
    return map;
}

}  // namespace support
