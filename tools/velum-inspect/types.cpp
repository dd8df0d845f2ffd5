#include "types.hpp"

#include <velum/values/catalogue.hpp>

#include <algorithm>
#include <array>
#include <type_traits>
#include <vector>

namespace inspect {
namespace {

// What a type is called, and the numbers that it is made of, if it is made of numbers.
template <class T>
struct described;

template <class T>
struct no_numbers {
    using number = T;
    static constexpr std::size_t count = 0;
};

template <class T>
struct one_number {
    using number = T;
    static constexpr std::size_t count = 1;
};

std::string with_arguments(char const* name, std::string const& argument, std::initializer_list<int> sizes) {
    std::string text = name + ('<' + argument);
    for (int const size : sizes) {
        text += ',' + std::to_string(size);
    }
    return text + '>';
}

// clang-format off
template <> struct described<bool> : one_number<bool> { static std::string name() { return "bool"; } };
template <> struct described<int> : one_number<int> { static std::string name() { return "int"; } };
template <> struct described<long long> : one_number<long long> { static std::string name() { return "long long"; } };
template <> struct described<float> : one_number<float> { static std::string name() { return "float"; } };
template <> struct described<double> : one_number<double> { static std::string name() { return "double"; } };
template <> struct described<std::string> : no_numbers<char> { static std::string name() { return "std::string"; } };
template <> struct described<velum::ustring> : no_numbers<char> { static std::string name() { return "ustring"; } };
template <> struct described<velum::guid_t> : no_numbers<char> { static std::string name() { return "guid_t"; } };
template <> struct described<velum::byte_vector> : no_numbers<char> { static std::string name() { return "byte_vector"; } };
template <> struct described<velum::any_map> : no_numbers<char> { static std::string name() { return "any_map"; } };
template <> struct described<velum::uany_map> : no_numbers<char> { static std::string name() { return "uany_map"; } };
template <> struct described<boost::any> : no_numbers<char> { static std::string name() { return "boost::any"; } };
template <> struct described<velum::i_unknown_t> : no_numbers<char> { static std::string name() { return "i_unknown_t"; } };
// clang-format on

template <class T>
struct described<std::vector<T>> : no_numbers<char> {
    static std::string name() { return with_arguments("std::vector", described<T>::name(), {}); }
};
template <class T>
struct described<velum::iptr<T>> : no_numbers<char> {
    static std::string name() { return with_arguments("iptr", described<T>::name(), {}); }
};
template <class T, int Rows, int Columns>
struct described<tessa::mat<T, Rows, Columns>> {
    using number = T;
    static constexpr std::size_t count = std::size_t{Rows} * std::size_t{Columns};
    static std::string name() { return with_arguments("tessa::mat", described<T>::name(), {Rows, Columns}); }
};
template <class T, int Size, class Tag>
struct described<math::vec<T, Size, Tag>> {
    using number = T;
    static constexpr std::size_t count = Size;
    static std::string name() { return with_arguments("math::vec", described<T>::name(), {Size}); }
};
template <class T>
struct described<math::quat<T>> {
    using number = T;
    static constexpr std::size_t count = 4;
    static std::string name() { return with_arguments("math::quat", described<T>::name(), {}); }
};
template <>
struct described<velum::linear_space3> {
    using number = float;
    static constexpr std::size_t count = 9;
    static std::string name() { return "linear_space3"; }
};
template <>
struct described<velum::affine_space3> {
    using number = float;
    static constexpr std::size_t count = 12;
    static std::string name() { return "affine_space3"; }
};

template <class Number>
constexpr number_kind kind_of() {
    if constexpr (std::is_floating_point_v<Number>) {
        return sizeof(Number) == 4 ? number_kind::f32 : number_kind::f64;
    } else {
        return sizeof(Number) == 8 ? number_kind::i64 : number_kind::i32;
    }
}

form form_of(velum::value_shape::truth) {
    return form::truth;
}
form form_of(velum::value_shape::triples) {
    return form::numbers;
}
form form_of(velum::value_shape::text) {
    return form::text;
}
form form_of(velum::value_shape::bytes) {
    return form::bytes;
}
form form_of(velum::value_shape::map) {
    return form::map;
}
form form_of(velum::value_shape::maps) {
    return form::maps;
}
form form_of(velum::value_shape::values) {
    return form::values;
}
form form_of(velum::value_shape::object) {
    return form::object;
}

template <class Row>
stored_type describe() {
    using type = described<typename Row::type>;
    form shape{};
    if constexpr (std::is_same_v<typename Row::shape, velum::value_shape::block>) {
        shape = type::count == 0 ? form::identifier : form::numbers;
    } else {
        shape = form_of(typename Row::shape());
    }
    return {type::name(), Row::tag, shape, kind_of<typename type::number>(), type::count};
}

using types_by_tag = std::array<stored_type, velum::highest_value_tag + 1>;

types_by_tag catalogue() {
    types_by_tag types;
    velum::value_catalogue::for_each([&types]<class Row>(Row) { types[Row::tag] = describe<Row>(); });
    return types;
}

std::vector<stored_type> words() {
    std::vector<stored_type> all{
        {"u8", 0, form::numbers, number_kind::u8, 1},   {"u16", 0, form::numbers, number_kind::u16, 1},
        {"u32", 0, form::numbers, number_kind::u32, 1}, {"u64", 0, form::numbers, number_kind::u64, 1},
        {"i8", 0, form::numbers, number_kind::i8, 1},   {"i16", 0, form::numbers, number_kind::i16, 1},
        {"i32", 0, form::numbers, number_kind::i32, 1}, {"i64", 0, form::numbers, number_kind::i64, 1},
        {"f32", 0, form::numbers, number_kind::f32, 1}, {"f64", 0, form::numbers, number_kind::f64, 1},
    };
    for (auto const& [word, shape] :
         {std::pair("guid", form::identifier), std::pair("text", form::text), std::pair("map", form::map),
          std::pair("object_map", form::object_map), std::pair("object", form::object),
          std::pair("value", form::tagged), std::pair("bytes", form::raw)}) {
        all.push_back({word, 0, shape});
    }
    return all;
}

}  // namespace

std::size_t size_of(number_kind kind) {
    switch (kind) {
        case number_kind::u8:
        case number_kind::i8:
            return 1;
        case number_kind::u16:
        case number_kind::i16:
            return 2;
        case number_kind::u32:
        case number_kind::i32:
        case number_kind::f32:
            return 4;
        case number_kind::u64:
        case number_kind::i64:
        case number_kind::f64:
            break;
    }
    return 8;
}

stored_type const* type_of_tag(std::uint32_t tag) {
    static types_by_tag const types = catalogue();
    return tag < types.size() && types[tag].tag != 0 ? &types[tag] : nullptr;
}

stored_type const* type_of_word(std::string_view word) {
    static std::vector<stored_type> const types = words();
    auto const found = std::find_if(types.begin(), types.end(), [&](auto const& type) { return type.name == word; });
    return found != types.end() ? &*found : nullptr;
}

}  // namespace inspect
