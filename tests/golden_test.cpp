#include "support/golden.hpp"
#include "support/decode.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

using namespace support;
namespace fs = std::filesystem;

std::string content_of(fs::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Stored documents of today must be readable for ever. To change a file on purpose run "velum_seeds --golden FOLDER".
TEST(golden, the_writer_makes_the_committed_files) {
    std::set<std::string> names, committed;
    for (golden const& file : goldens()) {
        names.insert(file.name);
        EXPECT_EQ(testing::PrintToString(file.bytes),
                  testing::PrintToString(content_of(fs::path(VELUM_GOLDEN) / file.name)))
            << file.name;
    }
    for (auto const& entry : fs::directory_iterator(VELUM_GOLDEN)) {
        committed.insert(entry.path().filename().string());
    }
    EXPECT_EQ(names, committed);
}

TEST(golden, a_value_stands_behind_its_key_and_tag) {
    for (sample const& row : samples()) {
        EXPECT_EQ(golden_map("", {{"key", row.value}}).bytes, body_of("key", row.tag, row.payload)) << row.tag;
    }
}

template <class Map>
std::string again(route way, std::string const& bytes) {
    std::istringstream stream(bytes + "behind");
    arrivals arrived;
    Map map;
    read_values(way, stream, arrived, map);
    EXPECT_EQ(consumed_of(stream), bytes.size());
    return write_by(way, map).bytes;
}

// Each type by each route into each kind of map. A standard stream has no objects; an order that means nothing may be
// another one: all maps with interned keys but the last have one entry.
TEST(golden, what_is_read_is_written_as_it_was) {
    std::set<int> tags;
    for (golden const& file : goldens()) {
        std::istringstream stream(file.bytes);
        arrivals arrived;
        if (file.objects != 0) {
            EXPECT_EQ(write_records(read_records(stream, arrived, file.objects)).bytes, file.bytes) << file.name;
            continue;
        }
        EXPECT_EQ(again<velum::any_map>(route::serializer, file.bytes), file.bytes) << file.name;
        if (file.tag != 0) {
            tags.insert(file.tag);
            EXPECT_EQ(again<velum::uany_map>(route::serializer, file.bytes), file.bytes) << file.name;
        }
        if (file.tag != 0 && file.tag != 47) {
            EXPECT_EQ(again<velum::any_map>(route::stream, file.bytes), file.bytes) << file.name;
            EXPECT_EQ(again<velum::uany_map>(route::stream, file.bytes), file.bytes) << file.name;
        }
    }
    EXPECT_EQ(tags.size(), velum::value_catalogue::size);
}

}  // namespace
