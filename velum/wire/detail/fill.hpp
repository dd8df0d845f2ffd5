#pragma once

#include <velum/wire/errors.hpp>

#include <algorithm>
#include <cstdint>

namespace velum::detail {

/// How much of a text or buffer, or of what counted elements would take, may be missing from a stream: zeros and empty
/// elements stand in its place.
inline constexpr std::uint64_t most_missing = std::uint64_t{16} << 20U;  // bytes of memory

/// Gives a buffer room for `size` bytes and no more: twice what is needed would be more than what has arrived accounts
/// for.
template <class Buffer>
[[gnu::noinline]] void move_to_room(Buffer& buffer, std::uint64_t size) {
    Buffer larger;
    larger.reserve(size);
    larger.assign(buffer.begin(), buffer.end());
    buffer.swap(larger);
}

/// Makes a buffer longer by `step` bytes, and gives their place.
template <class Buffer>
void* extend(Buffer& buffer, std::uint64_t step) {
    auto const before = buffer.size();
    if (before != 0 && before + step > buffer.capacity()) {
        move_to_room(buffer, before + step);
    }
    buffer.resize(before + step);
    return buffer.data() + before;
}

/// Fills an empty text or buffer with `length` bytes. What may be missing altogether is read by one call, and so is
/// what the stream has at hand. The rest of a longer one is read before it in steps, each as long as what has arrived,
/// and the first that doesn't arrive ends in `length_exceeds_stream`.
template <class Source, class Buffer>
void fill(Source& source, Buffer& buffer, std::uint64_t length) {
    constexpr std::uint64_t first_step = std::uint64_t{64} << 10U;
    if (length > most_missing && !source.has(length)) {
        source.watch();
        while (length - buffer.size() > most_missing) {
            std::uint64_t const arrived = buffer.size();
            std::uint64_t const step = std::min(std::max(arrived, first_step), length - most_missing - arrived);
            std::uint64_t const judged = std::max(step, source.least_step());
            if (!source.arrives(extend(buffer, judged), judged)) {
                throw length_exceeds_stream();
            }
        }
    }
    if (std::uint64_t const rest = length - buffer.size(); rest != 0) {
        source.read(extend(buffer, rest), rest);
    }
}

}  // namespace velum::detail
