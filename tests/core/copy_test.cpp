#include "support/copied_classes.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace support;

// The objects lie on the stack, under controlling unknowns that don't die, so the count of each is raised and never
// comes down to 0.
TEST(copying_objects, goes_member_by_member_with_count_and_controlling_unknown) {
    auto const check = [](auto make, auto fill, auto content, std::string const& moved) {
        using object = decltype(make(nullptr));
        using target_t = std::optional<object>;
        struct {
            void (*act)(target_t&, object&);
            bool takes, empties;
        } const rows[] = {{[](target_t& t, object& s) { t.emplace(s); }, true, false},
                          {[](target_t& t, object& s) { t.emplace(std::move(s)); }, true, true},
                          {[](target_t& t, object& s) { *t = s; }, true, false},
                          {[](target_t& t, object& s) { *t = std::move(s); }, true, true},
                          {[](target_t&, object& s) { s = *&s; }, false, false},
                          {[](target_t&, object& s) { s = std::move(*&s); }, false, false}};
        for (auto const& row : rows) {
            SCOPED_TRACE(testing::Message() << typeid(object).name() << " " << &row - rows);
            journal calls;
            counting_object outer(calls, "outer"), other(calls, "other");
            object source = make(&outer), full = make(&outer), empty = make(&outer);
            target_t target(make(&other));
            fill(source);
            fill(full);
            source.add_ref();
            source.add_ref();
            row.act(target, source);
            std::string const all = content(full), nothing = content(empty);
            EXPECT_NE(all, nothing);
            EXPECT_EQ(content(source), row.empties ? moved : all);
            calls.clear();
            EXPECT_EQ(content(*target), row.takes ? all : nothing);
            EXPECT_EQ(calls.find(row.takes ? "other" : "outer"), std::string::npos) << "its new controlling unknown";
            EXPECT_EQ(source.add_ref(), 3);
            EXPECT_EQ(target->add_ref(), row.takes ? 3 : 1)
                << "a count of its own, which starts from that of the source";
        }
    };
    for_each_copied_class(boxed_text("text"), check);
}

}  // namespace
