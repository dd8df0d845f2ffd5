#pragma once

#include <velum/core/i_serializer.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <cstdint>
#include <istream>
#include <stdexcept>

namespace velum::detail {

// Where a reader's bytes come from: one for each route.
//
// `read` leaves alone what doesn't arrive. `watch` and then `delivered` tell whether at least `due` bytes arrived since
// the last call of either; where that can't be known the answer is yes.

class stream_source {
public:
    explicit stream_source(std::basic_istream<char>& stream) : stream_(stream) {}

    void read(void* data, std::uint64_t size) {
        auto const count = static_cast<std::streamsize>(size);
        stream_.read(static_cast<char*>(data), count);
        ended_ = ended_ || stream_.gcount() != count;
    }

    void watch() {}
    bool delivered(std::uint64_t) const { return !ended_; }

    [[noreturn]] static void read_object(iptr<i_unknown_t>&) {
        throw std::runtime_error("i_unknown serialization not possible with this type of stream");
    }

private:
    std::basic_istream<char>& stream_;
    bool ended_ = false;
};

class serializer_source {
public:
    explicit serializer_source(iptr<i_serializer_t> const& s) : serializer_(*s) {}

    void read(void* data, std::uint64_t size) {
        serializer_.read(static_cast<char*>(data), static_cast<long long>(size));
    }

    void watch() { position_ = serializer_.tell(); }

    // A stream that ended has no position any more; one that never had a position can't be watched.
    bool delivered(std::uint64_t due) {
        if (position_ < 0) {
            return true;
        }
        long long const before = position_;
        watch();
        return position_ >= before && static_cast<std::uint64_t>(position_ - before) >= due;
    }

    void read_object(iptr<i_unknown_t>& object) {
        iptr<i_serializable_t> serializable;
        serializer_.read_object(serializable);
        object = iptr<i_unknown_t>(serializable, iid_unknown);
    }

private:
    i_serializer_t& serializer_;
    long long position_ = -1;
};

}  // namespace velum::detail
