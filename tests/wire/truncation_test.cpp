#include "support/bytes.hpp"
#include "wire/route.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <vector>

namespace {

using namespace support;
using velum::any_map;
using velum::uany_map;

class truncation : public by_route {};
INSTANTIATE_TEST_SUITE_P(on, truncation, both_routes(), route_name);

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
