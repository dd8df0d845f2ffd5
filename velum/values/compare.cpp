#include <velum/core/detail/stack_guard.hpp>
#include <velum/values/catalogue.hpp>
#include <velum/values/compare.hpp>
#include <velum/values/detail/held.hpp>
#include <velum/values/detail/type_tag.hpp>
#include <velum/values/type_key.hpp>

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <typeinfo>

namespace velum {
namespace {

/// Compares two values in both directions at once: what is neither less nor greater, be it for a NaN, counts as equal.
class comparer {
public:
    using order = std::partial_ordering;

    order compare(boost::any const& a, boost::any const& b) {
        static constexpr auto comparisons = [] {
            std::array<comparison, highest_value_tag + 1> by_tag{};
            value_catalogue::for_each([&by_tag]<class Row>(Row) { by_tag[Row::tag] = &compare_held<Row>; });
            return by_tag;
        }();
        std::type_info const& type = a.type();
        std::type_info const& other = b.type();
        if (&type != &other && type_key(type) != type_key(other)) {
            return type_key(type) <=> type_key(other);
        }
        int const tag = detail::type_tag(type);
        if (tag == 0) {
            throw std::runtime_error("can't find the proper any_compare for " + type_key(type).string());
        }
        return comparisons[static_cast<std::size_t>(tag)](*this, a, b);
    }

private:
    using comparison = order (*)(comparer&, boost::any const&, boost::any const&);

    template <class Row>
    static order compare_held(comparer& self, boost::any const& a, boost::any const& b) {
        using type = typename Row::type;
        return self.compare(typename Row::shape(), detail::held<type>(a), detail::held<type>(b));
    }

    // What has no form below has its own order.
    template <class Shape, class T>
    order compare(Shape, T const& a, T const& b) {
        return order_of(a, b);
    }

    template <class T>
    static order order_of(T const& a, T const& b) {
        return a <=> b;
    }

    // Not every standard library has `<=>` for it.
    static order order_of(std::string const& a, std::string const& b) { return a.compare(b) <=> 0; }

    order compare(value_shape::bytes, byte_vector const& a, byte_vector const& b) {
        std::size_t const common = std::min(a.size(), b.size());
        int const difference = common == 0 ? 0 : std::memcmp(a.data(), b.data(), common);
        return difference != 0 ? difference <=> 0 : a.size() <=> b.size();
    }

    template <class Map>
    order compare(value_shape::map, Map const& a, Map const& b) {
        return compare_rows(a, b, [this](auto const& left, auto const& right) {
            order const keys = order_of(left.first, right.first);
            return std::is_neq(keys) ? keys : this->compare(left.second, right.second);
        });
    }

    template <class Maps>
    order compare(value_shape::maps, Maps const& a, Maps const& b) {
        return compare_rows(a, b, [this](auto const& left, auto const& right) {
            return this->compare(value_shape::map(), left, right);
        });
    }

    template <class Values>
    order compare(value_shape::values, Values const& a, Values const& b) {
        return compare_rows(a, b, [this](auto const& left, auto const& right) { return this->compare(left, right); });
    }

    // The first two elements of which one is less decide, then the lengths.
    template <class Rows, class Compare>
    order compare_rows(Rows const& a, Rows const& b, Compare compare_elements) {
        detail::stack_guard::level_of<1> const level(stack_ ? *stack_ : stack_.emplace(reserve::for_reading));
        auto left = a.begin();
        auto right = b.begin();
        for (; left != a.end() && right != b.end(); ++left, ++right) {
            order const elements = compare_elements(*left, *right);
            if (std::is_lt(elements) || std::is_gt(elements)) {
                return elements;
            }
        }
        return a.size() <=> b.size();
    }

    using reserve = detail::stack_guard::reserve;

    std::optional<detail::stack_guard> stack_;  // plain values need none
};

}  // namespace

bool any_compare(boost::any const& a, boost::any const& b) {
    return std::is_lt(comparer().compare(a, b));
}

}  // namespace velum
