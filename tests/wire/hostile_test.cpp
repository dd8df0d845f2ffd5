#include "support/bytes.hpp"
#include "support/memory_limit.hpp"
#include "support/node.hpp"
#include "support/recording_stream.hpp"
#include "wire/route.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace support;
using velum::any_map;
using velum::uany_map;

static_assert(std::is_base_of_v<std::bad_alloc, velum::length_exceeds_stream>);

constexpr std::size_t most_missing = 16 * mebibyte;
std::string const too_long = "velum::length_exceeds_stream: length exceeds the stream";
std::string const no_memory = "std::runtime_error: memory allocation failed";
std::string const p = "unknown type in the any_map: ";
std::string const r = " - while reading map key: ";

std::string u64(std::uint64_t number) {
    return stored(number);
}

class hostile : public by_route {
protected:
    // The bytes must be there before the limit is, and a copy of them in the stream counts as ours.
    static std::string failure_within(std::size_t memory, std::string const& bytes) {
        any_map plain;
        uany_map interned;
        memory_limit const limit(memory + bytes.size());
        std::string const failure = read(bytes, plain).failure;
        EXPECT_EQ(read(bytes, interned).failure, failure);
        EXPECT_TRUE(plain.empty() && interned.empty());
        return failure;
    }
};
INSTANTIATE_TEST_SUITE_P(on, hostile, both_routes(), route_name);

// Promises of other lengths are among the inputs of the fuzzers.
TEST_P(hostile, promises_take_no_memory) {
    std::string const four_gib = u32(0xFFFFFFFF);
    std::pair<std::string, std::string> const rows[] = {
        {body_of("k", 45, u64(std::uint64_t{1} << 40U) + "abc"), too_long},
        {body_of("k", 45, u64((std::uint64_t{1} << 40U) + 1) + "abc"), no_memory},
        {body_of("k", 45, u64(std::numeric_limits<std::int64_t>::max())), no_memory},
        {body_of("k", 45, u64(std::uint64_t{1} << 63U)), "std::length_error: vector too long"},
        {body_of("k", 41, u32(40) + std::string(39 * 4, '\0') + u32(1) + four_gib), too_long},
        {body_of("k", 44, four_gib + std::string(4000, '\0')), too_long},
        {body_of("k", 46, four_gib), "velum::unknown_type: " + p + p + "type_id<0>" + r + "k"},
    };
    for (auto const& [body, failure] : rows) {
        EXPECT_EQ(failure_within(40 * mebibyte, body), failure) << testing::PrintToString(body.substr(0, 40));
    }
}

// Of 4 GiB promised a part arrives: the memory in use may be three times as much.
TEST_P(hostile, memory_follows_what_has_arrived) {
    std::size_t const part = 24 * mebibyte;
    for (std::string const& head :
         {body_of("k", 1, u32(0xFFFFFFFF)), u32(1) + u32(0xFFFFFFFF), body_of("k", 45, u64(std::uint64_t{1} << 40U))}) {
        EXPECT_EQ(failure_within(17 * mebibyte + 3 * part, head + std::string(part, 'x')), too_long);
    }
}

struct cut_short {
    std::size_t promised;
    std::size_t arrived;
    bool is_read;
};

TEST_P(hostile, sixteen_mebibytes_of_a_text_or_buffer_may_be_missing) {
    for (auto const& [promised, arrived, is_read] : {cut_short{most_missing, 0, true},
                                                     {most_missing + 1, 0, false},
                                                     {most_missing + 1, 1, true},
                                                     {most_missing + 5, 5, true},
                                                     {most_missing + 5, 4, false},
                                                     {40 * mebibyte, 24 * mebibyte, true},
                                                     {40 * mebibyte, 24 * mebibyte - 1, false}}) {
        std::string const there(arrived, 'x'), text = there + std::string(promised - arrived, '\0');
        any_map const texts{{"k", text}}, buffers{{"k", velum::byte_vector(text.begin(), text.end())}};
        any_map map;
        EXPECT_EQ(read(body_of("k", 1, u32(promised) + there), map).failure, is_read ? "" : too_long) << promised;
        EXPECT_TRUE(same_map(map, is_read ? texts : any_map()));
        map.clear();
        EXPECT_EQ(read(body_of("k", 45, u64(promised) + there), map).failure, is_read ? "" : too_long) << promised;
        EXPECT_TRUE(same_map(map, is_read ? buffers : any_map()));
    }
}

TEST_P(hostile, maps_worth_sixteen_mebibytes_may_be_missing) {
    constexpr std::size_t most = most_missing / sizeof(any_map);
    for (auto const& [promised, arrived, is_read] :
         {cut_short{most, 0, true}, {most + 1, 0, false}, {most + 50000, 50000, true}, {most + 50000, 49999, false}}) {
        std::string there;
        any_map expected;
        std::vector<uany_map> maps(is_read ? promised : 0);
        for (std::size_t i = 0; i < arrived; ++i) {
            there += i % 1000 == 0 ? body_of("in", 2, u32(1)) : u32(0);
            is_read&& i % 1000 == 0 ? void(maps[i]["in"] = true) : void();
        }
        is_read ? void(expected["k"] = maps) : void();
        any_map map;
        EXPECT_EQ(read(body_of("k", 44, u32(promised) + there), map).failure, is_read ? "" : too_long) << arrived;
        EXPECT_TRUE(same_map(map, expected));
    }
}

TEST_P(hostile, a_text_may_be_short_within_a_vector) {
    std::string const missing(most_missing, '\0');
    any_map map;
    EXPECT_EQ(read(body_of("k", 41, u32(3) + body_of("in", 1, u32(most_missing))), map).failure, "");
    EXPECT_TRUE(same_map(map, {{"k", std::vector<any_map>{{{"in", missing}}, {}, {}}}}));
}

