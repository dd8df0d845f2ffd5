#include "support/bytes.hpp"
#include "support/stack.hpp"
#include "wire/route.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace support;
using boost::any;
using velum::any_map;
using velum::uany_map;
using anys = std::vector<any>;

std::string const too_deep = "std::runtime_error: nesting too deep";

/// A way to put a value into another: the stored form ahead of it, the value itself, and how many keys lead through.
struct layer {
    std::string head;
    any (*wrap)(any);
    int keys;
};

template <class Map>
Map one_entry(any&& value) {
    Map map;
    map[typename Map::key_type()] = std::move(value);
    return map;
}

template <class Vector, class Element>
Vector one_element(Element&& element) {
    Vector vector;
    vector.push_back(std::move(element));
    return vector;
}

std::array<layer, 5> const layers = {{
    {u32(40) + u32(1) + u32(0), [](any v) -> any { return one_entry<any_map>(std::move(v)); }, 1},
    {u32(41) + u32(1) + u32(1) + u32(0),
     [](any v) -> any { return one_element<std::vector<any_map>>(one_entry<any_map>(std::move(v))); }, 1},
    {u32(43) + u32(1) + u32(0), [](any v) -> any { return one_entry<uany_map>(std::move(v)); }, 1},
    {u32(44) + u32(1) + u32(1) + u32(0),
     [](any v) -> any { return one_element<std::vector<uany_map>>(one_entry<uany_map>(std::move(v))); }, 1},
    {u32(46) + u32(1), [](any v) -> any { return one_element<anys>(std::move(v)); }, 0},
}};
constexpr std::size_t mixed = layers.size();

layer const& layer_at(std::size_t kind, int level) {
    return layers[kind == mixed ? static_cast<std::size_t>(level) % layers.size() : kind];
}

/// The value within the outermost layer of another.
any take_inner(any& outer) {
    any inner;
    if (auto* const map = boost::any_cast<any_map>(&outer)) {
        inner.swap(map->begin()->second);
    } else if (auto* const interned = boost::any_cast<uany_map>(&outer)) {
        inner.swap(interned->begin()->second);
    } else if (auto* const maps = boost::any_cast<std::vector<any_map>>(&outer)) {
        inner.swap(maps->front().begin()->second);
    } else if (auto* const all_interned = boost::any_cast<std::vector<uany_map>>(&outer)) {
        inner.swap(all_interned->front().begin()->second);
    } else if (auto* const values = boost::any_cast<anys>(&outer)) {
        inner.swap(values->front());
    }
    return inner;
}

/// A map around `depth` layers around the value true, which comes apart without a recursion.
class deep_map {
public:
    deep_map(std::size_t kind, int depth) {
        any value = true;
        for (int level = depth; level-- != 0;) {
            value = layer_at(kind, level).wrap(std::move(value));
        }
        map[""] = std::move(value);
    }
    deep_map(deep_map const&) = delete;
    deep_map& operator=(deep_map const&) = delete;
    ~deep_map() {
        any value = std::move(map[""]);
        while (!value.empty()) {
            value = take_inner(value);
        }
    }

    any_map map;
};

std::string deep_bytes(std::size_t kind, int depth, int tag_of_leaf) {
    std::string bytes = u32(1) + u32(0);
    for (int level = 0; level < depth; ++level) {
        bytes += layer_at(kind, level).head;
    }
    return bytes + u32(static_cast<std::uint32_t>(tag_of_leaf)) + u32(1);
}

std::string failure_of_reading(route way, std::string const& bytes) {
    any_map map;
    return read_by(way, bytes, map).failure;
}

/// Runs `work` with each route and each kind of layer, on a large and on a small stack.
template <class Work>
void everywhere(Work work) {
    for (std::size_t const stack : {std::size_t{8} << 20U, std::size_t{256} << 10U}) {
        on_stack(stack, [&] {
            for (std::size_t kind = 0; kind <= mixed; ++kind) {
                SCOPED_TRACE(testing::Message() << stack << " bytes of stack, layers " << kind);
                work(route::stream, kind);
                work(route::serializer, kind);
            }
        });
    }
}

TEST(nesting, what_is_written_can_be_read_copied_and_destroyed) {
    everywhere([](route way, std::size_t kind) {
        int const depth = deepest([&](int n) { return write_by(way, deep_map(kind, n).map).failure.empty(); });
        EXPECT_GT(depth, 50);
        std::string const bytes = deep_bytes(kind, depth, 2);
        any_map back;
        EXPECT_EQ(read_by(way, bytes, back).failure, "");
        any_map const copy = back;
        back.clear();
        EXPECT_TRUE(write_by(way, copy).bytes == bytes);
    });
}

TEST(nesting, the_message_names_all_keys_of_the_deepest_value) {
    everywhere([](route way, std::size_t kind) {
        int const depth = deepest([&](int n) { return failure_of_reading(way, deep_bytes(kind, n, 2)).empty(); });
        std::string prefixes = "velum::unknown_type: unknown type in the any_map: unknown type in the any_map: ";
        std::string clauses = " - while reading map key: ";
        for (int level = 0; level < depth; ++level) {
            prefixes += layer_at(kind, level).keys != 0 ? "unknown type in the any_map: " : "";
            clauses += layer_at(kind, level).keys != 0 ? " - while reading map key: " : "";
        }
        EXPECT_TRUE(failure_of_reading(way, deep_bytes(kind, depth, 33)) == prefixes + "type_id<33>" + clauses);
    });
}

}  // namespace
