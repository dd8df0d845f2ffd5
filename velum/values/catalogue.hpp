#pragma once

#include <velum/core/any.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>
#include <velum/values/any_map.hpp>
#include <velum/values/math/affine_space.hpp>
#include <velum/values/math/aligned_allocator.hpp>
#include <velum/values/math/linear_space.hpp>
#include <velum/values/math/mat.hpp>
#include <velum/values/math/quat.hpp>
#include <velum/values/math/vec.hpp>
#include <velum/values/ustring.hpp>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace velum {

/// Bytes that begin at a multiple of 64 bytes in memory.
using byte_vector = std::vector<unsigned char, sys::aligned_allocator<unsigned char, 64>>;
/// Three vectors of three components.
using linear_space3 = math::linear_space_n<math::vec<float, 3, math::use_simd_tag>, 3>;
/// The same with an origin.
using affine_space3 = math::affine_space<linear_space3>;

namespace value_shape {
struct block {};    ///< the bytes of the value as they lie in memory
struct truth {};    ///< one 32-bit word
struct triples {};  ///< the first three lanes of each vector in the value
struct text {};     ///< a 32-bit length and the bytes
struct bytes {};    ///< a 64-bit length and the bytes
struct map {};      ///< a 32-bit count, then keys and values in turn
struct maps {};     ///< a 32-bit count, then maps
struct values {};   ///< a 32-bit count, then values with their tags
struct object {};   ///< an object of the graph around the value
}  // namespace value_shape

/// One line of the catalogue.
template <int Tag, class Type, class Shape>
struct value_row {
    static constexpr int tag = Tag;  ///< the number before a value
    using type = Type;               ///< what the value is in memory
    using shape = Shape;             ///< one of `value_shape`
};

/// The lines of a catalogue.
template <class... Rows>
struct value_rows {
    static constexpr std::size_t size = sizeof...(Rows);  ///< how many there are

    /// Calls `visit` with an instance of each row.
    template <class Visit>
    static constexpr void for_each(Visit visit) {
        (visit(Rows{}), ...);
    }
};

/// The types that a value map can hold and a stream can carry, with the tag that stands before a value of the type.
/// Stored documents rest on the numbers: a tag is never given to another type, and 30 and 33 to 39 stay free.
// clang-format off
using value_catalogue = value_rows<
    //            tag  type                                    shape
    value_row< 1, std::string,                             value_shape::text>,
    value_row< 2, bool,                                    value_shape::truth>,
    value_row< 3, int,                                     value_shape::block>,
    value_row< 4, float,                                   value_shape::block>,
    value_row< 5, tessa::mat<float, 2, 1>,                 value_shape::block>,
    value_row< 6, tessa::mat<float, 3, 1>,                 value_shape::block>,
    value_row< 7, tessa::mat<float, 4, 1>,                 value_shape::block>,
    value_row< 8, tessa::mat<float, 3, 3>,                 value_shape::block>,
    value_row< 9, tessa::mat<float, 3, 4>,                 value_shape::block>,
    value_row<10, tessa::mat<float, 4, 4>,                 value_shape::block>,
    value_row<11, tessa::mat<int, 2, 1>,                   value_shape::block>,
    value_row<12, tessa::mat<int, 3, 1>,                   value_shape::block>,
    value_row<13, tessa::mat<int, 4, 1>,                   value_shape::block>,
    value_row<14, double,                                  value_shape::block>,
    value_row<15, tessa::mat<double, 2, 1>,                value_shape::block>,
    value_row<16, tessa::mat<double, 3, 1>,                value_shape::block>,
    value_row<17, tessa::mat<double, 4, 1>,                value_shape::block>,
    value_row<18, tessa::mat<double, 3, 3>,                value_shape::block>,
    value_row<19, tessa::mat<double, 3, 4>,                value_shape::block>,
    value_row<20, tessa::mat<double, 4, 4>,                value_shape::block>,
    value_row<21, math::vec<int, 2, math::use_simd_tag>,   value_shape::block>,
    value_row<22, math::vec<int, 3, math::use_simd_tag>,   value_shape::triples>,
    value_row<23, math::vec<int, 4, math::use_simd_tag>,   value_shape::block>,
    value_row<24, math::vec<float, 2, math::use_simd_tag>, value_shape::block>,
    value_row<25, math::vec<float, 3, math::use_simd_tag>, value_shape::triples>,
    value_row<26, math::vec<float, 4, math::use_simd_tag>, value_shape::block>,
    value_row<27, math::quat<float>,                       value_shape::block>,
    value_row<28, linear_space3,                           value_shape::triples>,
    value_row<29, affine_space3,                           value_shape::triples>,
    value_row<31, long long,                               value_shape::block>,
    value_row<32, guid_t,                                  value_shape::block>,
    value_row<40, any_map,                                 value_shape::map>,
    value_row<41, std::vector<any_map>,                    value_shape::maps>,
    value_row<42, ustring,                                 value_shape::text>,
    value_row<43, uany_map,                                value_shape::map>,
    value_row<44, std::vector<uany_map>,                   value_shape::maps>,
    value_row<45, byte_vector,                             value_shape::bytes>,
    value_row<46, std::vector<boost::any>,                 value_shape::values>,
    value_row<47, iptr<i_unknown_t>,                       value_shape::object>>;
// clang-format on

/// No type of the catalogue has a tag above it.
inline constexpr int highest_value_tag = 47;

static_assert(value_catalogue::size == 39);
static_assert(
    [] {
        std::array<bool, highest_value_tag + 1> taken{};
        bool unique = true;
        value_catalogue::for_each([&]<class Row>(Row) {
            unique = unique && !taken[Row::tag];
            taken[Row::tag] = true;
        });
        return unique && !taken[0];
    }(),
    "every type has a tag of its own, from 1 on");

}  // namespace velum
