#pragma once

#include "visit.hpp"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace scene {

namespace value_shape = velum::value_shape;

/// Walks through two maps side by side, down to the bits of their numbers: a NaN equals itself, and 0 isn't -0.
class value_comparison {
public:
    std::size_t values = 0;  // how many were looked at, maps and lists not counted
    std::string difference;  // the way to the first one

    template <class Map>
    bool same(value_shape::map, Map const& a, Map const& b) {
        // Maps of one type in one process are in one order, those with interned keys too.
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), [this](auto const& left, auto const& right) {
            return left.first == right.first && inside(left.first, same(left.second, right.second));
        });
    }

    // On the way out of a difference its path is put together from its end.
    bool inside(std::string const& name, bool equal) {
        if (!equal) {
            difference.insert(0, '/' + name);
        }
        return equal;
    }

private:
    bool same(boost::any const& a, boost::any const& b) {
        bool equal = false;
        visit(a, [&]<class Shape, class T>(Shape form, T const& left) {
            T const* const right = boost::any_cast<T>(&b);
            equal = right != nullptr && same(form, left, *right);
        });
        return equal;
    }

    // What is left has one value to compare, and says with its form how.
    template <class Shape, class T>
    bool same(Shape form, T const& a, T const& b) {
        ++values;
        return same_value(form, a, b);
    }

    template <class Map>
    bool same(value_shape::maps, std::vector<Map> const& a, std::vector<Map> const& b) {
        return same_list(a, b,
                         [this](Map const& left, Map const& right) { return same(value_shape::map(), left, right); });
    }

    bool same(value_shape::values, std::vector<boost::any> const& a, std::vector<boost::any> const& b) {
        return same_list(a, b, [this](auto const& left, auto const& right) { return same(left, right); });
    }

    template <class T, class Same>
    bool same_list(std::vector<T> const& a, std::vector<T> const& b, Same same_element) {
        bool equal = a.size() == b.size();
        for (std::size_t i = 0; equal && i < a.size(); ++i) {
            equal = inside(std::to_string(i), same_element(a[i], b[i]));
        }
        return equal;
    }

    template <class T>
    static bool same_value(value_shape::block, T const& a, T const& b) {
        return std::ranges::equal(std::as_bytes(std::span(&a, 1)), std::as_bytes(std::span(&b, 1)));
    }

    // A vector of three has a fourth lane that isn't stored, so it isn't looked at.
    template <class E>
    static bool same_value(value_shape::triples, math::vec<E, 3, math::use_simd_tag> const& a,
                           math::vec<E, 3, math::use_simd_tag> const& b) {
        value_shape::block const form;
        return same_value(form, a[0], b[0]) && same_value(form, a[1], b[1]) && same_value(form, a[2], b[2]);
    }
    static bool same_value(value_shape::triples form, velum::linear_space3 const& a, velum::linear_space3 const& b) {
        return same_value(form, a[0], b[0]) && same_value(form, a[1], b[1]) && same_value(form, a[2], b[2]);
    }
    static bool same_value(value_shape::triples form, velum::affine_space3 const& a, velum::affine_space3 const& b) {
        return same_value(form, a.linear, b.linear) && same_value(form, a.origin, b.origin);
    }

    // Truths, texts and byte vectors. Objects are only the same where they are one.
    template <class Shape, class T>
    static bool same_value(Shape, T const& a, T const& b) {
        return a == b;
    }
};

}  // namespace scene
