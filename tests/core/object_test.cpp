#include "support/counting_object.hpp"
#include "support/panel.hpp"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace {

using namespace velum;
using support::counting_object;
using support::iid_of_nobody;
using support::panel_t;
using support::references;
using unknown_ptr = iptr<i_unknown_t>;

struct class_row {
    any_map const* record;
    char const* name;             ///< in the record; null where that makes objects instead
    std::vector<guid_t> answers;  ///< `iid_unknown` first
    guid_t also_identity;         ///< gives the same pointer as `iid_unknown`; all others differ
    bool (*create)(unknown_ptr const&, iptr<i_unknown_map_t> const&, guid_t const&, void*);
    bool (*rebuild)(unknown_ptr const&, iptr<i_serializer_t> const&, unknown_ptr&);  ///< or null
};

template <class Object>
class_row row_of(char const* name, std::vector<guid_t> const& answers) {
    class_row row{&Object::class_info, name, answers, {}, &Object::create_function, nullptr};
    if constexpr (requires { &Object::deserialize_function; }) {
        row.rebuild = &Object::deserialize_function;
    }
    return row;
}

std::vector<class_row> const rows = {
    row_of<basic_string_t>("basic_string", {iid_unknown, iid_string, iid_serializable}),
    row_of<basic_unknown_map_t>("basic_unknown_map", {iid_unknown, iid_unknown_map, iid_serializable}),
    row_of<basic_istream_t>("basic_istream", {iid_unknown, iid_istream}),
    row_of<basic_ostream_t>("basic_ostream", {iid_unknown, iid_ostream}),
    row_of<basic_serializer_t>("basic_serializer", {iid_unknown, iid_serializer}),
    row_of<basic_object_factory_t>("basic_object_factory", {iid_unknown, iid_object_factory}),
    row_of<multi_object_factory_t>("multi_object_factory", {iid_unknown, iid_object_factory}),
    {&uany_map_obj_t::_class_info,
     nullptr,
     {iid_unknown, iid_serializable, iid_uany_map},
     iid_uany_map,
     &uany_map_obj_t::create_function,
     &uany_map_obj_t::deserialize_function}};

// One question into a slot that holds nothing, something foreign, or a reference on the very object.
void ask(unknown_ptr const& asked, guid_t const& iid, i_unknown_t* expected) {
    std::int32_t const before = references(asked);
    support::journal calls;
    counting_object foreign(calls, "foreign");
    for (i_unknown_t* const held :
         {static_cast<i_unknown_t*>(nullptr), static_cast<i_unknown_t*>(&foreign), expected}) {
        unknown_ptr slot(held);
        EXPECT_EQ(asked->query_interface(iid, &slot), expected != nullptr);
        EXPECT_EQ(slot.get(), expected);
        EXPECT_EQ(references(asked), before + (expected != nullptr ? 1 : 0));
    }
    EXPECT_EQ(calls, "foreign+ foreign- ");
}

// An object that stands alone and has no other reference, by any of its sides.
void check_object(unknown_ptr const& made, std::vector<guid_t> const& answers, guid_t const& also_identity) {
    std::vector<unknown_ptr> sides;
    for (auto const& iid : answers) {
        sides.emplace_back(made, iid);
        ASSERT_TRUE(sides.back()) << iid.string();
    }
    for (std::size_t i = 0; i < sides.size(); ++i) {
        EXPECT_EQ(references(sides[i]), 1 + static_cast<std::int32_t>(sides.size())) << "one count for all sides";
        for (std::size_t j = 0; j < sides.size(); ++j) {
            ask(sides[i], answers[j], sides[j].get());
            bool const both_identity =
                (i == 0 || answers[i] == also_identity) && (j == 0 || answers[j] == also_identity);
            EXPECT_EQ(sides[i] == sides[j], i == j || both_identity) << i << " " << j;
        }
        ask(sides[i], iid_of_nobody, nullptr);
    }
}

TEST(object, keeps_the_promises_of_query_interface_on_every_side) {
    for (auto const& row : rows) {
        for (auto const& iid : row.answers) {
            unknown_ptr made;
            EXPECT_TRUE(row.create(nullptr, nullptr, iid, &made));
            check_object(made, row.answers, row.also_identity);
        }
        if (row.rebuild != nullptr) {
            unknown_ptr rebuilt;
            EXPECT_TRUE(row.rebuild(nullptr, nullptr, rebuilt));
            check_object(rebuilt, row.answers, row.also_identity);
        }
    }
}

