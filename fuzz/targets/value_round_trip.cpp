#include "checks.hpp"
#include "targets.hpp"

#include <boost/any.hpp>

namespace {

using namespace fuzz;

template <class Map>
void there_and_back(std::string const& bytes) {
    input in(bytes);
    Map map, back;
    decode_map(route::stream, in, map);
    written const first = write_by(route::stream, map);
    require_documented(first.failure);
    if (!first.failure.empty()) {
        return;  // what was nested deep when it was read may be too deep to be written
    }
    input again(first.bytes);
    outcome const result = decode_map(route::stream, again, back);
    require(result.failure.empty(), "what was written can't be read: " + result.failure);
    require(result.consumed == first.bytes.size(), "a part of what was written isn't read");
    require(write_by(route::stream, back).bytes == first.bytes, "what was read is written otherwise");
    boost::any const a = map, b = back;
    bool differs = false;
    require_documented(failure_of([&] { differs = velum::any_compare(a, b) || velum::any_compare(b, a); }));
    require(!differs, "what was read isn't equal to what was written");
}

}  // namespace

// Whatever can be read is a value that can be written, and comes back as it was.
void fuzz::value_round_trip(std::string const& bytes) {
    there_and_back<any_map>(bytes);
    there_and_back<uany_map>(bytes);
}
