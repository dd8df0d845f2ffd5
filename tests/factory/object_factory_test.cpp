#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using namespace support;
using namespace velum;

guid_t const text_id("43D4FF6A-038F-4d67-B193-8D21B14DA8BC"), map_id("AD409247-FD65-4d5a-BC6B-90A224C55AEE");
std::string const known =
    "velum::i_object_factory_t::class_already_registered: object already registered in this factory";
std::string const unknown = "velum::i_object_factory_t::class_not_registered: object not registered in this factory";
std::string const bad_call = "boost::wrapexcept<boost::bad_function_call>: call to empty boost::function";

object_factory plain_factory() {
    object_factory factory;
    EXPECT_TRUE(basic_object_factory_t::create_function(nullptr, nullptr, iid_object_factory, &factory));
    return factory;
}

object_factory composite(std::set<object_factory> const& members) {
    return make<multi_object_factory_t>(members).as<i_object_factory_t>();
}

std::vector<guid_t> classes_of(i_object_factory_t const& factory) {
    return {factory.registered_classes().begin(), factory.registered_classes().end()};
}

/// What the three ways to use a class fail with, in one line.
std::string failures_of_use(i_object_factory_t& factory, guid_t const& id) {
    object_ptr made, rebuilt;
    std::string const creating = failure_of([&] { factory.create_object(id, {}, {}, iid_unknown, &made); });
    std::string const rebuilding = failure_of([&] { factory.deserialize_object(id, {}, {}, rebuilt); });
    EXPECT_TRUE(creating.empty() == static_cast<bool>(made) && rebuilding.empty() == static_cast<bool>(rebuilt));
    return creating + "|" + rebuilding + "|" + failure_of([&] { factory.class_info(id); });
}
std::string const all_unknown = unknown + "|" + unknown + "|" + unknown;

TEST(object_factory, knows_two_classes_from_the_start) {
    auto const factory = plain_factory();
    EXPECT_EQ(classes_of(*factory), (std::vector{text_id, map_id}));
    for (guid_t const& id : {text_id, map_id}) {
        EXPECT_EQ(failures_of_use(*factory, id), "||");
        object_ptr made;
        EXPECT_TRUE(factory->create_object(id, {}, {}, iid_unknown, &made) && stored_form(made)->clsid() == id);
        auto const& record = id == text_id ? basic_string_t::class_info : basic_unknown_map_t::class_info;
        EXPECT_EQ(any_map_get<std::string>(factory->class_info(id), "class_name"),
                  any_map_get<std::string>(record, "class_name"));
        EXPECT_EQ(failure_of([&] { factory->register_class(id, {}, {}, {}, [] { ADD_FAILURE(); }); }), known);
    }
    EXPECT_EQ(failures_of_use(*factory, uany_map_obj_t::_clsid), all_unknown);
    factory->register_class(uany_map_obj_t::_class_info);
    EXPECT_EQ(failures_of_use(*factory, uany_map_obj_t::_clsid), "||");
    EXPECT_EQ(failure_of([&] { factory->register_class(uany_map_obj_t::_class_info); }), known);
    EXPECT_EQ(classes_of(*factory), (std::vector{uany_map_obj_t::_clsid, text_id, map_id}));
}

TEST(object_factory, takes_a_class_from_its_record) {
    guid_t const id("{00000000-0000-0000-0000-0000000000AB}");
    create_function_t const create = &basic_string_t::create_function;
    deserialize_function_t const rebuild = &basic_string_t::deserialize_function;
    int calls = 0;
    object_factory factory;
    init_function_t const init = [&] {
        ++calls;
        EXPECT_EQ(failures_of_use(*factory, id), "||") << "the class is there already";
        factory->register_class(id, {}, {}, {}, {});
    };
    std::string const missing = "velum::key_not_found: key not found in any_map: ";
    std::string const wrong =
        "boost::wrapexcept<boost::bad_any_cast>: boost::bad_any_cast: failed conversion using boost::any_cast";
    auto const with = [&](char const* key, boost::any const& value) {
        any_map record{{"clsid", id}, {"create_function", create}, {"deserialize_function", rebuild}};
        value.empty() ? void(record.erase(key)) : void(record[key] = value);
        return record;
    };
    struct {
        any_map record;
        std::string failure;
        int calls;
        std::string use;
    } const rows[] = {
        {basic_string_t::class_info, missing + "clsid", 0, all_unknown},
        {with("create_function", {}), missing + "create_function", 0, all_unknown},
        {with("deserialize_function", {}), missing + "deserialize_function", 0, all_unknown},
        {with("clsid", std::string("id")), wrong, 0, all_unknown},
        {with("create_function", rebuild), wrong, 0, all_unknown},
        {with("deserialize_function", &basic_string_t::deserialize_function), wrong, 0, all_unknown},
        {with("init_function", init), known, 1, "||"},
        {with("init_function", 5), "", 0, "||"},
        {with("create_function", create_function_t()), "", 0, bad_call + "||"},
        {with("deserialize_function", deserialize_function_t()), "", 0, "|" + bad_call + "|"},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        factory = plain_factory();
        calls = 0;
        EXPECT_EQ(failure_of([&] { factory->register_class(row.record); }), row.failure);
        EXPECT_EQ(calls, row.calls);
        EXPECT_EQ(failures_of_use(*factory, id), row.use);
        EXPECT_EQ(classes_of(*factory).size(), row.use == all_unknown ? 2U : 3U);
    }
}

