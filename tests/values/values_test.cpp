#include "support/failure.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <set>

namespace {

using namespace velum;

static_assert(sizeof(ustring) == sizeof(void*) && std::is_trivially_copyable_v<ustring>);
static_assert(std::is_convertible_v<char const*, ustring> && std::is_convertible_v<std::string, ustring>);

// Enough texts for every table behind to grow several times, in two lengths: within a string and on the heap.
TEST(ustring, one_text_has_one_address_for_ever) {
    auto const text_of = [](std::size_t i) { return std::to_string(i) + std::string(i % 2 * 60, '-'); };
    std::vector<ustring> early;
    for (std::size_t i = 0; i < 30'000; ++i) {
        early.emplace_back(text_of(i));
    }
    std::set<char const*> addresses;
    for (std::size_t i = 0; i < early.size(); ++i) {
        ASSERT_EQ(early[i].string(), text_of(i));
        ASSERT_EQ(ustring(text_of(i)).c_str(), early[i].c_str());
        addresses.insert(early[i].c_str());
    }
    EXPECT_EQ(addresses.size(), early.size());
}

TEST(ustring, ends_at_the_first_nul_and_is_ordered_by_address) {
    std::string const nul(1, '\0');
    for (std::string const& text : {std::string(), std::string("\xFF\xC3 \n"), std::string(300, 'l')}) {
        ustring const u(text + nul + "behind");
        EXPECT_EQ(u.c_str(), ustring(text.c_str()).c_str());
        EXPECT_EQ(static_cast<std::string>(u), text);
        EXPECT_EQ(u.empty(), text.empty());
        EXPECT_EQ(u <=> ustring("m"), u.c_str() <=> ustring("m").c_str());
        EXPECT_EQ(std::hash<ustring>()(u), reinterpret_cast<std::uintptr_t>(u.c_str()));
    }
    EXPECT_EQ(ustring().c_str(), ustring(nul).c_str());
}

/// What `typeid` gives in a module that has a type_info of its own for a type.
struct named_type : std::type_info {
    explicit named_type(char const* name) : std::type_info(name) {}
};

TEST(type_key, is_the_readable_name) {
    static named_type const int_of_another_module(typeid(int).name()), not_mangled("not mangled!");
    std::pair<std::type_info const*, char const*> const rows[] = {
        {&boost::any().type(), "void"},  {&typeid(int), "int"},
        {&int_of_another_module, "int"}, {&typeid(tessa::mat<float, 2, 1>), "tessa::mat<float, 2, 1>"},
        {&not_mangled, "not mangled!"},
    };
    std::optional<named_type> reloaded;
    for (auto const& [type, name] : rows) {
        EXPECT_EQ(type_key(*type), ustring(name)) << name;
        EXPECT_EQ(type_key(*type), ustring(name)) << name << ", the second time";
        EXPECT_EQ(type_key(reloaded.emplace(type->name())), ustring(name)) << name << ", where another type was";
    }
}

any_map const sample = {{"int", 5}, {"text", std::string("words")}, {"empty", boost::any()}, {"name", ustring("u")}};

// Both lookups of one key as one type: the required one gives the value or throws, the optional one tells.
template <class T>
void look_up(std::string const& key, T const& old, T const& expected, std::string const& failure) {
    T out = old;
    EXPECT_EQ(any_map_try_get(sample, key, out), failure.empty()) << key;
    EXPECT_EQ(out, failure.empty() ? expected : old) << key;
    out = expected;
    EXPECT_EQ(support::failure_of([&] { out = any_map_get<T>(sample, key); }), failure) << key;
    EXPECT_EQ(out, expected) << key;
}

TEST(any_map, lookups_find_a_value_of_exactly_the_type) {
    std::string const missing = "velum::key_not_found: key not found in any_map: ";
    std::string const bad =
        "boost::wrapexcept<boost::bad_any_cast>: "
        "boost::bad_any_cast: failed conversion using boost::any_cast";
    look_up("int", 1, 5, "");
    look_up("text", std::string("old"), std::string("words"), "");
    look_up("int", 3LL, 3LL, bad);
    look_up("int", 3U, 3U, bad);
    look_up("empty", 3, 3, bad);
    look_up("name", std::string("old"), std::string("old"), bad);
    look_up("INT", 3, 3, missing + "INT");
    look_up(std::string("int\0", 4), 3, 3, missing + "int");  // what() ends there
    EXPECT_STREQ(unknown_type("type_id<48>").what(), "unknown type in the any_map: type_id<48>");
}

}  // namespace
