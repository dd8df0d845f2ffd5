#pragma once

#include <velum/wire/errors.hpp>

#include <algorithm>
#include <cstdint>

namespace velum::detail {

/// The memory that counts of elements have promised to all operations of the thread that are under way: an object
/// within the values reads its own map by an operation of its own.
inline thread_local constinit std::uint64_t open_on_thread = 0;

/// Keeps the memory that damaged lengths and counts can claim close to what has arrived.
///
/// Up to 16 MiB of a text or buffer may be missing, and of the memory that vectors of maps and maps of objects promise,
/// those within one another taken together: where the stream ends, zeros and empty maps stand in their place. What is
/// promised beyond must arrive, and the first of it that doesn't ends the operation.
template <class Source>
class arrivals {
public:
    static constexpr std::uint64_t most_missing = std::uint64_t{16} << 20U;  // bytes of memory

    explicit arrivals(Source& source) : source_(source) {
        if (!covered()) {
            source_.watch();
        }
    }
    arrivals(arrivals const&) = delete;
    arrivals& operator=(arrivals const&) = delete;
    ~arrivals() { open_on_thread -= open_; }

    /// A count was read: elements that take `memory` bytes are to come.
    void promise(std::uint64_t memory) {
        bool const watched = !covered();
        open_ += memory;
        open_on_thread += memory;
        if (!watched && !covered()) {
            source_.watch();
        }
    }

    /// An element of `memory` bytes has come.
    void keep(std::uint64_t memory) {
        open_ -= memory;
        open_on_thread -= memory;
    }

    /// An element has come that reads as one that is missing, and that nobody writes. Throws `length_exceeds_stream`
    /// unless the stream goes on behind it, or missing elements are to be expected.
    void doubt() {
        if (!covered() && !source_.goes_on()) {
            throw length_exceeds_stream();
        }
    }

    /// Whether all the elements that are to come may be missing, so that room for them may be taken ahead.
    bool covered() const { return open_on_thread <= most_missing; }

    /// Reads a number into a zero. Throws `length_exceeds_stream`, as `fill` does.
    template <class Number>
    void read_number(Number& number) {
        if (covered()) {
            source_.read(&number, sizeof number);
        } else if (!source_.number_arrives(number)) {
            throw length_exceeds_stream();
        }
    }

    /// Fills an empty text or buffer with `length` bytes. What may be missing altogether is read by one call. The rest
    /// of a longer one is read before it in steps, each as long as what has arrived.
    template <class Buffer>
    void fill(Buffer& buffer, std::uint64_t length) {
        constexpr std::uint64_t first_step = std::uint64_t{64} << 10U;
        if (length > most_missing) {
            source_.watch();
        }
        while (length - buffer.size() > most_missing) {
            std::uint64_t const arrived = buffer.size();
            std::uint64_t const step = std::min(std::max(arrived, first_step), length - most_missing - arrived);
            std::uint64_t const judged = std::max(step, source_.least_step());
            if (!source_.arrives(extend(buffer, judged), judged)) {
                throw length_exceeds_stream();
            }
        }
        if (std::uint64_t const rest = length - buffer.size(); rest != 0) {
            source_.read(extend(buffer, rest), rest);
        }
    }

private:
    // The room is exact: twice what is needed would be more than what has arrived accounts for.
    template <class Buffer>
    static void* extend(Buffer& buffer, std::uint64_t step) {
        auto const before = buffer.size();
        if (before + step > buffer.capacity()) {
            Buffer larger;
            larger.reserve(before + step);
            larger.assign(buffer.begin(), buffer.end());
            buffer.swap(larger);
        }
        buffer.resize(before + step);
        return buffer.data() + before;
    }

    Source& source_;
    std::uint64_t open_ = 0;  // bytes of memory promised to this operation
};

}  // namespace velum::detail
