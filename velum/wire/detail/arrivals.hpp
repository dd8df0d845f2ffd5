#pragma once

#include <velum/wire/errors.hpp>

#include <algorithm>
#include <cstdint>

namespace velum::detail {

/// Keeps the memory that damaged lengths and counts can claim close to what has arrived.
///
/// Every length promises memory that its bytes will fill. Up to 16 MiB of a promise may be missing: where the stream
/// ends, zeros stand in its place, and memory for it may be taken ahead. What is promised beyond must arrive, and the
/// first of it that doesn't ends the operation. Promises within promises have half a MiB more in common and no more.
template <class Source>
class arrivals {
public:
    explicit arrivals(Source& source) : source_(source) {}

    /// A length was read: `memory` bytes are to be filled while this exists, each reported by `keep`.
    class promise {
    public:
        promise(arrivals& all, std::uint64_t memory) : all_(all), outer_limit_(all.limit_) {
            bool const watched = all.excess() != 0;
            all.limit_ = most_missing + std::min(all.open_, most_shared);
            all.open_ += memory;
            if (!watched && all.excess() != 0) {
                all.source_.watch();
            }
        }
        promise(promise const&) = delete;
        promise& operator=(promise const&) = delete;
        ~promise() { all_.limit_ = outer_limit_; }

    private:
        arrivals& all_;
        std::uint64_t outer_limit_;
    };

    /// Memory taken ahead for elements that fail where the stream ends: little enough, or none.
    class advance {
    public:
        advance(arrivals& all, std::uint64_t memory)
            : all_(all), memory_(all.open_ + memory <= most_shared ? memory : 0) {
            all_.open_ += memory_;
        }
        advance(advance const&) = delete;
        advance& operator=(advance const&) = delete;
        ~advance() { all_.open_ -= memory_; }

        bool granted() const { return memory_ != 0; }

    private:
        arrivals& all_;
        std::uint64_t memory_;
    };

    /// `memory` bytes of what was promised have been filled.
    void keep(std::uint64_t memory) { open_ -= memory; }

    /// How much of what is promised must arrive before the rest may be missing.
    std::uint64_t excess() const { return open_ > limit_ ? open_ - limit_ : 0; }

    /// These read into zeros, and throw `length_exceeds_stream` for bytes that must arrive and don't.
    void read(void* data, std::uint64_t size) {
        if (excess() == 0) {
            source_.read(data, size);
        } else if (!source_.arrives(data, size)) {
            throw length_exceeds_stream();
        }
    }

    template <class Number>
    void read_number(Number& number) {
        if (excess() == 0) {
            source_.read(&number, sizeof number);
        } else if (!source_.number_arrives(number)) {
            throw length_exceeds_stream();
        }
    }

private:
    static constexpr std::uint64_t most_missing = std::uint64_t{16} << 20U;  // bytes of memory
    static constexpr std::uint64_t most_shared = std::uint64_t{512} << 10U;

    Source& source_;
    std::uint64_t open_ = 0;  // bytes of memory promised and not yet filled
    std::uint64_t limit_ = most_missing;
};

}  // namespace velum::detail
