#include "exhaustion/scenario.hpp"
#include "support/samples.hpp"
#include "wire/route.hpp"

namespace {

using namespace support;
using namespace velum;

/// Merges what is stored into a map whose one entry has the last of the keys; the entries come in turn.
template <class Map>
void run_out_with_map(route way) {
    any_map stored = map_of_samples();
    stored["zz"] = text;
    if (way == route::serializer) {
        stored["an object"] = identity_of(boxed_text(text));
        stored["no object"] = object_ptr();
    }
    run_out_writing([way, map = Map(stored.begin(), stored.end())](destination& to) {
        way == route::stream ? velum::write(to.stream, map) : velum::write(to.writer, map);
    });

    struct merging : origin {
        using origin::origin;
        Map map{{"zz", 1}, {"old", text}};
    };
    std::string const bytes = write_by(way, stored).bytes;
    auto const merge = [=](merging& m) {
        way == route::stream ? velum::read(m.stream, m.map) : velum::read(m.reader, m.map);
    };
    run_out([&] { return merging(bytes); }, merge,
            [&](merging& m, bool done) {
                Map expected = merging(bytes).map;
                auto entry = stored.begin();
                for (auto left = m.map.size() - expected.size() + (done ? 1 : 0); left != 0; --left, ++entry) {
                    expected.insert_or_assign(entry->first, entry->second);
                }
                return (entry == stored.end()) == done &&
                       write_by(route::serializer, m.map).bytes == write_by(route::serializer, expected).bytes;
            });
}

TEST(memory, that_runs_out_leaves_the_entries_that_have_passed) {
    for (route const way : {route::stream, route::serializer}) {
        run_out_with_map<any_map>(way);
        run_out_with_map<uany_map>(way);
    }
}

/// `act` puts the text `now` in the place of "old", or throws and leaves it.
void run_out_with_text(auto act, std::string const& now, std::string const& failure = {}) {
    auto const is_right = [&](auto& out, bool done) { return out == (done ? now : "old"); };
    run_out([] { return std::string("old"); }, act, is_right, failure);
}

TEST(memory, that_runs_out_leaves_what_a_value_was_to_replace) {
    std::string const key = "a text under a long name";
    any_map const map{{key, text}};
    run_out_with_text([&](auto& out) { out = any_map_get<std::string>(map, key); }, text);
    run_out_with_text([&](auto& out) { any_map_try_get(map, key, out); }, text);
    run_out_with_text([](auto& out) { out = node::id.string(); }, node::id.string());
}

TEST(memory, that_runs_out_comes_before_another_failure_or_does_not_matter) {
    std::string const clause = "unknown type in the any_map: ";
    run_out_with_text([](auto& out) { out = guid_t(text).string(); }, "old",
                      "boost::wrapexcept<std::runtime_error>: invalid uuid string");
    run_out_with_text([](auto& out) { out = any_map_get<std::string>({}, text); }, "old",
                      "velum::key_not_found: key not found in any_map: " + text);
    run_out_with_text([](auto&) { any_compare('a', 'a'); }, "old",
                      "std::runtime_error: can't find the proper any_compare for char");
    run_out_with_text([f = new_factory()](auto&) { f->class_info(guid_t()); }, "old",
                      "velum::i_object_factory_t::class_not_registered: object not registered in this factory");
    run_out([] { return destination(); },
            [](auto& to) {
                velum::write(to.stream, any_map{{"k", 'c'}});
            },
            [](auto& to, bool) { return body_of("k", 0, {}).starts_with(to.stream.str()); },
            "velum::unknown_type: " + clause + clause + "char - while writing map key: k");
    run_out([] { return std::pair(std::istringstream(body_of("k", -1, {})), any_map()); },
            [](auto& from) { velum::read(from.first, from.second); },
            [](auto& from, bool) { return from.second.empty(); },
            "velum::unknown_type: " + clause + clause + "type_id<4294967295> - while reading map key: k");
}

template <int N>
struct fresh {};

/// Where a name is kept that only now is taken in.
char const* place_of(auto take_in) {
    char const* place = nullptr;
    for (int n = 0; place == nullptr; ++n) {
        heap_watch const heap;
        bool const ran_out = ending_of([&] { place = take_in().c_str(); }, n, n % 2 == 0).first;
        EXPECT_TRUE(ran_out ? place == nullptr && heap.change() == 0 : n > 0);
    }
    EXPECT_EQ(take_in().c_str(), place);
    return place;
}

// Some names come just when a table behind has to grow.
TEST(memory, that_runs_out_while_a_name_is_taken_in_leaves_the_tables_as_they_were) {
    for (int i = 0; i < 1700; ++i) {
        std::string const name = text + std::to_string(i);
        ASSERT_EQ(place_of([&] { return ustring(name); }), name);
    }
    auto const types = []<int... N>(std::integer_sequence<int, N...>) {
        return std::vector<std::type_info const*>{&typeid(fresh<N>)...};
    }
    (std::make_integer_sequence<int, 300>());
    for (auto const* type : types) {
        char const* const known = ustring(boost::core::demangle(type->name())).c_str();
        ASSERT_EQ(place_of([&] { return type_key(*type); }), known);
    }
}

}  // namespace
