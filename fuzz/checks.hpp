#pragma once

#include "support/decode.hpp"
#include "support/documented.hpp"
#include "support/heap.hpp"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace fuzz {

using namespace support;
using velum::any_map;
using velum::uany_map;

/// Ends the program with a message unless `holds`.
inline void require(bool holds, std::string const& otherwise) {
    if (!holds) {
        std::fprintf(stderr, "velum broke its word: %s\n", otherwise.c_str());
        std::abort();
    }
}

inline void require_documented(std::string const& failure) {
    require(failure.empty() || is_documented(failure), "undocumented failure: " + failure);
}

/// What `decode` gives the one who reads: a stream and who keeps the objects that come.
struct input {
    explicit input(std::string const& bytes) : stream(bytes) {}

    std::istringstream stream;
    arrivals arrived;
};

/// What a search lets pass on top of the memory that the committed inputs keep to: a text of 16 MiB may be missing
/// within a vector of which as much is missing.
inline std::size_t tolerated = 0;  // bytes

/// Runs `read(input&)`, which may fail as documented and takes no more memory than what it reads allows. Whatever is
/// read must not outlive `from`.
template <class Read>
outcome decode(input& from, Read read) {
    heap_watch const watch;
    std::string const failure = failure_of([&] { read(from); });
    std::size_t const memory = watch.most(), consumed = consumed_of(from.stream);
    std::size_t const allowed = allowed_memory(consumed) + tolerated;
    require_documented(failure);
    // A table that the whole process shares grows in large steps, so what takes too much must do so again.
    if (memory > allowed) {
        input once_more(from.stream.str());
        heap_watch const second_watch;
        failure_of([&] { read(once_more); });
        require(second_watch.most() <= allowed,
                std::to_string(second_watch.most()) + " bytes for " + std::to_string(consumed) + " that came");
    }
    return {consumed, failure};
}

/// Reads a map as far as it goes.
template <class Map>
outcome decode_map(route way, input& from, Map& map) {
    return decode(from, [&](input& in) { read_values(way, in.stream, in.arrived, map); });
}

/// Reads a map of each kind.
inline void read_by_both(route way, std::string const& bytes) {
    input in(bytes), in_again(bytes);
    any_map map;
    uany_map interned;
    decode_map(way, in, map);
    decode_map(way, in_again, interned);
}

/// Reads what can be written again without loss: objects up to the end, as long as they come.
inline outcome decode_objects(input& from, std::vector<serializable>& records) {
    constexpr int most = 64;
    return decode(from, [&](input& in) { records = read_records(in.stream, in.arrived, most, true); });
}

}  // namespace fuzz
