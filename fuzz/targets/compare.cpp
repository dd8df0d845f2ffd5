#include "checks.hpp"
#include "targets.hpp"

#include <boost/any.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

using namespace fuzz;
using anys = std::vector<boost::any>;

bool less(boost::any const& a, boost::any const& b) {
    return velum::any_compare(a, b);
}

/// Whether no byte of `bytes` can be the last of a NaN, which has no order.
bool is_ordered(std::string const& bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x7F) == 0x7F; });
}

void check_two(boost::any const& a, boost::any const& b) {
    boost::any const copy = a;
    require(!less(a, a) && !less(a, copy) && !less(copy, a), "a value differs from itself");
    bool const before = less(a, b), behind = less(b, a);
    require(!before || !behind, "two values are before each other");
    anys const forward{a, b}, reversed{b, a}, longer{a, b, a};
    require(less(forward, reversed) == before && less(reversed, forward) == behind, "lists compare otherwise");
    require(less(forward, longer) && !less(longer, forward), "a list isn't before a longer one");
    if (!before && !behind) {
        require(a.type() == b.type(), "values of two types are equal");
        require(write_by(route::stream, any_map{{"k", a}}).bytes.size() ==
                    write_by(route::stream, any_map{{"k", b}}).bytes.size(),
                "values of two lengths are equal");
    }
}

void check_three(boost::any const& a, boost::any const& b, boost::any const& c) {
    bool const ab = less(a, b), bc = less(b, c), ac = less(a, c);
    require(!(ab && bc) || ac, "the order isn't transitive");
    bool const equal_ab = !ab && !less(b, a), equal_bc = !bc && !less(c, b);
    require(!(equal_ab && equal_bc) || (!ac && !less(c, a)), "equality isn't transitive");
    require(!(equal_ab && bc) || ac, "of two equal values one is before a third");
}

void check_all(anys const& values, bool ordered) {
    for (boost::any const& a : values) {
        for (boost::any const& b : values) {
            check_two(a, b);
            for (std::size_t i = 0; ordered && i < values.size(); ++i) {
                check_three(a, b, values[i]);
            }
        }
    }
}

template <class Map>
void compare_maps(std::string const& bytes) {
    constexpr std::size_t most = 5;
    constexpr std::ptrdiff_t large = 1 << 20U;  // bytes
    input in(bytes);
    heap_watch const watch;
    Map a, b;
    decode(in, [&](input& from) {
        read_values(route::stream, from.stream, from.arrived, a);
        read_values(route::stream, from.stream, from.arrived, b);
    });
    anys values{a, b};
    bool const is_small = watch.change() < large;
    for (Map const* const map : {&a, &b}) {
        for (auto const& [key, value] : *map) {
            if (is_small && values.size() < most && !value.empty()) {
                values.push_back(value);
            }
        }
    }
    require_documented(failure_of([&] { check_all(values, is_ordered(bytes)); }));
}

}  // namespace

// The order of two maps, one behind the other, and of the values in them.
void fuzz::compare(std::string const& bytes) {
    compare_maps<any_map>(bytes);
    compare_maps<uany_map>(bytes);
}
