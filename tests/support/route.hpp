#pragma once

#include "support/failure.hpp"
#include "support/serializers.hpp"

#include <cstddef>
#include <sstream>
#include <string>

namespace support {

enum class route { stream, serializer };

struct written {
    std::string bytes;
    std::string failure;
};

struct outcome {
    std::size_t consumed = 0;
    std::string failure;
};

/// How far a stream has been read, also one that has failed.
inline std::size_t consumed_of(std::istream& stream) {
    return static_cast<std::size_t>(stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
}

template <class Map>
written write_by(route way, Map const& map) {
    std::ostringstream stream;
    std::string const failure =
        failure_of([&] { way == route::stream ? velum::write(stream, map) : velum::write(writer_on(stream), map); });
    return {stream.str(), failure};
}

template <class Map>
outcome read_by(route way, std::string const& bytes, Map& map) {
    std::istringstream stream(bytes);
    std::string const failure =
        failure_of([&] { way == route::stream ? velum::read(stream, map) : velum::read(reader_on(stream), map); });
    return {consumed_of(stream), failure};
}

/// Whether two maps have the same stored form, which shows every type and every bit of every value but objects.
template <class Map>
bool same_map(Map const& a, Map const& b) {
    return write_by(route::stream, a).bytes == write_by(route::stream, b).bytes;
}

}  // namespace support
