#pragma once

#include <velum/core/detail/stack_guard.hpp>
#include <velum/values/catalogue.hpp>
#include <velum/wire/detail/arrivals.hpp>
#include <velum/wire/detail/key_path.hpp>
#include <velum/wire/detail/triples.hpp>
#include <velum/wire/detail/value_tag.hpp>

#include <boost/any.hpp>

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
/// Every number is zero before it is read, so that what a stream fails to deliver reads as zero and never as memory
/// that nobody set.
template <class Source>
class reader {
public:
    explicit reader(Source& source) : source_(source), arrivals_(source) {}

    template <class Map>
    void read_map(Map& map) {
        path_.explain(" - while reading map key: ", [&] { get(shape::map(), map); });
    }

private:
    using decoder = void (*)(reader&, boost::any&);

    void read_any(boost::any& value) {
        static constexpr auto decoders = [] {
            std::array<decoder, highest_tag + 1> by_tag{};
            catalogue::for_each([&by_tag]<class Row>(Row) { by_tag[Row::tag] = &decode<Row>; });
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
        return boost::any_cast<T&>(value);
    }

    template <class T>
    void get(shape::block, T& value) {
        source_.read(&value, sizeof value);
    }

    void get(shape::truth, bool& value) { value = get_number<std::uint32_t>() != 0; }

    template <class T>
    void get(shape::triples, T& value) {
        typename triples<T>::components components{};
        source_.read(components.data(), sizeof components);
        value = triples<T>::build(components.data());
    }

    VELUM_LEAF void get(shape::text, std::string& text) { fill(text, get_number<std::uint32_t>()); }

    VELUM_LEAF void get(shape::text form, ustring& text) {
        std::string read;
        get(form, read);
        text = ustring(read);
    }

    VELUM_LEAF void get(shape::bytes, byte_vector& bytes) {
        // Above this the allocator is asked for all of it at once, to refuse it or not.
        constexpr std::uint64_t hopeless = std::uint64_t{1} << 40U;
        auto const length = get_number<std::uint64_t>();
        if (length > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
            throw std::length_error("vector too long");
        }
        if (length > hopeless) {
            bytes.reserve(length);
        }
        fill(bytes, length);
    }

    template <class Map>
    void get(shape::map, Map& map) {
        stack_guard::level const level(stack_);
        for (auto count = get_number<std::uint32_t>(); count != 0; --count) {
            enter_key();
            boost::any value;
            read_any(value);
            store(map, value);
        }
    }

    VELUM_LEAF void enter_key() {
        std::string key;
        get(shape::text(), key);
        path_.enter(std::move(key));
    }

    template <class Map>
    VELUM_LEAF void store(Map& map, boost::any& value) {
        map.insert_or_assign(typename Map::key_type(path_.leave()), std::move(value));
    }

    // Room is taken as the maps arrive, or ahead where all of them may be missing.
    template <class Map>
    void get(shape::maps, std::vector<Map>& maps) {
        auto const count = get_number<std::uint32_t>();
        typename arrivals<Source>::promise const promise(arrivals_, std::uint64_t{count} * sizeof(Map));
        while (maps.size() != count) {
            if (arrivals_.excess() == 0) {
                maps.reserve(count);
            }
            get(shape::map(), maps.emplace_back());
            arrivals_.keep(sizeof(Map));
        }
    }

    void get(shape::values, std::vector<boost::any>& values) {
        stack_guard::level const level(stack_);
        auto const count = get_number<std::uint32_t>();
        typename arrivals<Source>::advance const ahead(arrivals_, std::uint64_t{count} * sizeof(boost::any));
        if (ahead.granted()) {
            values.reserve(count);
        }
        while (values.size() != count) {
            read_any(values.emplace_back());
        }
    }

    void get(shape::object, iptr<i_unknown_t>& object) { source_.read_object(object); }

    template <class Number>
    Number get_number() {
        Number value = 0;
        arrivals_.read_number(value);
        return value;
    }

    // What may be missing altogether is read by one call. The rest of a longer text is read before it in steps, each as
    // long as what has arrived, so that the memory follows it.
    template <class Buffer>
    void fill(Buffer& buffer, std::uint64_t length) {
        constexpr std::uint64_t first_step = std::uint64_t{64} << 10U;
        typename arrivals<Source>::promise const promise(arrivals_, length);
        while (buffer.size() != length) {
            std::uint64_t const left = length - buffer.size();
            std::uint64_t const excess = arrivals_.excess();
            std::uint64_t const step = std::max<std::uint64_t>(buffer.size(), first_step);
            append(buffer, excess == 0 ? left : std::min({left, excess, step}));
        }
    }

    template <class Buffer>
    void append(Buffer& buffer, std::uint64_t step) {
        std::size_t const before = buffer.size();
        if (before + step > buffer.capacity()) {
            Buffer larger;
            larger.reserve(before + step);
            larger.assign(buffer.begin(), buffer.end());
            buffer.swap(larger);
        }
        buffer.resize(before + step);
        arrivals_.read(buffer.data() + before, step);
        arrivals_.keep(step);
    }

    Source& source_;
    stack_guard stack_{stack_guard::reserve::for_reading};
    arrivals<Source> arrivals_;
    key_path<std::string> path_;
};

}  // namespace velum::detail

#undef VELUM_LEAF
