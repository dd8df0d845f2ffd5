#include "support/bytes.hpp"
#include "support/failure.hpp"
#include "support/memory_limit.hpp"
#include "support/node.hpp"
#include "support/recording_stream.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace {

using namespace support;
std::string const too_long = "velum::length_exceeds_stream: length exceeds the stream";

std::string head(std::uint32_t id, velum::guid_t const& clsid) {
    return u32(2) + u32(id) + stored(clsid);
}

std::string failure_of_reading(std::string const& bytes, bool can_tell, bool stands_still) {
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
            EXPECT_EQ(failure_of_reading(bytes, can_tell, stands_still), failure)
                << testing::PrintToString(bytes.substr(0, 99));
        }
    }
}

}  // namespace
