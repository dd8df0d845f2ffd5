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
        committed.insert(entry.path().filename());
    }
    EXPECT_EQ(names, committed);
}

template <class Map>
std::string again(std::string const& bytes) {
    std::istringstream stream(bytes);
    arrivals arrived;
    Map map;
    read_values(route::serializer, stream, arrived, map);
    return write_by(route::serializer, map).bytes;
}

// An order that means nothing may be another one; all maps with interned keys but the last have one entry.
TEST(golden, what_is_read_is_written_as_it_was) {
    for (golden const& file : goldens()) {
        std::istringstream stream(file.bytes);
        arrivals arrived;
        if (file.objects != 0) {
            EXPECT_EQ(write_records(read_records(stream, arrived, file.objects)).bytes, file.bytes) << file.name;
        } else {
            EXPECT_EQ(again<velum::any_map>(file.bytes), file.bytes) << file.name;
            EXPECT_TRUE(file.tag == 0 || again<velum::uany_map>(file.bytes) == file.bytes) << file.name;
        }
    }
}

}  // namespace
