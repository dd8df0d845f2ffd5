#include "support/bytes.hpp"
#include "wire/route.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace support;
using velum::any_map;
using velum::uany_map;
using fvec3 = math::vec<float, 3, math::use_simd_tag>;
using ivec3 = math::vec<int, 3, math::use_simd_tag>;

class round_trip : public by_route {};
INSTANTIATE_TEST_SUITE_P(on, round_trip, both_routes(), route_name);

TEST_P(round_trip, the_fourth_lane_of_three_is_not_stored) {
    auto const check = [&]<class T>(T const& value) {
        T disturbed = value;
        for (std::size_t lane3 = 12; lane3 < sizeof(T); lane3 += 16) {
            std::memset(reinterpret_cast<char*>(&disturbed) + lane3, 0x5A, 4);
        }
        std::string const bytes = write(any_map{{"k", disturbed}}).bytes;
        EXPECT_EQ(bytes, write(any_map{{"k", value}}).bytes);
        any_map back;
        read(bytes, back);
        T const read_back = velum::any_map_get<T>(back, "k");
        EXPECT_EQ(std::memcmp(&read_back, &value, sizeof(T)), 0) << "lane 3 repeats lane 2";
    };
    velum::linear_space3 const space(fvec3(1, 2, 3), fvec3(4, 5, 6), fvec3(7, 8, 9));
    check(ivec3(-1, -2, -3));
    check(fvec3(1, 2, 3));
    check(space);
    check(velum::affine_space3(space, fvec3(10, 11, 12)));
}

// What is read joins what was there; keys of the one kind are keys of the other, up to their first NUL.
TEST_P(round_trip, what_reading_makes_of_keys_and_words) {
    struct {
        char const* hex;
        any_map plain;
        uany_map interned;
    } const rows[] = {
        {"00000000 ffffffff", {}, {}},
        {"01000000 01000000 6b 02000000 00000000", {{"k", false}}, {{"k", false}}},
        {"01000000 01000000 6b 02000000 00000080", {{"k", true}}, {{"k", true}}},
        {"01000000 01000000 6b 02000000 00010000", {{"k", true}}, {{"k", true}}},
        {"02000000 01000000 6b 03000000 01000000 01000000 6b 02000000 01000000", {{"k", true}}, {{"k", true}}},
        {"02000000 01000000 7a 03000000 01000000 01000000 61 03000000 02000000",
         {{"a", 2}, {"z", 1}},
         {{"a", 2}, {"z", 1}}},
        {"02000000 03000000 610062 03000000 01000000 01000000 61 03000000 02000000",
         {{std::string("a\0b", 3), 1}, {"a", 2}},
         {{"a", 2}}},
        {"01000000 01000000 7a 2a000000 03000000 780079", {{"z", velum::ustring("x")}}, {{"z", velum::ustring("x")}}},
    };
    for (auto [hex, plain, interned] : rows) {
        any_map map{{"k", 5}, {"old", 7}};
        uany_map interned_map{{"k", 5}, {"old", 7}};
        EXPECT_EQ(read(from_hex(hex), map).failure + read(from_hex(hex), interned_map).failure, "") << hex;
        plain.insert({{"k", 5}, {"old", 7}});
        interned.insert({{"k", 5}, {"old", 7}});
        EXPECT_TRUE(same_map(map, plain)) << hex;
        EXPECT_TRUE(same_map(interned_map, interned)) << hex;
    }
}

TEST_P(round_trip, entries_stand_in_the_order_of_the_map) {
    std::string const high = "\xFF", nul("a\0", 2);
    EXPECT_EQ(
        write(any_map{{high, 1}, {"ab", 2}, {"a", 3}, {nul, 5}, {"B", 6}}).bytes,
        from_hex("05000000 01000000 42 03000000 06000000 01000000 61 03000000 03000000"
                 "02000000 6100 03000000 05000000 02000000 6162 03000000 02000000 01000000 ff 03000000 01000000"));
    uany_map const interned{{"order-x", 1}, {"order-b", 2}, {"order-q", 3}};
    std::string expected = u32(3);
    for (auto const& [key, value] : interned) {
        expected += u32(7) + key.string() + u32(3) + stored(boost::any_cast<int>(value));
    }
    EXPECT_EQ(write(interned).bytes, expected);
}

TEST(serializer_route, serialize_and_deserialize_are_write_and_read) {
    any_map const plain{{"a", 1}};
    uany_map const interned{{"b", std::string("c")}};
    std::stringstream stream;
    auto const writer = writer_on(stream), reader = reader_on(stream);
    velum::serialize(plain, writer);
    velum::serialize(interned, writer);
    EXPECT_EQ(stream.str(), write_by(route::stream, plain).bytes + write_by(route::stream, interned).bytes);
    any_map plain_back;
    uany_map interned_back;
    velum::deserialize(plain_back, reader);
    velum::deserialize(interned_back, reader);
    EXPECT_TRUE(same_map(plain, plain_back) && same_map(interned, interned_back));
}

}  // namespace
