#include "support/counting_object.hpp"
#include "support/node.hpp"

#include <velum/testing/conformance.hpp>

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace {

using namespace velum;

class i_note_t : public i_unknown_t {
public:
    virtual std::string title() const = 0;
    virtual std::string& text() = 0;
};

}  // namespace

template <>
inline constexpr guid_t velum::iid_of<i_note_t>{"{0A7E5A37-9D33-4B7C-8C4D-0B62D20E7C11}"};

namespace {

/// Takes its title from the construction parameters and stores it in the construction stage.
template <template <class, class...> class Base>
class note_t : public Base<note_t<Base>, i_note_t, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{5C8E2B6F-7A35-4E5B-9B9C-1F0E6D2A4B12}"};
    static constexpr char const* class_name = "note";
    static inline int alive = 0;

    explicit note_t(std::string const& title = "untitled") : title_(title) { ++alive; }
    explicit note_t(iptr<i_unknown_map_t> const& params)
        : note_t(params ? support::text_in(params->get("title")) : "untitled") {}
    explicit note_t(iptr<i_serializer_t> const& s) : note_t() { s->read_string(title_); }
    ~note_t() override { --alive; }

    std::string title() const override { return title_; }
    std::string& text() override { return text_; }

    void serialize_obj(iptr<i_serializer_t> const& s) const override { s->write_string(title_); }
    void serialize(iptr<i_serializer_t> const& s) const override { s->write_string(text_); }
    void deserialize(iptr<i_serializer_t> const& s) override { s->read_string(text_); }

private:
    std::string title_, text_;
};

template <class Note>
class implements_test : public testing::Test {};
using both = testing::Types<note_t<implements>, note_t<implements_aggregatable>>;
TYPED_TEST_SUITE(implements_test, both);

TYPED_TEST(implements_test, makes_a_class_whole) {
    {
        auto const factory = support::new_factory();
        factory->register_class(TypeParam::class_info());
        EXPECT_EQ(conformance::check_class(factory, TypeParam::class_id), conformance::findings());

        auto const note = make<TypeParam>("title");
        note->text() = "text";
        EXPECT_EQ(support::references(note), 1);
        EXPECT_EQ(conformance::check_round_trip(note.template as<i_unknown_t>(), factory), conformance::findings());

        auto const params = support::new_object_map();
        params->set("title", support::identity_of(support::boxed_text("given")));
        iptr<i_note_t> made;
        EXPECT_TRUE(factory->create_object(TypeParam::class_id, {}, params, iid_of<i_note_t>, &made));
        EXPECT_EQ(made->title(), "given");
        EXPECT_TRUE(factory->create_object(TypeParam::class_id, {}, {}, iid_of<i_note_t>, &made));
        EXPECT_EQ(made->title(), "untitled");
        EXPECT_EQ(TypeParam::alive, 2);

        bool const is_aggregatable = std::is_same_v<TypeParam, note_t<implements_aggregatable>>;
        iptr<i_unknown_t> part;
        EXPECT_EQ(factory->create_object(TypeParam::class_id, factory.get(), {}, iid_unknown, &part), is_aggregatable);
    }
    EXPECT_EQ(TypeParam::alive, 0);
}

/// Has a constructor that takes anything, parameters and readers too, and no construction stage.
class holder_t : public implements<holder_t, i_string_t, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{C1F5B2D8-06A7-4E39-9D4B-8A3E7F2C5061}"};
    static constexpr char const* class_name = "holder";

    holder_t() = default;
    explicit holder_t(boost::any const& /*held*/) : text_("anything") {}

    std::string& string() override { return text_; }
    std::string const& string() const override { return text_; }
    void serialize(iptr<i_serializer_t> const& s) const override { s->write_string(text_); }
    void deserialize(iptr<i_serializer_t> const& s) override { s->read_string(text_); }

private:
    std::string text_ = "nothing";
};

/// Answers by a table of its own, in which a null stands for what it doesn't have at the time.
class table_t : public flat_t<table_t, i_string_t> {
public:
    bool has_text = true;

    std::array<answer_t, 2> answers() {
        return {answer_t(iid_unknown, this), answer_t(iid_string, has_text ? this : nullptr)};
    }
    std::string& string() override { return text_; }
    std::string const& string() const override { return text_; }

private:
    friend object_access;

    std::string text_;
    std::int32_t ref_count = 0;
};

TEST(flat, answers_by_a_table_of_its_own) {
    auto const table = make<table_t>();
    EXPECT_EQ(conformance::check_object(table.as<i_unknown_t>(), {iid_unknown, iid_string}), conformance::findings());
    table->has_text = false;
    EXPECT_FALSE(table.try_as<i_string_t>());
    EXPECT_TRUE(table.try_as<i_unknown_t>());
}

TEST(implements, a_constructor_that_takes_anything_is_not_for_parameters) {
    auto const factory = support::new_factory();
    factory->register_class(holder_t::class_info());
    EXPECT_EQ(conformance::check_class(factory, holder_t::class_id), conformance::findings());
    iptr<i_string_t> made;
    EXPECT_TRUE(factory->create_object(holder_t::class_id, {}, support::new_object_map(), iid_string, &made));
    EXPECT_EQ(std::as_const(*made).string(), "nothing");
    EXPECT_EQ(make<holder_t>(boost::any(1))->string(), "anything");
}

}  // namespace
