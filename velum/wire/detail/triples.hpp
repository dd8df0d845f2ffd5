#pragma once

#include <velum/values/catalogue.hpp>

#include <algorithm>
#include <array>

namespace velum::detail {

/// How a type made of three-component vectors goes to and from a row of their components.
template <class T>
struct triples;

template <class E>
struct triples<math::vec<E, 3, math::use_simd_tag>> {
    using vector = math::vec<E, 3, math::use_simd_tag>;
    using components = std::array<E, 3>;

    static components gather(vector const& v) { return {v[0], v[1], v[2]}; }
    static vector build(E const* c) { return {c[0], c[1], c[2]}; }
};

template <>
struct triples<linear_space3> {
    using one = triples<linear_space3::vector_type>;
    using components = std::array<float, 9>;

    static components gather(linear_space3 const& space) {
        components all;
        auto out = all.begin();
        for (int i = 0; i < linear_space3::size; ++i) {
            auto const lanes = one::gather(space[i]);
            out = std::copy(lanes.begin(), lanes.end(), out);
        }
        return all;
    }
    static linear_space3 build(float const* c) { return {one::build(c), one::build(c + 3), one::build(c + 6)}; }
};

template <>
struct triples<affine_space3> {
    using part = triples<linear_space3>;
    using one = triples<affine_space3::vector_type>;
    using components = std::array<float, 12>;

    static components gather(affine_space3 const& space) {
        components all;
        auto const linear = part::gather(space.linear);
        auto const origin = one::gather(space.origin);
        std::copy(origin.begin(), origin.end(), std::copy(linear.begin(), linear.end(), all.begin()));
        return all;
    }
    static affine_space3 build(float const* c) { return {part::build(c), one::build(c + 9)}; }
};

}  // namespace velum::detail