TEST(object, has_a_record_that_says_what_it_answers) {
    for (auto const& row : rows) {
        if (row.name != nullptr) {
            std::set<guid_t> const answers(row.answers.begin(), row.answers.end());
            EXPECT_EQ(any_map_get<std::string>(*row.record, "class_name"), row.name);
            EXPECT_EQ(any_map_get<std::set<guid_t>>(*row.record, "supported_interfaces"), answers);
        }
        EXPECT_EQ(row.record->size(), row.name != nullptr ? 2U : 3U);
    }
}

TEST(object, counts_from_0_and_dies_at_0) {
    i_unknown_t* const object = new panel_t;
    EXPECT_TRUE(object->add_ref() == 1 && object->add_ref() == 2 && object->release() == 1);
    EXPECT_EQ(panel_t::alive, 1);
    EXPECT_EQ(object->release(), 0);
    EXPECT_EQ(panel_t::alive, 0);
}

struct stage {
    support::journal calls;
    counting_object outer{calls, "outer"}, held{calls, "held"};
    unknown_ptr const outer_ptr{&outer};
    unknown_ptr slot{&held};

    stage() { calls.clear(); }
};

TEST(object, that_can_not_be_created_leaves_nothing_behind) {
    for (auto const& row : rows) {
        stage s;
        bool const is_flat = row.name == nullptr;
        for (auto const& iid : {is_flat ? iid_unknown : iid_of_nobody, row.answers[1], row.answers.back()}) {
            EXPECT_FALSE(row.create(s.outer_ptr, nullptr, iid, &s.slot));
        }
        EXPECT_FALSE(is_flat && row.rebuild(s.outer_ptr, nullptr, s.slot));
        EXPECT_EQ(s.calls, "") << "refused under a controlling unknown: the slot is not touched";
        EXPECT_FALSE(row.create(nullptr, nullptr, iid_of_nobody, &s.slot));
        EXPECT_TRUE(s.calls == "held- " && !s.slot);
    }
}

TEST(object, empties_the_slot_before_it_fills_it) {
    stage s;
    EXPECT_TRUE(answer_query(std::array<answer_t, 1>{{{iid_string, &s.outer}}}, iid_string, &s.slot));
    EXPECT_EQ(s.calls, "held- outer+ ");
}

// Its own unknown counts on itself, all its interfaces ask the controlling one.
void check_part(stage& s, std::vector<guid_t> const& answers) {
    EXPECT_EQ(s.calls, "held- ") << "the controlling unknown is not counted";
    EXPECT_EQ(unknown_ptr(s.slot, iid_unknown), s.slot);
    EXPECT_FALSE(unknown_ptr(s.slot, iid_of_nobody));
    s.outer.answers = {{iid_of_nobody, &s.held}};
    for (auto iid = answers.begin() + 1; iid != answers.end(); ++iid) {
        s.calls.clear();
        unknown_ptr const side(s.slot, *iid);
        ASSERT_TRUE(side);
        EXPECT_EQ(references(s.slot), 1);
        EXPECT_EQ(references(side), s.outer.references);
        i_unknown_t* answer = nullptr;
        EXPECT_FALSE(side->query_interface(*iid, &answer)) << "what the outer object hides isn't there";
        EXPECT_TRUE(side->query_interface(iid_of_nobody, &answer));
        EXPECT_TRUE(answer == &s.held && s.outer.asked_into == &answer);
        EXPECT_EQ(s.calls, "outer+ outer+ outer- outer? outer? held+ ");
    }
}

TEST(object, under_a_controlling_unknown_counts_and_asks_there) {
    for (auto const& row : rows) {
        stage created, rebuilt;
        if (row.name != nullptr && row.create(created.outer_ptr, nullptr, iid_unknown, &created.slot)) {
            check_part(created, row.answers);
        }
        if (row.name != nullptr && row.rebuild != nullptr && row.rebuild(rebuilt.outer_ptr, nullptr, rebuilt.slot)) {
            check_part(rebuilt, row.answers);
        }
        EXPECT_EQ(created.calls.empty(), row.name == nullptr);
        EXPECT_EQ(rebuilt.calls.empty(), row.name == nullptr || row.rebuild == nullptr);
    }
}

TEST(object, of_several_parts_is_one) {
    check_object(panel_t::make(), {iid_unknown, iid_string}, {});
    EXPECT_EQ(panel_t::alive, 0);
    iptr<i_string_t> part(panel_t::make(), iid_string);
    EXPECT_EQ(part->string(), "part");
    EXPECT_TRUE(references(part) == 1 && panel_t::alive == 1) << "the part keeps its panel";
    part = nullptr;
    EXPECT_EQ(panel_t::alive, 0);
}

}  // namespace
