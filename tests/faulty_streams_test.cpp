#include "support/failure.hpp"
#include "support/recording_stream.hpp"
#include "support/sample_graph.hpp"
#include "support/samples.hpp"
#include "wire/route.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <streambuf>

// What a stream that fails leaves, at each of its transfers in turn.
namespace {

using namespace support;
using velum::any_map;

std::string const stream_failed = "std::runtime_error: stream failed";
fault const all_faults[] = {fault::throws, fault::ends, fault::halves, fault::skips};

/// The buffer of a standard stream over a recording one.
class faulty_buffer : public std::streambuf {
public:
    explicit faulty_buffer(recorded const& stream) : stream_(stream) {}

private:
    std::streamsize xsputn(char const* data, std::streamsize size) override {
        auto const before = stream_->bytes.size();
        stream_->write(data, size);
        return static_cast<std::streamsize>(stream_->bytes.size() - before);
    }
    std::streamsize xsgetn(char* data, std::streamsize size) override {
        auto const before = stream_->position;
        stream_->read(data, size);
        return static_cast<std::streamsize>(stream_->position - before);
    }
    recorded stream_;
};

/// What doesn't pass when the transfer with the number `n` fails, from its first byte up to its last.
std::pair<std::size_t, std::size_t> lost(std::string const& calls, int n, fault how) {
    std::istringstream sizes(calls);
    std::size_t begin = 0, size = 0;
    for (sizes >> size; n != 0; --n, sizes >> size) {
        begin += size;
    }
    return {how == fault::throws || how == fault::ends ? begin : begin + size / 2,
            how == fault::skips ? begin + size : std::string::npos};
}

std::string without(std::string const& all, std::pair<std::size_t, std::size_t> hole) {
    return std::string(all).erase(hole.first, hole.second - hole.first);
}

std::string zeroed(std::string const& all, std::pair<std::size_t, std::size_t> hole) {
    std::string const more = all + std::string(1000, '\0');  // more than anything reads
    std::size_t const size = std::min(hole.second, more.size()) - hole.first;
    return std::string(more).replace(hole.first, size, size, '\0');
}

recorded failing(std::string const& bytes, int n, fault how) {
    recorded const stream(new recording_stream(bytes));
    stream->transfers_left = n;
    stream->failure = how;
    return stream;
}

void heal(recorded const& stream, std::string const& bytes) {
    stream->transfers_left = -1;
    stream->ended = false;
    stream->bytes = bytes;
    stream->position = 0;
}

/// Calls `check` for each transfer that `calls` lists and for each way in which it may fail.
void at_each_transfer(std::string const& calls, auto check) {
    auto const count = std::count(calls.begin(), calls.end(), ' ');
    ASSERT_GT(count, 4);
    for (int n = 0; n < count; ++n) {
        for (fault const how : all_faults) {
            SCOPED_TRACE(std::to_string(n) + " " + std::to_string(static_cast<int>(how)));
            check(n, how, lost(calls, n, how));
        }
    }
}

/// The first `count` entries of `stored`, put into `map`.
template <class Map>
Map merged(Map map, any_map const& stored, std::size_t count) {
    for (auto entry = stored.begin(); count != 0; --count, ++entry) {
        map.insert_or_assign(entry->first, entry->second);
    }
    return map;
}

// Through a serializer nobody looks at what arrives; a standard stream that is told to throws at once.
TEST(faulty_stream, maps_pass_up_to_the_failure) {
    any_map const stored = map_of_samples(), old{{std::next(stored.begin(), 9)->first, 1}, {"old", 2}};
    recorded const healthy(new recording_stream);
    velum::write(writer_on(healthy.get()), stored);
    std::string const all = healthy->bytes;
    std::vector<std::size_t> ends;
    for (std::size_t count = 1; count <= stored.size(); ++count) {
        ends.push_back(write_by(route::stream, merged(any_map(), stored, count)).bytes.size());
    }
    at_each_transfer(healthy->calls, [&](int n, fault how, auto hole) {
        auto const whole = std::upper_bound(ends.begin(), ends.end(), hole.first) - ends.begin();
        any_map const before = merged(old, stored, static_cast<std::size_t>(whole));
        auto const check = [&](route way, std::string const& told, auto write, auto read) {
            recorded const to = failing("", n, how);
            EXPECT_EQ(failure_of([&] { write(to); }), told);
            EXPECT_EQ(to->bytes, without(all, hole));
            any_map back = old, expected = told.empty() ? old : before;
            std::string const failure = failure_of([&] { read(failing(all, n, how), back); });
            EXPECT_EQ(failure, told.empty() ? read_by(way, zeroed(all, hole), expected).failure : told);
            EXPECT_TRUE(same_map(back, expected));
        };
        std::string const thrown = how == fault::throws ? stream_failed : "";
        check(
            route::serializer, thrown, [&](recorded const& to) { velum::write(writer_on(to.get()), stored); },
            [](recorded const& from, any_map& into) { velum::read(reader_on(from.get(), nullptr), into); });
        for (auto const mask : {std::ios::goodbit, std::ios::badbit | std::ios::failbit}) {
            SCOPED_TRACE(mask);
            auto const on_standard = [mask](recorded const& stream, auto work) {
                faulty_buffer buffer(stream);
                std::iostream standard(&buffer);
                standard.exceptions(mask);
                work(standard);
                return standard.bad();
            };
            if (how != fault::skips) {  // a standard stream can't
                check(
                    route::stream,
                    mask == std::ios::goodbit ? ""
                    : thrown.empty()          ? "std::ios_base::failure"
                                              : thrown,
                    [&](recorded const& to) {
                        EXPECT_TRUE(on_standard(to, [&](auto& stream) { velum::write(stream, stored); }));
                    },
                    [&](recorded const& from, any_map& into) {
                        on_standard(from, [&](auto& stream) { velum::read(stream, into); });
                    });
            }
        }
    });
}

struct moment {
    int identifier, state;
};

/// A graph, its stored form and by which transfers its objects have their numbers: a writer gives one before the
/// identifier of the class, the only kind of transfer that has 16 bytes; a reader does so behind the head of the
/// record.
struct recorded_graph : sample_graph {
    recorded const stream = new recording_stream;
    std::vector<moment> moments;

