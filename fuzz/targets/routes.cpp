#include "checks.hpp"
#include "targets.hpp"

namespace {

using namespace fuzz;

template <class Map>
void by_both(std::string const& bytes) {
    input from_stream(bytes), from_serializer(bytes);
    Map streamed, serialized;
    outcome const one = decode_map(route::stream, from_stream, streamed);
    outcome const other = decode_map(route::serializer, from_serializer, serialized);
    auto const either = [&](char const* failure) { return one.failure == failure || other.failure == failure; };
    // Only a serializer has objects, and each route has a depth of its own.
    if (either("std::runtime_error: i_unknown serialization not possible with this type of stream") ||
        either("std::runtime_error: nesting too deep")) {
        return;
    }
    require(one.failure == other.failure,
            "the routes fail in different ways: '" + one.failure + "' and '" + other.failure + "'");
    require(one.consumed == other.consumed, "the routes read different lengths");
    written const again = write_by(route::stream, streamed), again_serialized = write_by(route::serializer, serialized);
    require_documented(again.failure);
    if (again.failure.empty() && again_serialized.failure.empty()) {
        require(again.bytes == again_serialized.bytes, "the routes read different values");
    }
}

}  // namespace

// A standard stream and a serializer on it come to the same.
void fuzz::routes(std::string const& bytes) {
    by_both<any_map>(bytes);
    by_both<uany_map>(bytes);
}
