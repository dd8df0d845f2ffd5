#pragma once

#include <velum/core/detail/secret.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/wire/detail/blocks.hpp>

#include <cstdint>
#include <istream>
#include <limits>
#include <stdexcept>

namespace velum::detail {

// Where a reader's bytes come from: one for each route.
//
// `read` leaves alone what doesn't arrive. `arrives` and `number_arrives` read too, into zeros, and tell whether all of
// it came; `watch` is called before a row of such reads, and `least_step` is the least number of bytes that `arrives`
// can judge.

class stream_source {
public:
    explicit stream_source(std::basic_istream<char>& stream) : stream_(stream) {}

    bool reads_from(stream_source const& other) const { return &stream_ == &other.stream_; }

    void read(void* data, std::uint64_t size) { arrives(data, size); }

    void watch() {}
    std::uint64_t least_step() const { return 1; }

    /// Whether the stream has so many bytes at hand, as far as it tells. What keeps it from telling shows when it is
    /// read.
    bool has(std::uint64_t size) {
        try {
            return stream_.good() && stream_.rdbuf()->in_avail() >= static_cast<std::streamsize>(size);
        } catch (...) {
            return false;
        }
    }

    bool arrives(void* data, std::uint64_t size) {
        return read_block(stream_, static_cast<char*>(data), static_cast<std::streamsize>(size));
    }

    // As through a serializer: of a number that isn't zero a part may be missing.
    template <class Number>
    bool number_arrives(Number& number) {
        return arrives(&number, sizeof number) || number != 0;
    }

    [[noreturn]] static void read_object(iptr<i_unknown_t>&) {
        throw std::runtime_error("i_unknown serialization not possible with this type of stream");
    }

private:
    std::basic_istream<char>& stream_;
};

/// A serializer doesn't say what arrived. Its position does, where it moves with every read: a stream that ended has
/// none any more. Without one, what was in the memory before is still there after a read that brought nothing: secret
/// bits in a text, which nobody can store, and ones in a number, which no count needs.
class serializer_source {
public:
    explicit serializer_source(i_serializer_t& serializer) : serializer_(serializer) {}

    bool reads_from(serializer_source const& other) const { return &serializer_ == &other.serializer_; }

    void read(void* data, std::uint64_t size) {
        serializer_.read(static_cast<char*>(data), static_cast<long long>(size));
    }

    static bool has(std::uint64_t) { return false; }  // nobody tells

    void watch() { position_ = serializer_.tell(); }
    std::uint64_t least_step() const { return position_ < 0 ? probe : 1; }

    bool arrives(void* data, std::uint64_t size) {
        if (position_ < 0) {
            return is_probed(static_cast<unsigned char*>(data), size);
        }
        read(data, size);
        long long const before = position_;
        watch();
        bool const ended = position_ < 0;
        if (position_ != before + static_cast<long long>(size)) {
            position_ = unknown;
        }
        return !ended;
    }

    // Where nobody knows the position, a number has come when its last byte has. Otherwise one that isn't zero has.
    template <class Number>
    bool number_arrives(Number& number) {
        if (position_ < 0) {
            number = std::numeric_limits<Number>::max();
            read(&number, sizeof number);
            return number >> (8 * (sizeof number - 1)) != 0xFF;
        }
        read(&number, sizeof number);
        if (number != 0) {
            return true;
        }
        long long const start = position_;
        watch();
        bool const ended = position_ < 0;
        if (position_ <= start) {
            position_ = unknown;
        }
        return !ended;
    }

    /// Whether the position has moved since it was last looked at.
    bool goes_on() {
        long long const before = position_;
        watch();
        return position_ > before;
    }

    void read_object(iptr<i_unknown_t>& object) {
        iptr<i_serializable_t> serializable;
        serializer_.read_object(serializable);
        object = iptr<i_unknown_t>(serializable, iid_unknown);
    }

private:
    static constexpr long long unknown = -1;
    static constexpr std::uint64_t probe = 16;  // bytes

    // Single bytes come or don't. One that isn't what was in its place before has come, and the rest may.
    bool is_probed(unsigned char* bytes, std::uint64_t size) {
        for (std::uint64_t i = 0; i < probe; ++i) {
            auto const before = static_cast<unsigned char>(secret_bits() >> (i % 8 * 8));
            bytes[i] = before;
            read(bytes + i, 1);
            if (bytes[i] != before) {
                read(bytes + i + 1, size - i - 1);
                return true;
            }
        }
        return false;
    }

    i_serializer_t& serializer_;
    long long position_ = unknown;
};

}  // namespace velum::detail