TEST(object_factory, hands_everything_on_and_gives_the_result_back) {
    object_ptr const outer = identity_of(new_factory());
    object_map const params = new_object_map();
    object_ptr slot, rebuilt;
    for (int const i : {0, 1, 2, 3}) {
        object_factory const factory = i / 2 == 0 ? plain_factory() : composite({});
        bool const answer = i % 2 == 0;
        guid_t const id = answer ? iid_string : iid_unknown;
        auto const create = [&](auto const& o, auto const& p, guid_t const& iid, void* out) {
            return (o == outer && p == params && iid == id && out == &slot) == answer;
        };
        auto const rebuild = [&](auto const&, auto const&, object_ptr& out) { return out = params.get(), answer; };
        factory->register_class(id, create, {{"anything", 1}}, rebuild, {});
        EXPECT_EQ(factory->create_object(id, outer, params, id, &slot), answer);
        EXPECT_EQ(factory->deserialize_object(id, outer, nullptr, rebuilt), answer);
        EXPECT_TRUE(rebuilt == object_ptr(params.get()) && factory->class_info(id).count("anything") == 1);
    }
}

guid_t const clsid_thing("{1C5D0E6F-2B3A-4C49-8D57-6E7F80910A01}");
guid_t const clsid_other("{2C5D0E6F-2B3A-4C49-8D57-6E7F80910A02}");

/// Registers a class whose functions give `result` and count their calls.
void add(object_factory const& factory, guid_t const& clsid, int& calls, bool result = true) {
    factory->register_class(
        clsid, [&calls, result](auto const&, auto const&, auto const&, void*) { return ++calls, result; },
        {{"clsid", clsid}}, [&calls, result](auto const&, auto const&, auto&) { return calls += 10, result; }, {});
}

bool create(object_factory const& factory, guid_t const& clsid) {
    object_ptr out;
    return factory->create_object(clsid, nullptr, nullptr, iid_unknown, &out);
}

TEST(multi_object_factory, asks_the_last_member_that_knows_the_class) {
    object_factory const members[] = {plain_factory(), plain_factory()};
    auto const [low, high] = std::minmax(members[0], members[1]);
    int low_calls = 0, high_calls = 0, late_calls = 0;
    add(low, clsid_thing, low_calls);
    add(high, clsid_thing, high_calls, false);
    add(low, clsid_other, low_calls);
    object_factory const inner = composite({low, high}), factory = composite({inner});
    object_ptr out;
    EXPECT_FALSE(create(factory, clsid_thing)) << "no second try with the other member";
    EXPECT_FALSE(factory->deserialize_object(clsid_thing, nullptr, nullptr, out));
    EXPECT_TRUE(low_calls == 0 && high_calls == 11);
    EXPECT_TRUE(create(factory, clsid_other) && low_calls == 1);
    EXPECT_EQ(&factory->class_info(clsid_thing), &high->class_info(clsid_thing));
    EXPECT_EQ(factory->registered_classes(), (std::set<guid_t>{text_id, map_id, clsid_thing, clsid_other}));
    EXPECT_TRUE(create(factory, text_id));

    // What is registered here serves the class from now on, and what is registered on a member isn't seen.
    int calls = 0;
    add(factory, clsid_thing, calls);
    EXPECT_TRUE(create(factory, clsid_thing) && calls == 1 && high_calls == 11);
    EXPECT_EQ(failure_of([&] { add(factory, clsid_thing, calls); }), known);
    guid_t const clsid_late("{3C5D0E6F-2B3A-4C49-8D57-6E7F80910A03}");
    add(low, clsid_late, late_calls);
    EXPECT_EQ(failures_of_use(*factory, clsid_late), all_unknown);
    EXPECT_FALSE(factory->registered_classes().contains(clsid_late));
}

TEST(multi_object_factory, shows_what_a_failed_registration_left) {
    object_factory factory;
    EXPECT_TRUE(multi_object_factory_t::create_function(nullptr, nullptr, iid_object_factory, &factory));
    EXPECT_TRUE(factory->registered_classes().empty());
    EXPECT_EQ(failures_of_use(*factory, text_id), all_unknown);
    int calls = 0;
    EXPECT_EQ(failure_of([&] { add(factory, text_id, calls); }), known);
    EXPECT_EQ(failure_of([&] {
                  factory->register_class({{"clsid", clsid_thing}});
              }),
              "velum::key_not_found: key not found in any_map: create_function");
    EXPECT_EQ(failure_of([&] {
                  factory->register_class({{"class_name", 1}});
              }),
              "velum::key_not_found: key not found in any_map: clsid");
    EXPECT_EQ(factory->registered_classes(), (std::set<guid_t>{text_id, clsid_thing}));
    EXPECT_EQ(failures_of_use(*factory, clsid_thing), all_unknown);
    factory->register_class(uany_map_obj_t::_class_info);
    EXPECT_TRUE(create(factory, uany_map_obj_t::_clsid));
    EXPECT_EQ(failure_of([] { composite({nullptr}); }), "std::runtime_error: object factory is null");
}

// The objects lie on the stack, under a controlling unknown that doesn't die.
TEST(multi_object_factory, copies_and_moves_share_the_factory_of_their_own) {
    journal calls_of_outer;
    counting_object outer(calls_of_outer, "outer");
    multi_object_factory_t source(&outer, {}), copy(source), moved(std::move(copy));
    auto const side = [](auto& of) { return support::side_of<i_object_factory_t>(of, iid_object_factory); };
    int calls = 0;
    add(side(moved), clsid_thing, calls);
    for (auto* const each : {&source, &copy}) {
        EXPECT_EQ(failure_of([&] { add(side(*each), clsid_thing, calls); }), known);
    }
}

}  // namespace
