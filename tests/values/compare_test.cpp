#include "support/failure.hpp"
#include "support/samples.hpp"
#include "support/stack.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <type_traits>
#include <utility>

namespace {

using namespace velum;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

void expect_less(boost::any const& a, boost::any const& b) {
    EXPECT_TRUE(any_compare(a, b) && !any_compare(b, a)) << type_key(a.type()).c_str();
}

void expect_equal(boost::any const& a, boost::any const& b) {
    EXPECT_TRUE(!any_compare(a, b) && !any_compare(b, a)) << type_key(a.type()).c_str();
}

template <class T, class Element, std::size_t... I>
T made_of(std::array<Element, sizeof...(I)> const& elements, std::index_sequence<I...>) {
    return T(elements[I]...);
}

// For each position: what stands there decides, against all that stands behind it, and a NaN there decides nothing.
template <class T>
void check_elements() {
    using element = typename T::value_type;
    constexpr auto count = static_cast<std::size_t>(T::size);
    auto const make = [](auto const& elements) { return made_of<T>(elements, std::make_index_sequence<count>()); };
    for (std::size_t at = 0; at < count; ++at) {
        std::array<element, count> low{}, high{};
        std::fill(low.begin() + static_cast<std::ptrdiff_t>(at), low.end(), element(9));
        low[at] = -1;
        high[at] = 1;
        expect_less(make(low), make(high));
        expect_equal(make(low), make(low));
        EXPECT_TRUE(make(low) == make(low) && make(low) != make(high));
        if constexpr (std::is_floating_point_v<element>) {
            low[at] = nan;
            expect_equal(make(low), make(high));
        }
    }
}

TEST(any_compare, elements_decide_from_the_first_to_the_last) {
    int checked = 0;
    value_catalogue::for_each([&]<class Row>(Row) {
        if constexpr (requires {
                          requires std::is_arithmetic_v<typename Row::type::value_type> && Row::type::size >
                          0;
                      }) {
            check_elements<typename Row::type>();
            ++checked;
        }
    });
    EXPECT_EQ(checked, 22);
}

TEST(any_compare, each_type_has_its_order) {
    using std::string;
    using vec3 = math::vec<float, 3, math::use_simd_tag>;
    using maps = std::vector<any_map>;
    using list = std::vector<boost::any>;
    struct named_t {};
    vec3 const low(0, 0, 0), high(0, 0, 1), broken(0, nan, 0);
    linear_space3 const lows(low, low, low), no_order(broken, low, low);
    std::pair<ustring, ustring> const texts = std::minmax(ustring("one"), ustring("other"));
    iptr<i_string_t> object;
    basic_string_t::create(nullptr, "", iid_string, &object);
    iptr<i_unknown_t> const held(object.get());

    std::pair<boost::any, boost::any> const less[] = {
        {false, true},
        {-1, 1},
        {static_cast<long long>(-1) << 40, 1LL},
        {-1.F, 1.F},
        {-std::numeric_limits<double>::infinity(), -1e300},
        {string("a\x7F"), string("a\x80")},
        {string("ab"), string("b")},
        {string(), string(1, '\0')},
        {texts.first, texts.second},
        {guid_t("{00000000-0000-0000-0000-7FFFFFFFFFFF}"), guid_t("{00000000-0000-0000-0000-800000000000}")},
        {guid_t("{01000000-0000-0000-0000-0000000000FF}"), guid_t("{02000000-0000-0000-0000-000000000000}")},
        {linear_space3(low, low, high), linear_space3(low, high, low)},
        {affine_space3(lows, high), affine_space3(linear_space3(low, low, high), low)},
        {affine_space3(lows, low), affine_space3(lows, high)},
        {affine_space3(no_order, low), affine_space3(lows, high)},  // neither linear part is less: the origins decide
        {byte_vector{1, 0x7F, 9}, byte_vector{1, 0x80}},
        {byte_vector{1}, byte_vector{1, 0}},
        {any_map(), any_map{{"", 0}}},
        {any_map{{"a", 9}}, any_map{{"b", 1}}},
        {any_map{{"a", 1}, {"b", 9}}, any_map{{"a", 2}}},
        {any_map{{"a", nan}, {"b", 1}}, any_map{{"a", 1.F}, {"b", 2}}},
        {uany_map{{texts.first, 9}}, uany_map{{texts.second, 1}}},
        {uany_map{{texts.first, -1}}, uany_map{{texts.first, 1}}},
        {maps{{{"a", 1}}, {{"z", 1}}}, maps{{{"a", 2}}}},
        {maps{{}}, maps{{}, {}}},
        {std::vector<uany_map>{{{texts.first, -1}}}, std::vector<uany_map>{{{texts.first, 1}}}},
        {list{1, 2, 9}, list{1, 3}},
        {list{nan, 1}, list{1.F, 2}},
        {list{any_map{{"a", 1}}}, list{any_map{{"a", 1}}, 0}},
        {iptr<i_unknown_t>(), held}};
    for (auto const& [a, b] : less) {
        expect_less(a, b);
    }
    EXPECT_EQ(any_compare(1, 1.F), type_key(typeid(int)) < type_key(typeid(float)));
    expect_equal(nan, 1.F);
    expect_equal(0., -0.);
    expect_equal(affine_space3(no_order, low), affine_space3(lows, low));
    for (auto const& one : support::samples()) {
        for (auto const& other : support::samples()) {
            if (one.tag != other.tag) {
                EXPECT_NE(any_compare(one.value, other.value), any_compare(other.value, one.value));
            }
        }
        expect_equal(one.value, one.value);
        EXPECT_NE(any_compare(one.value, named_t()), any_compare(named_t(), one.value))
            << "of another type: no failure";
        EXPECT_NE(any_compare(one.value, boost::any()), any_compare(boost::any(), one.value));
    }
}

TEST(any_compare, refuses_two_values_of_one_type_without_an_order) {
    using list = std::vector<boost::any>;
    std::string const text = "std::runtime_error: can't find the proper any_compare for ";
    boost::any const empty;
    any_map const holds_empty{{"k", empty}};
    EXPECT_EQ(support::failure_of([&] { any_compare(empty, empty); }), text + "void");
    EXPECT_EQ(support::failure_of([&] { any_compare(1U, 2U); }), text + "unsigned int");
    EXPECT_EQ(support::failure_of([&] { any_compare(holds_empty, holds_empty); }), text + "void");
    boost::any const maps = std::vector<any_map>{holds_empty};
    EXPECT_EQ(support::failure_of([&] { any_compare(maps, maps); }), text + "void");
    EXPECT_EQ(support::failure_of([&] { any_compare(list{nan, empty}, list{1.F, empty}); }), text + "void");
    EXPECT_EQ(support::failure_of([&] { any_compare(list{empty}, list{empty, 1}); }), text + "void");
    expect_less(list{1, empty}, list{2, empty});
    expect_less(any_map{{"j", 1}, {"k", empty}}, any_map{{"j", 2}, {"k", empty}});
}

// The naive way, which asks for both directions at each level, would not be back for the 64 levels before the sun is
// cold.
TEST(any_compare, takes_the_time_of_the_data_and_ends_before_the_stack_does) {
    auto const nested = [](int depth) {
        boost::any value = 1;
        for (int i = 0; i < depth; ++i) {
            value = i % 2 == 0 ? boost::any(any_map{{"k", std::move(value)}})
                               : boost::any(std::vector<boost::any>{std::move(value)});
        }
        return value;
    };
    expect_equal(nested(64), nested(64));
    boost::any const one = nested(3000), other = nested(3000);
    expect_equal(one, other);
    support::on_stack(std::size_t{128} << 10U, [&] {
        EXPECT_EQ(support::failure_of([&] { any_compare(one, other); }), "std::runtime_error: nesting too deep");
    });
}

}  // namespace
