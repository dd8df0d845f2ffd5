#pragma once

#include <velum/wire/errors.hpp>

#include <cstdint>

namespace velum::detail {

/// Keeps the memory that damaged lengths and counts can claim within 16 MiB of what has arrived.
///
/// Every length promises memory that its bytes will fill. While all open promises together are small, a stream that
/// ends leaves zeros in their place, and memory for them may be taken ahead. While they are larger, the source is asked
/// again and again whether they are kept, and the first that isn't ends the operation.
template <class Source>
class arrivals {
public:
    static constexpr std::uint64_t most_missing = std::uint64_t{16} << 20U;  // bytes of memory
    static constexpr std::uint64_t most_unchecked = std::uint64_t{64} << 10U;

    explicit arrivals(Source& source) : source_(source) {}

    /// A length was read: `memory` bytes are to be filled.
    void promise(std::uint64_t memory) {
        if (excess() == 0 && open_ + memory > most_missing) {
            source_.watch();
            unchecked_ = due_ = 0;
        }
        open_ += memory;
    }

    /// How much of what is promised must arrive before the rest may be missing.
    std::uint64_t excess() const { return open_ > most_missing ? open_ - most_missing : 0; }

    /// `memory` bytes of what was promised have been read, from at least `size` bytes of the stream.
    /// Throws `length_exceeds_stream`.
    void keep(std::uint64_t memory, std::uint64_t size) {
        bool const watched = excess() != 0;
        open_ -= memory;
        if (!watched) {
            return;
        }
        unchecked_ += memory;
        due_ += size;
        if (excess() == 0 || unchecked_ >= most_unchecked) {
            if (!source_.delivered(due_)) {
                throw length_exceeds_stream();
            }
            unchecked_ = due_ = 0;
        }
    }

private:
    Source& source_;
    std::uint64_t open_ = 0;       // bytes of memory promised and not yet filled
    std::uint64_t unchecked_ = 0;  // bytes of memory filled since the source was last asked
    std::uint64_t due_ = 0;        // bytes of the stream that these took at least
};

}  // namespace velum::detail
