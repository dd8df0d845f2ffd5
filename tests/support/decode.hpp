#pragma once

#include "support/arrivals.hpp"
#include "support/route.hpp"

#include <string>

namespace support {

// Reading what may be damaged. What a stream brings is given to the caller while all of it lives, and leaks nothing.

/// Reads a map into `map`, with its objects where the route has any.
template <class Map>
void read_values(route way, std::istream& stream, arrivals& arrived, Map& map) {
    way == route::stream ? velum::read(stream, map) : velum::read(arrived.reader(stream), map);
}

/// Reads up to `most` records in a row, up to the end of the stream where `to_end`.
inline std::vector<serializable> read_records(std::istream& stream, arrivals& arrived, int most, bool to_end = false) {
    std::vector<serializable> records;
    serializer_ptr const reader = arrived.reader(stream);
    while (most-- > 0 && !(to_end && stream.rdbuf()->sgetc() == std::istream::traits_type::eof())) {
        reader->read_object(records.emplace_back());
    }
    return records;
}

inline written write_records(std::vector<serializable> const& records) {
    std::ostringstream stream;
    std::string const failure = failure_of([&] {
        serializer_ptr const writer = writer_on(stream);
        for (serializable const& record : records) {
            writer->write_object(record);
        }
    });
    return {stream.str(), failure};
}

}  // namespace support
