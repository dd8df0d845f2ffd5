#pragma once

#include <velum/core/any.hpp>
#include <velum/core/detail/stack_guard.hpp>
#include <velum/values/catalogue.hpp>
#include <velum/values/detail/held.hpp>
#include <velum/wire/detail/count.hpp>
#include <velum/wire/detail/key_path.hpp>
#include <velum/wire/detail/triples.hpp>
#include <velum/wire/detail/value_tag.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace velum::detail {

/// Writes the tagged binary form of values to a sink. One writer serves one operation.
///
///     map    = count:u32 { text value }        text  = length:u32 { byte }
///     value  = tag:u32 payload                 bytes = length:u64 { byte }
///
/// The payload has the form that the catalogue gives to the tag. Numbers are little-endian, and each field is one call
/// on the sink.
template <class Sink>
class writer {
public:
    explicit writer(Sink& sink) : sink_(sink) {}

    template <class Map>
    void write_map(Map const& map) {
        path_.explain(" - while writing map key: ", [&] { put(value_shape::map(), map); });
    }

private:
    using encoder = void (*)(writer&, boost::any const&);

    void write_any(boost::any const& value) {
        static constexpr auto encoders = [] {
            std::array<encoder, highest_value_tag + 1> by_tag{};
            value_catalogue::for_each([&by_tag]<class Row>(Row) { by_tag[Row::tag] = &encode<Row>; });
            return by_tag;
        }();
        encoders[static_cast<std::size_t>(value_tag(value))](*this, value);
    }

    template <class Row>
    static void encode(writer& self, boost::any const& value) {
        auto const& payload = held<typename Row::type>(value);
        typename Row::shape const form;
        check_count(form, payload);  // before anything of the value is written
        self.put_number(std::uint32_t{Row::tag});
        self.put(form, payload);
    }

    template <class T>
    void put(value_shape::block, T const& value) {
        sink_.write(&value, sizeof value);
    }

    void put(value_shape::truth, bool value) { put_number(std::uint32_t{value}); }

    template <class T>
    void put(value_shape::triples, T const& value) {
        auto const components = triples<T>::gather(value);
        sink_.write(components.data(), sizeof components);
    }

    template <class Text>
    void put(value_shape::text, Text const& text) {
        std::string_view const chars = view(text);
        put_number(count_of(chars.size()));
        put_bytes(chars.data(), chars.size());
    }

    void put(value_shape::bytes, byte_vector const& bytes) {
        put_number(std::uint64_t{bytes.size()});
        put_bytes(bytes.data(), bytes.size());
    }

    template <class Map>
    void put(value_shape::map, Map const& map) {
        stack_guard::level const level(stack_);
        put_number(count_of(map.size()));
        path_.enter();
        for (auto const& [key, value] : map) {
            path_.innermost() = view(key);
            put(value_shape::text(), key);
            write_any(value);
        }
        path_.leave();
    }

    template <class Map>
    void put(value_shape::maps, std::vector<Map> const& maps) {
        put_number(count_of(maps.size()));
        for (Map const& map : maps) {
            put(value_shape::map(), map);
        }
    }

    void put(value_shape::values, std::vector<boost::any> const& values) {
        stack_guard::level const level(stack_);
        put_number(count_of(values.size()));
        for (boost::any const& value : values) {
            write_any(value);
        }
    }

    void put(value_shape::object, iptr<i_unknown_t> const& object) { sink_.write_object(object); }

    template <class Number>
    void put_number(Number value) {
        sink_.write(&value, sizeof value);
    }

    void put_bytes(void const* data, std::size_t size) {
        if (size != 0) {
            sink_.write(data, size);
        }
    }

    template <class Shape, class T>
    static void check_count(Shape, T const& held) {
        if constexpr (std::is_same_v<Shape, value_shape::text>) {
            count_of(view(held).size());
        } else if constexpr (is_any_of<Shape, value_shape::map, value_shape::maps, value_shape::values>) {
            count_of(held.size());
        }
    }

    template <class T, class... Others>
    static constexpr bool is_any_of = (std::is_same_v<T, Others> || ...);

    static std::string_view view(std::string const& text) { return text; }
    static std::string_view view(ustring const& text) { return text.c_str(); }

    Sink& sink_;
    stack_guard stack_{stack_guard::reserve::for_writing};
    key_path<std::string_view> path_;
};

}  // namespace velum::detail
