#include "support/samples.hpp"
#include "wire/route.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace support;
using velum::any_map;
using velum::uany_map;
using anys = std::vector<boost::any>;

class truncation : public by_route {};
INSTANTIATE_TEST_SUITE_P(on, truncation, both_routes(), route_name);

std::vector<std::string> small_bodies() {
    std::vector<std::string> bodies;
    for (sample const& row : samples()) {
        bodies.push_back(body_of("key", row.tag, row.payload));
    }
    bodies.push_back(
        from_hex("03000000 02000000 6d31 28000000 02000000 01000000 61 01000000 03000000 78797a 01000000 62"
                 "2e000000 03000000 02000000 01000000 29000000 02000000 00000000 01000000 01000000 63 03000000 05000000"
                 "2d000000 0400000000000000 01020304"
                 "02000000 6d32 2c000000 02000000 01000000 01000000 64 2a000000 02000000 7575 01000000 01000000 65"
                 "19000000 0000803f 00000040 00004040 02000000 6d33 1f000000 feffffffffffffff"));
    return bodies;
}

// What doesn't arrive is zero, in whatever field the end falls: a body cut short must read as the same body with zeros
// behind it, which is never short.
template <class Map>
void cut_everywhere(route way) {
    for (std::string const& body : small_bodies()) {
        for (std::size_t cut = 0; cut <= body.size(); ++cut) {
            std::string const arrived = body.substr(0, cut);
            Map map{{"old", 1}}, expected{{"old", 1}};
            outcome const result = read_by(way, arrived, map);
            outcome const padded = read_by(way, arrived + std::string(4096, '\0'), expected);
            ASSERT_EQ(result.failure, padded.failure) << testing::PrintToString(arrived);
            ASSERT_EQ(result.consumed, std::min(cut, padded.consumed)) << testing::PrintToString(arrived);
            ASSERT_TRUE(same_map(map, expected)) << testing::PrintToString(arrived);
        }
    }
}

TEST_P(truncation, reads_as_zeros_wherever_the_end_falls) {
    cut_everywhere<any_map>(GetParam());
    cut_everywhere<uany_map>(GetParam());
}

struct cut_off {
    char const* field;
    std::string arrived;
    any_map map;
    std::string failure;
};

TEST_P(truncation, each_field_goes_on_in_its_way) {
    std::string const k = "01000000 01000000 6b ",
                      p = "unknown type in the any_map: ", r = " - while reading map key: ";
    std::string const no_tag = p + p + "type_id<0>" + r;
    math::vec<float, 3, math::use_simd_tag> const cut_vector(1.0F, std::bit_cast<float>(0x0000CDAB), 0.0F),
        none(0, 0, 0);
    cut_off const rows[] = {
        {"nothing at all", "", {}, ""},
        {"count of entries", "0000", {}, ""},
        {"next entry", "02000000 01000000 6b 02000000 01000000", {{"k", true}}, no_tag},
        {"length of a key", "01000000 02", {}, no_tag},
        {"key", "01000000 03000000 6b", {}, no_tag + "k"},
        {"tag", k, {}, no_tag + "k"},
        {"inside a tag", k + "01", {{"k", std::string()}}, ""},
        {"inside the length of a text", k + "01000000 0201", {{"k", std::string(0x102, '\0')}}, ""},
        {"text", k + "01000000 04000000 6162", {{"k", std::string("ab\0\0", 4)}}, ""},
        {"inside a truth", k + "02000000 0002", {{"k", true}}, ""},
        {"inside an int", k + "03000000 ffff", {{"k", 65535}}, ""},
        {"inside a vector of three", k + "19000000 0000803f abcd", {{"k", cut_vector}}, ""},
        {"inside an affine space",
         k + "1d000000 0000803f abcd",
         {{"k", velum::affine_space3(velum::linear_space3(cut_vector, none, none), none)}},
         ""},
        {"count of a map", k + "28000000 01", {}, p + no_tag + r + "k"},
        {"between maps",
         k + "29000000 04000000 01000000 01000000 6b 02000000 01000000",
         {{"k", std::vector<any_map>{{{"k", true}}, {}, {}, {}}}},
         ""},
        {"between maps with interned keys", k + "2c000000 03000000 00000000", {{"k", std::vector<uany_map>(3)}}, ""},
        {"between values", k + "2e000000 02000000 02000000 01000000", {}, no_tag + "k"},
        {"inside the count of a buffer", k + "2d000000 0300", {{"k", velum::byte_vector{0, 0, 0}}}, ""},
        {"buffer", k + "2d000000 0400000000000000 0102", {{"k", velum::byte_vector{1, 2, 0, 0}}}, ""},
    };
    for (auto const& [field, arrived, expected, failure] : rows) {
        any_map map;
        EXPECT_EQ(read(from_hex(arrived), map).failure, failure.empty() ? "" : "velum::unknown_type: " + failure)
            << field;
        EXPECT_TRUE(same_map(map, expected)) << field;
    }
}

}  // namespace
