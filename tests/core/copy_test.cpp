#include "support/counting_object.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace {

using namespace velum;

// A class that opens what the boxed value map keeps for its heirs.
class open_map : public uany_map_obj_t {
public:
    open_map(i_unknown_t*, std::string const& text) : uany_map_obj_t(uany_map{{"text", text}}) {}
};

std::string text_of(basic_string_t& object) {
    return iptr<i_string_t>(iptr<i_unknown_t>(&object), iid_string)->string();
}

std::string text_of(open_map& object) {
    auto const found = object.map().find("text");
    return found == object.map().end() ? "" : boost::any_cast<std::string>(found->second);
}

// The objects lie on the stack, so the count of each is raised and never comes down to 0. `one_look` is what asking for
// the text once leaves in the journal of the controlling unknown.
template <class Object>
void check_copies(std::string const& one_look) {
    using target_t = std::optional<Object>;
    struct {
        std::function<void(target_t&, Object&)> act;
        bool takes, empties;
    } const rows[] = {{[](target_t& t, Object& s) { t.emplace(s); }, true, false},
                      {[](target_t& t, Object& s) { t.emplace(std::move(s)); }, true, true},
                      {[](target_t& t, Object& s) { *t = s; }, true, false},
                      {[](target_t& t, Object& s) { *t = std::move(s); }, true, true},
                      {[](target_t&, Object& s) { s = *&s; }, false, false},
                      {[](target_t&, Object& s) { s = std::move(*&s); }, false, false}};
    std::string const text(100, 's');
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        support::journal calls;
        support::counting_object outer(calls, "outer"), other(calls, "other");
        Object source(&outer, text);
        target_t target(std::in_place, &other, std::string(200, 't'));
        source.add_ref();
        source.add_ref();
        row.act(target, source);
        EXPECT_EQ(source.add_ref(), 3);
        EXPECT_EQ(text_of(source), row.empties ? "" : text);
        EXPECT_EQ(calls, one_look);
        EXPECT_EQ(target->add_ref(), row.takes ? 3 : 1) << "a count of its own, which starts from that of the source";
        calls.clear();
        EXPECT_EQ(text_of(*target), row.takes ? text : std::string(200, 't'));
        EXPECT_TRUE(calls == one_look || !row.takes);
    }
}

TEST(copying_objects, goes_member_by_member_with_count_and_controlling_unknown) {
    check_copies<basic_string_t>("outer+ outer- ");
    check_copies<open_map>("");
}

}  // namespace