    recorded_graph() {
        writer_on(stream.get())->write_object(objects[0]);
        std::istringstream sizes(stream->calls);
        for (int n = 0, size = 0; sizes >> size; ++n) {
            if (size == 16) {
                recorded const head(new recording_stream);
                writer_on(head.get())->write_object_header(identity_of(objects.at(moments.size())));
                auto const length = std::count(head->calls.begin(), head->calls.end(), ' ');
                moments.push_back({n, n - 2 + static_cast<int>(length)});  // behind a tag and a number
            }
        }
        EXPECT_EQ(moments.size(), objects.size());
    }
};

TEST(faulty_stream, a_writer_knows_the_objects_that_it_has_begun) {
    recorded_graph const graph;
    std::string const all = graph.stream->bytes;
    at_each_transfer(graph.stream->calls, [&](int n, fault how, auto hole) {
        for (std::size_t i = 0; i < graph.objects.size(); ++i) {
            recorded const to = failing("", n, how);
            auto const writer = writer_on(to.get());
            EXPECT_EQ(failure_of([&] { writer->write_object(graph.objects[0]); }),
                      how == fault::throws ? stream_failed : "");
            EXPECT_EQ(to->bytes, without(all, hole));
            heal(to, "");
            writer->write_object(graph.objects[i]);
            bool const is_begun = how != fault::throws || n >= graph.moments[i].identifier;
            EXPECT_TRUE(is_begun ? to->bytes == u32(1) + u32(i) : to->bytes.starts_with(u32(2))) << i;
        }
    });
}

/// What comes of a reading, and which of `count` numbers the reader knows then.
std::string outcome_of(recorded const& stream, std::size_t count) {
    auto const reader = reader_on(stream.get(), node_factory());
    arrivals const arrived(reader);
    serializable object;
    std::string outcome = failure_of([&] { reader->read_object(object); });
    for (std::size_t i = 0; i < count; ++i) {
        heal(stream, u32(1) + u32(i));
        serializable known;
        outcome += failure_of([&] { reader->read_object(known); }).empty() ? " " + std::to_string(i) : "";
    }
    recorded const again(new recording_stream);
    object ? writer_on(again.get())->write_object(object) : void();
    return outcome + again->bytes;
}

TEST(faulty_stream, a_reader_knows_the_objects_whose_construction_it_has_read) {
    recorded_graph const graph;
    std::string const all = graph.stream->bytes;
    std::size_t const count = graph.moments.size();
    EXPECT_TRUE(outcome_of(new recording_stream(all), count).ends_with(all));
    at_each_transfer(graph.stream->calls, [&](int n, fault how, auto hole) {
        std::string const outcome = outcome_of(failing(all, n, how), count);
        std::string expected = stream_failed;
        for (std::size_t i = 0; i < count; ++i) {
            expected += n >= graph.moments[i].state ? " " + std::to_string(i) : "";
        }
        if (how == fault::throws) {
            EXPECT_TRUE(outcome.starts_with(expected) && !outcome.substr(expected.size()).starts_with(" ")) << outcome;
        } else {
            EXPECT_EQ(outcome, outcome_of(new recording_stream(zeroed(all, hole)), count));
        }
    });
}

}  // namespace
