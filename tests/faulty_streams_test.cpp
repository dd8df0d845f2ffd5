#include "support/failure.hpp"
#include "support/recording_stream.hpp"
#include "support/sample_graph.hpp"
#include "support/samples.hpp"
#include "wire/route.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <streambuf>

// What a stream that throws leaves, at each of its transfers in turn. What comes of one that ends is damage.
namespace {

using namespace support;
using velum::any_map;

std::string const stream_failed = "std::runtime_error: stream failed";

/// The buffer of a standard stream over a recording one.
class faulty_buffer : public std::streambuf {
public:
    explicit faulty_buffer(recorded const& stream) : stream_(stream) {}

private:
    std::streamsize xsputn(char const* data, std::streamsize size) override { return stream_->write(data, size), size; }
    std::streamsize xsgetn(char* data, std::streamsize size) override { return stream_->read(data, size), size; }
    recorded stream_;
};

recorded failing(std::string const& bytes, int n) {
    recorded const stream(new recording_stream(bytes));
    stream->transfers_left = n;
    return stream;
}

void heal(recorded const& stream, std::string const& bytes) {
    stream->transfers_left = -1;
    stream->bytes = bytes;
    stream->position = 0;
}

/// Calls `check` for each transfer that `calls` lists, with its number and what has passed before it.
void at_each_transfer(recorded const& healthy, auto check) {
    std::istringstream sizes(healthy->calls);
    std::size_t passed = 0, size = 0;
    int n = 0;
    for (; sizes >> size; passed += size, ++n) {
        SCOPED_TRACE(n);
        check(n, healthy->bytes.substr(0, passed));
    }
    EXPECT_TRUE(n > 4 && passed == healthy->bytes.size());
}

/// The first `count` entries of `stored`, put into `map`.
any_map merged(any_map map, any_map const& stored, std::ptrdiff_t count) {
    for (auto entry = stored.begin(); count != 0; --count, ++entry) {
        map.insert_or_assign(entry->first, entry->second);
    }
    return map;
}

TEST(faulty_stream, maps_pass_up_to_the_failure) {
    any_map const stored = map_of_samples(), old{{std::next(stored.begin(), 9)->first, 1}, {"old", 2}};
    recorded const healthy(new recording_stream);
    velum::write(writer_on(healthy.get()), stored);
    std::vector<std::size_t> ends;
    for (std::size_t count = 1; count <= stored.size(); ++count) {
        ends.push_back(write_by(route::stream, merged({}, stored, static_cast<std::ptrdiff_t>(count))).bytes.size());
    }
    at_each_transfer(healthy, [&](int n, std::string const& passed) {
        any_map const before =
            merged(old, stored, std::upper_bound(ends.begin(), ends.end(), passed.size()) - ends.begin());
        for (route const way : {route::stream, route::serializer}) {
            recorded const to = failing("", n), from = failing(healthy->bytes, n);
            faulty_buffer out(to), in(from);
            std::iostream output(&out), input(&in);
            output.exceptions(std::ios::badbit);
            input.exceptions(std::ios::badbit);
            any_map back = old;
            EXPECT_EQ(failure_of([&] {
                          way == route::stream ? velum::write(output, stored)
                                               : velum::write(writer_on(to.get()), stored);
                      }),
                      stream_failed);
            EXPECT_EQ(to->bytes, passed);
            EXPECT_EQ(failure_of([&] {
                          way == route::stream ? velum::read(input, back)
                                               : velum::read(reader_on(from.get(), {}), back);
                      }),
                      stream_failed);
            EXPECT_TRUE(same_map(back, before));
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
    at_each_transfer(graph.stream, [&](int n, std::string const& passed) {
        for (std::size_t i = 0; i < graph.objects.size(); ++i) {
            recorded const to = failing("", n);
            auto const writer = writer_on(to.get());
            EXPECT_EQ(failure_of([&] { writer->write_object(graph.objects[0]); }), stream_failed);
            EXPECT_EQ(to->bytes, passed);
            heal(to, "");
            writer->write_object(graph.objects[i]);
            bool const is_begun = n >= graph.moments[i].identifier;
            EXPECT_TRUE(is_begun ? to->bytes == u32(1) + u32(i) : to->bytes.starts_with(u32(2))) << i;
        }
    });
}

TEST(faulty_stream, a_reader_knows_the_objects_whose_construction_it_has_read) {
    recorded_graph const graph;
    at_each_transfer(graph.stream, [&](int n, std::string const&) {
        recorded const from = failing(graph.stream->bytes, n);
        auto const reader = reader_on(from.get(), node_factory());
        arrivals const arrived(reader);
        serializable object;
        EXPECT_EQ(failure_of([&] { reader->read_object(object); }), stream_failed);
        for (std::size_t i = 0; i < graph.moments.size(); ++i) {
            heal(from, u32(1) + u32(i));
            bool const is_known = failure_of([&] { reader->read_object(object); }).empty();
            EXPECT_EQ(is_known, n >= graph.moments[i].state) << i;
        }
    });
}

}  // namespace
