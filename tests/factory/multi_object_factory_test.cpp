#include "support/counting_object.hpp"
#include "support/failure.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace velum;

guid_t const clsid_string("{43D4FF6A-038F-4d67-B193-8D21B14DA8BC}");
guid_t const clsid_map("{AD409247-FD65-4d5a-BC6B-90A224C55AEE}");
guid_t const clsid_thing("{1C5D0E6F-2B3A-4C49-8D57-6E7F80910A01}");
guid_t const clsid_other("{2C5D0E6F-2B3A-4C49-8D57-6E7F80910A02}");

std::string const not_registered =
    "velum::i_object_factory_t::class_not_registered: object not registered in this factory";
std::string const already_registered =
    "velum::i_object_factory_t::class_already_registered: object already registered in this factory";

iptr<i_object_factory_t> plain() {
    iptr<i_object_factory_t> factory;
    basic_object_factory_t::create(nullptr, iid_object_factory, &factory);
    return factory;
}

iptr<i_object_factory_t> composite(std::set<iptr<i_object_factory_t>> const& members) {
    iptr<i_object_factory_t> factory;
    multi_object_factory_t::create(nullptr, members, iid_object_factory, &factory);
    return factory;
}

/// Registers a class whose functions give `result` and count their calls.
void add(iptr<i_object_factory_t> const& factory, guid_t const& clsid, int& calls, bool result = true) {
    factory->register_class(
        clsid, [&calls, result](auto const&, auto const&, auto const&, void*) { return ++calls, result; },
        {{"clsid", clsid}}, [&calls, result](auto const&, auto const&, auto&) { return calls += 10, result; }, {});
}

bool create(iptr<i_object_factory_t> const& factory, guid_t const& clsid) {
    iptr<i_unknown_t> out;
    return factory->create_object(clsid, nullptr, nullptr, iid_unknown, &out);
}

std::string failure_at(iptr<i_object_factory_t> const& factory, guid_t const& clsid) {
    iptr<i_unknown_t> out;
    std::string const failure = support::failure_of([&] { create(factory, clsid); });
    EXPECT_EQ(support::failure_of([&] { factory->deserialize_object(clsid, nullptr, nullptr, out); }), failure);
    EXPECT_EQ(support::failure_of([&] { factory->class_info(clsid); }), failure);
    return failure;
}

TEST(multi_object_factory, asks_the_last_member_that_knows_the_class) {
    iptr<i_object_factory_t> const members[] = {plain(), plain()};
    auto const [low, high] = std::minmax(members[0], members[1]);
    int low_calls = 0, high_calls = 0, late_calls = 0;
    add(low, clsid_thing, low_calls);
    add(high, clsid_thing, high_calls, false);
    add(low, clsid_other, low_calls);
    iptr<i_object_factory_t> const inner = composite({low, high}), factory = composite({inner});
    iptr<i_unknown_t> out;
    EXPECT_FALSE(create(factory, clsid_thing)) << "no second try with the other member";
    EXPECT_FALSE(factory->deserialize_object(clsid_thing, nullptr, nullptr, out));
    EXPECT_TRUE(low_calls == 0 && high_calls == 11);
    EXPECT_TRUE(create(factory, clsid_other) && low_calls == 1);
    EXPECT_EQ(&factory->class_info(clsid_thing), &high->class_info(clsid_thing));
    EXPECT_EQ(factory->registered_classes(), (std::set<guid_t>{clsid_string, clsid_map, clsid_thing, clsid_other}));
    EXPECT_TRUE(create(factory, clsid_string));

    // What is registered here serves the class from now on, and what is registered on a member isn't seen.
    int calls = 0;
    add(factory, clsid_thing, calls);
    EXPECT_TRUE(create(factory, clsid_thing) && calls == 1 && high_calls == 11);
    EXPECT_EQ(support::failure_of([&] { add(factory, clsid_thing, calls); }), already_registered);
    guid_t const clsid_late("{3C5D0E6F-2B3A-4C49-8D57-6E7F80910A03}");
    add(low, clsid_late, late_calls);
    EXPECT_EQ(failure_at(factory, clsid_late), not_registered);
    EXPECT_FALSE(factory->registered_classes().contains(clsid_late));
}

TEST(multi_object_factory, shows_what_a_failed_registration_left) {
    iptr<i_object_factory_t> factory;
    EXPECT_TRUE(multi_object_factory_t::create_function(nullptr, nullptr, iid_object_factory, &factory));
    EXPECT_TRUE(factory->registered_classes().empty());
    EXPECT_EQ(failure_at(factory, clsid_string), not_registered);
    int calls = 0;
    EXPECT_EQ(support::failure_of([&] { add(factory, clsid_string, calls); }), already_registered);
    EXPECT_EQ(support::failure_of([&] {
                  factory->register_class({{"clsid", clsid_thing}});
              }),
              "velum::key_not_found: key not found in any_map: create_function");
    EXPECT_EQ(support::failure_of([&] {
                  factory->register_class({{"class_name", 1}});
              }),
              "velum::key_not_found: key not found in any_map: clsid");
    EXPECT_EQ(factory->registered_classes(), (std::set<guid_t>{clsid_string, clsid_thing}));
    EXPECT_EQ(failure_at(factory, clsid_thing), not_registered);
    factory->register_class(uany_map_obj_t::_class_info);
    EXPECT_TRUE(create(factory, uany_map_obj_t::_clsid));
    EXPECT_EQ(support::failure_of([] { composite({nullptr}); }), "std::runtime_error: object factory is null");
}

// The objects lie on the stack, under a controlling unknown that doesn't die.
TEST(multi_object_factory, copies_and_moves_share_the_factory_of_their_own) {
    support::journal journal;
    support::counting_object outer(journal, "outer");
    multi_object_factory_t source(&outer, {}), copy(source), moved(std::move(copy));
    auto const side = [](auto& of) { return support::side_of<i_object_factory_t>(of, iid_object_factory); };
    int calls = 0;
    add(side(moved), clsid_thing, calls);
    for (auto* const each : {&source, &copy}) {
        EXPECT_EQ(support::failure_of([&] { add(side(*each), clsid_thing, calls); }), already_registered);
    }
}

}  // namespace
