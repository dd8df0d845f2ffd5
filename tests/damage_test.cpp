#include "support/decode.hpp"
#include "support/documented.hpp"
#include "support/golden.hpp"
#include "support/heap.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace support;
using velum::any_map;
using velum::uany_map;

// What reading comes to. What was read is written again only where it is asked for: damage may make it large.
struct result : outcome {
    std::string again;
    std::size_t memory = 0;
};

enum class then { drop, write };

template <class Read, class Write>
result outcome_of(std::string const& bytes, std::ios::iostate exceptions, Read read, Write write) {
    std::istringstream stream(bytes);
    stream.exceptions(exceptions);
    heap_watch const watch;
    std::string const failure = failure_of([&] { read(stream); });
    std::size_t const memory = watch.most();
    return {{consumed_of(stream), failure}, write(), memory};
}

template <class Map>
result outcome_of_map(route way, std::string const& bytes, then next, std::ios::iostate exceptions) {
    arrivals arrived;
    Map map{{"old", 1}};
    return outcome_of(
        bytes, exceptions, [&](auto& stream) { read_values(way, stream, arrived, map); },
        [&] { return next == then::write ? write_by(route::serializer, map).bytes : ""; });
}

result outcome_of_objects(int count, std::string const& bytes, then next, std::ios::iostate exceptions) {
    arrivals arrived;
    std::vector<serializable> records;
    return outcome_of(
        bytes, exceptions, [&](auto& stream) { records = read_records(stream, arrived, count); },
        [&] { return next == then::write ? write_records(records).bytes : ""; });
}

/// All that `bytes` come to when they are read in the place of a golden file, by each route into each kind of map.
std::vector<result> outcomes_of(golden const& file, std::string const& bytes, then next,
                                std::ios::iostate exceptions = std::ios::goodbit) {
    if (file.objects != 0) {
        return {outcome_of_objects(file.objects, bytes, next, exceptions)};
    }
    std::vector<result> results;
    for (route const way : {route::stream, route::serializer}) {
        results.push_back(outcome_of_map<any_map>(way, bytes, next, exceptions));
        results.push_back(outcome_of_map<uany_map>(way, bytes, next, exceptions));
    }
    return results;
}

// What doesn't arrive is zero, in whatever field the end falls: a file cut short must read as the same file with zeros
// behind it, which is never short, unless the stream speaks up.
TEST(damage, a_file_cut_short_reads_as_zeros_or_throws_what_the_stream_throws) {
    for (golden const& file : goldens()) {
        for (std::size_t cut = 0; cut <= file.bytes.size(); ++cut) {
            std::string const arrived = file.bytes.substr(0, cut);
            auto const results = outcomes_of(file, arrived, then::write);
            auto const padded = outcomes_of(file, arrived + std::string(4096, '\0'), then::write);
            auto const strict = outcomes_of(file, arrived, then::drop, std::ios::failbit);
            for (std::size_t i = 0; i < results.size(); ++i) {
                bool const is_short = padded[i].consumed > cut;
                ASSERT_EQ(results[i].failure, padded[i].failure) << file.name << " cut at " << cut;
                ASSERT_EQ(results[i].consumed, std::min(cut, padded[i].consumed)) << file.name << " cut at " << cut;
                ASSERT_EQ(results[i].again, padded[i].again) << file.name << " cut at " << cut;
                ASSERT_EQ(strict[i].failure == "std::ios_base::failure", is_short) << file.name << " at " << cut;
            }
        }
    }
}

/// Reads a damaged file, which must end in a value or a documented failure, and gives the places of the failures.
void expect_documented(golden const& file, std::string const& damaged, std::set<std::size_t>& met) {
    for (result const& read : outcomes_of(file, damaged, then::drop)) {
        std::size_t const place = documented_place(read.failure);
        ASSERT_TRUE(read.failure.empty() || place != documented_failures.size())
            << read.failure << " of " << file.name << ": " << testing::PrintToString(damaged);
        ASSERT_LE(read.memory, allowed_memory(read.consumed)) << file.name << ": " << testing::PrintToString(damaged);
        met.insert(place);
    }
}

TEST(damage, every_bit_turned_ends_in_a_value_or_a_documented_failure) {
    std::set<std::size_t> met;
    for (golden const& file : goldens()) {
        for (std::size_t bit = 0; bit < 8 * file.bytes.size(); ++bit) {
            std::string damaged = file.bytes;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
            ASSERT_NO_FATAL_FAILURE(expect_documented(file, damaged, met));
        }
    }
    EXPECT_GE(met.size(), 7U) << "of the documented failures";
}

TEST(damage, every_tag_in_the_place_of_every_other_ends_in_a_value_or_a_documented_failure) {
    auto const files = goldens();
    std::size_t const place = body_of("key", 0, "").size() - 4;
    std::set<std::size_t> met;
    for (golden const& file : files) {
        for (golden const& other : files) {
            if (file.tag != 0 && other.tag != 0 && file.tag != other.tag) {
                std::string damaged = file.bytes;
                damaged.replace(place, 4, other.bytes, place, 4);
                ASSERT_NO_FATAL_FAILURE(expect_documented(file, damaged, met));
            }
        }
    }
    EXPECT_GE(met.size(), 3U) << "of the documented failures, and values";
}

}  // namespace
