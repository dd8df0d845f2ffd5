#pragma once

#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/heap.hpp"
#include "support/sample_graph.hpp"

#include <gtest/gtest.h>

#include <exception>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// What happens when memory runs out: at each allocation in turn, at that one alone and at all from there on.
namespace support {

/// What the operations work with; none may keep or lose a reference on any of it.
inline sample_graph const graph;
inline std::string const text = "a text for which a string takes memory";

inline std::vector<std::int32_t> counts_in_graph() {
    std::vector<std::int32_t> counts;
    for (serializable const& each : graph.objects) {
        counts.push_back(references(each));
    }
    return counts;
}

/// Whether `act` ran out of memory, and what it threw, with memory for `n` allocations; see `heap_failure`.
std::pair<bool, std::string> ending_of(auto act, int n, bool lasting) {
    std::exception_ptr thrown;
    bool ran_out = false;
    {
        heap_failure const limit(n, lasting);
        try {
            act();
        } catch (...) {
            thrown = std::current_exception();
        }
        ran_out = limit.happened();
    }
    return {ran_out, failure_of([&] { thrown ? std::rethrow_exception(thrown) : void(); })};
}

/// Tries `act` on what `make` makes until its memory suffices, and leaves nothing of either. `is_right` looks at the
/// target, and is told whether `act` got through, be it to the failure that is `expected`.
template <class Act>
void run_out(auto make, Act act, auto is_right, std::string const& expected = {}) {
    for (bool const lasting : {false, true}) {
        int n = -1;  // without a limit, for what stays for as long as the process is there from now on
        for (bool ran_out = true; ran_out || n == 0; ++n) {
            SCOPED_TRACE(boost::core::demangle(typeid(Act).name()) + " with memory for " + std::to_string(n));
            auto const counts = counts_in_graph();
            heap_watch const heap;
            {
                auto target = make();
                auto const [happened, failure] = ending_of([&] { act(target); }, n, lasting);
                bool const done = failure == expected;
                EXPECT_TRUE(done || (happened && (failure == "std::bad_alloc: std::bad_alloc" ||
                                                  failure == "std::runtime_error: memory allocation failed")))
                    << failure;
                EXPECT_TRUE(is_right(target, done)) << (done ? "done" : "failed");
                ran_out = happened;
            }
            EXPECT_TRUE(heap.change() == 0 || n < 0) << heap.change();
            EXPECT_EQ(counts_in_graph(), counts);
        }
        EXPECT_GT(n, 1) << "no allocation";
    }
}

/// What stands in a stream, and a reader of it.
struct origin {
    explicit origin(std::string const& bytes) : stream(bytes), reader(reader_on(stream, node_factory())) {}
    std::istringstream stream;
    serializer_ptr reader;
};

struct destination {
    destination() { stream.exceptions(std::ios::badbit); }
    std::ostringstream stream;
    serializer_ptr writer = writer_on(stream);
};

std::string bytes_of(auto write) {
    destination to;
    write(to);
    return to.stream.str();
}

/// Of what is written there is the whole or a beginning.
void run_out_writing(auto write) {
    std::string const all = bytes_of(write);
    run_out(
        [] { return destination(); }, write,
        [&](destination& to, bool done) { return done ? to.stream.str() == all : all.starts_with(to.stream.str()); });
}

}  // namespace support
