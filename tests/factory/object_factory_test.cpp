#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"

#include <gtest/gtest.h>

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
        object_factory const factory =
            i / 2 == 0 ? plain_factory()
                       : make<multi_object_factory_t>(std::set<object_factory>{}).as<i_object_factory_t>();
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

}  // namespace