any_map large_document() {
    std::string text(40 * mebibyte, 'a');
    velum::byte_vector buffer(21 * mebibyte);
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<char>(i * 7 + i / 4093);
        buffer[i % buffer.size()] = static_cast<unsigned char>(i * 11);
    }
    std::vector<any_map> maps(400000);
    maps[399999] = maps[17] = {{"in", text.substr(0, 20 * mebibyte)}};
    return {{"buffer", buffer}, {"maps", maps}, {"text", text}, {text.substr(0, 18 * mebibyte), 1}};
}

// Also where nobody knows the position.
TEST(large, what_is_there_arrives) {
    any_map const map = large_document();
    any_map back;
    EXPECT_EQ(read_by(route::stream, write_by(route::stream, map).bytes, back).failure, "");
    EXPECT_TRUE(same_map(map, back));
    recorded const stream(new recording_stream);
    velum::write(writer_on(stream.get()), map);
    for (bool const can_tell : {true, false}) {
        stream->position = 0;
        stream->can_tell = can_tell;
        back.clear();
        velum::read(reader_on(stream.get(), nullptr), back);
        EXPECT_TRUE(same_map(map, back));
    }
}

// Nor is anything there that nobody sent.
TEST(hostile_serializer, fills_with_zeros_where_nobody_knows_the_position) {
    recorded const stream(new recording_stream(body_of("k", 1, u32(most_missing + 100) + "hello")));
    stream->can_tell = false;
    any_map map;
    EXPECT_EQ(failure_of([&] { velum::read(reader_on(stream.get(), nullptr), map); }), "");
    EXPECT_TRUE(same_map(map, {{"k", "hello" + std::string(most_missing + 95, '\0')}}));
}

// A number of which the last byte doesn't come hasn't come.
TEST(hostile_serializer, refuses_a_number_cut_short_where_nobody_knows_the_position) {
    recorded const stream(new recording_stream(body_of("k", 41, u32(1000000) + u32(1) + u32(1) + "a(")));
    stream->can_tell = false;
    any_map map;
    EXPECT_EQ(failure_of([&] { velum::read(reader_on(stream.get(), nullptr), map); }), too_long);
}

// Objects within objects have 16 MiB together, not each its own.
TEST(hostile_serializer, has_one_account_for_nested_objects) {
    std::string bytes;
    velum::guid_t const& clsid = velum::uany_map_obj_t::_clsid;
    for (std::uint32_t level = 0; level < 50; ++level) {
        bytes += body_of("k", 41, u32(349525)) + body_of("o", 47, u32(2) + u32(level) + stored(clsid) + u32(0x10000));
    }
    any_map map;
    memory_limit const limit(40 * mebibyte);
    EXPECT_EQ(read_by(route::serializer, bytes, map).failure, too_long);
}

std::string head(std::uint32_t id, velum::guid_t const& clsid) {
    return u32(2) + u32(id) + stored(clsid);
}

std::string failure_of_graph(std::string const& bytes, bool can_tell, bool stands_still) {
    recorded const stream(new recording_stream(bytes));
    stream->can_tell = can_tell;
    stream->stands_still = stands_still;
    serializable read;
    std::string const failure = failure_of([&] { reader_on(stream.get(), node_factory())->read_object(read); });
    return failure;
}

// Also where nobody knows the position.
TEST(hostile_graph, promises_take_no_memory) {
    std::string const four_gib = u32(0xFFFFFFFF), version = u32(0x10000);
    velum::guid_t const text = boxed_text("")->clsid(), map = stored_form(new_object_map())->clsid();
    std::string nested, there;
    for (std::uint32_t id = 0; id < 1000; ++id) {
        nested += head(id, map) + version + u32(200000) + u32(1) + "k";
    }
    for (std::uint32_t i = 0; i < 300000; ++i) {
        there += u32(4) + u32(i) + u32(0);
    }
    std::string const a_map = head(0, map) + version;
    std::uint32_t const most = 16 * mebibyte / 64;  // entries may be missing, and one that is empty may be there
    std::string const values_in_map = a_map + u32(1) + u32(1) + "k" + head(1, velum::uany_map_obj_t::_clsid) + version;
    std::uint32_t const maps_beside_it = (16 * mebibyte - 64) / sizeof(velum::any_map);
    std::pair<std::string, std::string> const rows[] = {
        {values_in_map + body_of("k", 41, u32(maps_beside_it)), ""},
        {values_in_map + body_of("k", 41, u32(maps_beside_it + 2)), too_long},
        {head(0, text) + version + four_gib + "abc", too_long},
        {head(0, node::id) + four_gib, too_long},
        {a_map + u32(1) + four_gib + "abc", too_long},
        {a_map + four_gib, too_long},
        {a_map + four_gib.substr(0, 3), too_long},
        {a_map + four_gib + there, too_long},
        {a_map + u32(most + 2), too_long},
        {a_map + u32(most), ""},
        {a_map + u32(300000) + there, ""},
        {nested, too_long},
        {a_map + u32(1) + u32(0) + head(1, velum::uany_map_obj_t::_clsid) + version + u32(1) + four_gib, too_long},
    };
    for (auto const& [bytes, failure] : rows) {
        memory_limit const limit(48 * mebibyte + bytes.size());
        for (auto const& [can_tell, stands_still] : {std::pair(true, false), {false, false}, {true, true}}) {
            EXPECT_EQ(failure_of_graph(bytes, can_tell, stands_still), failure)
                << testing::PrintToString(bytes.substr(0, 99));
        }
    }
}

}  // namespace
