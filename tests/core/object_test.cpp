#include "support/counting_object.hpp"
#include "support/node.hpp"
#include "support/panel.hpp"
#include "support/sample_graph.hpp"

#include <velum/testing/conformance.hpp>

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace velum;
using support::panel_t;

struct class_row {
    any_map const& record;
    char const* name;
    std::set<guid_t> answers;
    create_function_t create;
};

TEST(object, of_every_class_keeps_the_protocol_and_has_a_true_record) {
    class_row const rows[] = {
        {basic_string_t::class_info, "basic_string", {iid_unknown, iid_string, iid_serializable}, {}},
        {basic_unknown_map_t::class_info, "basic_unknown_map", {iid_unknown, iid_unknown_map, iid_serializable}, {}},
        {basic_istream_t::class_info, "basic_istream", {iid_unknown, iid_istream}, &basic_istream_t::create_function},
        {basic_ostream_t::class_info, "basic_ostream", {iid_unknown, iid_ostream}, &basic_ostream_t::create_function},
        {basic_serializer_t::class_info,
         "basic_serializer",
         {iid_unknown, iid_serializer},
         &basic_serializer_t::create_function},
        {basic_object_factory_t::class_info,
         "basic_object_factory",
         {iid_unknown, iid_object_factory},
         &basic_object_factory_t::create_function},
        {multi_object_factory_t::class_info,
         "multi_object_factory",
         {iid_unknown, iid_object_factory},
         &multi_object_factory_t::create_function},
    };
    auto const factory = support::new_factory();
    unsigned char number = 0;
    for (auto const& row : rows) {
        EXPECT_EQ(any_map_get<std::string>(row.record, "class_name"), row.name);
        EXPECT_EQ(any_map_get<std::set<guid_t>>(row.record, "supported_interfaces"), row.answers);
        EXPECT_EQ(row.record.size(), 2U);
        if (row.create) {
            guid_t const id("0000000000000000000000000000000" + std::to_string(number++));
            factory->register_class(id, row.create, row.record, {}, {});
        }
    }
    EXPECT_EQ(uany_map_obj_t::_class_info.size(), 3U);
    for (guid_t const& id : factory->registered_classes()) {
        EXPECT_EQ(conformance::check_class(factory, id), conformance::findings()) << id.string();
    }
}

TEST(object, of_every_stored_class_survives_a_round_trip) {
    support::sample_graph const graph;
    auto const untie = [](iptr<i_unknown_t> const& read) { support::take_apart(read.get()); };
    for (support::serializable const& object : graph.objects) {
        EXPECT_EQ(conformance::check_round_trip(object.as<i_unknown_t>(), support::node_factory(), untie),
                  conformance::findings());
    }
}

TEST(object, of_several_parts_is_one) {
    EXPECT_EQ(conformance::check_object(panel_t::make(), {iid_unknown, iid_string}), conformance::findings());
    EXPECT_EQ(panel_t::alive, 0);
    auto part = panel_t::make().as<i_string_t>();
    EXPECT_EQ(part->string(), "part");
    EXPECT_TRUE(support::references(part) == 1 && panel_t::alive == 1) << "the part keeps its panel";
    part = nullptr;
    EXPECT_EQ(panel_t::alive, 0);
}

}  // namespace
