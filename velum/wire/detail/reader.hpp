#pragma once

#include <velum/core/any.hpp>
#include <velum/core/detail/stack_guard.hpp>
#include <velum/values/catalogue.hpp>
#include <velum/values/detail/held.hpp>
#include <velum/wire/detail/arrivals.hpp>
#include <velum/wire/detail/fill.hpp>
#include <velum/wire/detail/key_path.hpp>
#include <velum/wire/detail/triples.hpp>
#include <velum/wire/detail/value_tag.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// What a level of nesting doesn't run through stays out of its frame, or it would cost every level its stack.
#define VELUM_LEAF [[gnu::noinline]]

namespace velum::detail {

/// Reads from a source what `writer` writes. One reader serves one operation.
///
/// What is read into was set before, so that what a stream fails to deliver is never memory that nobody set.
template <class Source>
class reader {
public:
    explicit reader(Source& source) : source_(source), arrivals_(source) {}

    template <class Map>
    void read_map(Map& map) {
        path_.explain(" - while reading map key: ", [&] { get(value_shape::map(), map); });
    }

private:
    using decoder = void (*)(reader&, boost::any&);

    void read_any(boost::any& value) {
        static constexpr auto decoders = [] {
            std::array<decoder, highest_value_tag + 1> by_tag{};
            value_catalogue::for_each([&by_tag]<class Row>(Row) { by_tag[Row::tag] = &decode<Row>; });
            return by_tag;
        }();
        auto const tag = get_number<std::uint32_t>();
        decoder const decode_payload = tag < decoders.size() ? decoders[tag] : nullptr;
        if (decode_payload == nullptr) {
            throw_unknown_tag(tag);
        }
        decode_payload(*this, value);
    }

    template <class Row>
    static void decode(reader& self, boost::any& value) {
        self.get(typename Row::shape(), make<typename Row::type>(value));
    }

    template <class T>
    VELUM_LEAF static T& make(boost::any& value) {
        value = T();
        return held<T>(value);
    }

    template <class T>
    void get(value_shape::block, T& value) {
        source_.read(&value, sizeof value);
    }

    void get(value_shape::truth, bool& value) { value = get_number<std::uint32_t>() != 0; }

    template <class T>
    void get(value_shape::triples, T& value) {
        typename triples<T>::components components{};
        source_.read(components.data(), sizeof components);
        value = triples<T>::build(components.data());
    }

    VELUM_LEAF void get(value_shape::text, std::string& text) { fill(source_, text, get_number<std::uint32_t>()); }

    VELUM_LEAF void get(value_shape::text form, ustring& text) {
        std::string read;
        get(form, read);
        text = ustring(read);
    }

    VELUM_LEAF void get(value_shape::bytes, byte_vector& bytes) {
        // Above this the allocator is asked for all of it at once, to refuse it or not.
        constexpr std::uint64_t hopeless = std::uint64_t{1} << 40U;
        auto const length = get_number<std::uint64_t>();
        if (length > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
            throw std::length_error("vector too long");
        }
        if (length > hopeless) {
            bytes.reserve(length);
        }
        fill(source_, bytes, length);
    }

    template <class Map>
    void get(value_shape::map, Map& map) {
        stack_guard::level const level(stack_);
        auto count = get_number<std::uint32_t>();
        path_.enter();
        for (; count != 0; --count) {
            get(value_shape::text(), path_.innermost());
            boost::any value;
            read_any(value);
            store(map, value);
        }
        path_.leave();
    }

    // Keys mostly come in their order, so the end is the place to look at first.
    template <class Map>
    VELUM_LEAF void store(Map& map, boost::any& value) {
        std::string& key = path_.innermost();
        map.emplace_hint(map.end(), typename Map::key_type(std::move(key)), boost::any())->second.swap(value);
        key.clear();
    }

    // Room is taken as the maps arrive, and at last for all that may be missing.
    template <class Map>
    void get(value_shape::maps, std::vector<Map>& maps) {
        auto const count = get_number<std::uint32_t>();
        arrivals_.promise(std::uint64_t{count} * sizeof(Map));
        maps.reserve(std::min<std::size_t>(count, 8));
        while (maps.size() != count) {
            if (maps.size() == maps.capacity() && maps.size() * sizeof(Map) >= ahead && arrivals_.covered()) {
                maps.reserve(count);
            }
            get(value_shape::map(), maps.emplace_back());
            arrivals_.keep(sizeof(Map));
        }
    }

    void get(value_shape::values, std::vector<boost::any>& values) {
        stack_guard::level const level(stack_);
        auto const count = get_number<std::uint32_t>();
        values.reserve(std::min<std::size_t>(count, 16));
        while (values.size() != count) {
            read_any(values.emplace_back());
        }
    }

    void get(value_shape::object, iptr<i_unknown_t>& object) { source_.read_object(object); }

    template <class Number>
    Number get_number() {
        Number value = 0;
        arrivals_.read_number(value);
        return value;
    }

    static constexpr std::size_t ahead = std::size_t{64} << 10U;  // bytes

    Source& source_;
    stack_guard stack_{stack_guard::reserve::for_reading};
    arrivals<Source> arrivals_;
    key_path<std::string> path_;
};

}  // namespace velum::detail

#undef VELUM_LEAF
