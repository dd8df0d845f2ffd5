#pragma once

#include <velum/core/i_serializer.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <iterator>
#include <stdexcept>

namespace velum::detail {

// Where a reader's bytes come from: one for each route.
//
// `read` leaves alone what doesn't arrive. `arrives` and `number_arrives` read too, into zeros, and tell whether all of
// it came; `watch` is called before a row of such reads.

class stream_source {
public:
    explicit stream_source(std::basic_istream<char>& stream) : stream_(stream) {}

    void read(void* data, std::uint64_t size) { arrives(data, size); }

    void watch() {}

    bool arrives(void* data, std::uint64_t size) {
        auto const count = static_cast<std::streamsize>(size);
        stream_.read(static_cast<char*>(data), count);
        return stream_.gcount() == count;
    }

    template <class Number>
    bool number_arrives(Number& number) {
        return arrives(&number, sizeof number);
    }

    [[noreturn]] static void read_object(iptr<i_unknown_t>&) {
        throw std::runtime_error("i_unknown serialization not possible with this type of stream");
    }

private:
    std::basic_istream<char>& stream_;
};

/// A serializer doesn't say what arrived. Its position does, since a stream that ended has none any more. Where there
/// is no position from the start, be it that the stream can't seek or that it ended in the very length that promised so
/// much, what was in the memory before stands there after a read that brought nothing.
class serializer_source {
public:
    explicit serializer_source(iptr<i_serializer_t> const& s) : serializer_(*s) {}

    void read(void* data, std::uint64_t size) {
        serializer_.read(static_cast<char*>(data), static_cast<long long>(size));
    }

    void watch() { position_ = serializer_.tell(); }

    bool arrives(void* data, std::uint64_t size) {
        if (position_ < 0) {
            return overwrites(static_cast<unsigned char*>(data), size);
        }
        read(data, size);
        return has_moved(size);
    }

    // A number that isn't zero has come, so the stream need not be asked.
    template <class Number>
    bool number_arrives(Number& number) {
        if (position_ < 0) {
            return arrives(&number, sizeof number);
        }
        read(&number, sizeof number);
        return number != 0 || has_moved(sizeof number);
    }

    void read_object(iptr<i_unknown_t>& object) {
        iptr<i_serializable_t> serializable;
        serializer_.read_object(serializable);
        object = iptr<i_unknown_t>(serializable, iid_unknown);
    }

private:
    bool has_moved(std::uint64_t size) {
        long long const before = position_;
        watch();
        return position_ >= before && static_cast<std::uint64_t>(position_ - before) >= size;
    }

    bool overwrites(unsigned char* bytes, std::uint64_t size) {
        // No length or count is likely to have these bytes, and 16 such bytes no text.
        static constexpr unsigned char mark[] = {0xE7, 0x5B, 0x9C, 0xF1, 0xA4, 0x3D, 0xC8, 0xB6,
                                                 0x92, 0xEF, 0x6A, 0xD3, 0xBB, 0x84, 0xF9, 0xC5};
        bool const telling = size >= sizeof(std::uint32_t);
        auto const length = static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(telling ? size : 0, std::size(mark)));
        std::copy_n(mark, length, bytes);
        read(bytes, size);
        return !telling || !std::equal(bytes, bytes + length, mark);
    }

    i_serializer_t& serializer_;
    long long position_ = -1;
};

}  // namespace velum::detail
