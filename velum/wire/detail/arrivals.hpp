#pragma once

#include <velum/core/detail/under_way.hpp>
#include <velum/wire/detail/fill.hpp>
#include <velum/wire/errors.hpp>

#include <cstdint>

namespace velum::detail {

/// Keeps the memory and the time that damaged counts can claim close to what has arrived.
///
/// Of the memory that vectors of maps and maps of objects promise, those within one another taken together, up to 16
/// MiB may be missing. What is promised beyond must arrive, and the first of it that doesn't ends the operation.
template <class Source>
class arrivals : public under_way<arrivals<Source>> {
public:
    explicit arrivals(Source& source) : source_(source), around_(promised_around()) {
        if (!covered()) {
            source_.watch();
        }
    }

    /// A count was read: elements that take `memory` bytes are to come.
    void promise(std::uint64_t memory) {
        bool const watched = !covered();
        open_ += memory;
        if (!watched && !covered()) {
            source_.watch();
        }
    }

    /// An element of `memory` bytes has come.
    void keep(std::uint64_t memory) { open_ -= memory; }

    /// An element has come that reads as one that is missing, and that nobody writes. Throws `length_exceeds_stream`
    /// unless the stream goes on behind it, or missing elements are to be expected.
    void doubt() {
        if (!covered() && !source_.goes_on()) {
            throw length_exceeds_stream();
        }
    }

    /// Whether all the elements that are to come may be missing, so that room for them may be taken ahead.
    bool covered() const { return around_ + open_ <= most_missing; }

    /// Reads a number into a zero. Throws `length_exceeds_stream` when it must arrive and doesn't.
    template <class Number>
    void read_number(Number& number) {
        if (covered()) {
            source_.read(&number, sizeof number);
        } else if (!source_.number_arrives(number)) {
            throw length_exceeds_stream();
        }
    }

private:
    // An object within the values reads its own map from the same source, by an operation of its own.
    std::uint64_t promised_around() const {
        auto const* const outer =
            arrivals::find([this](arrivals const& at) { return &at != this && at.source_.reads_from(source_); });
        return outer != nullptr ? outer->around_ + outer->open_ : 0;
    }

    Source& source_;
    std::uint64_t around_;    // bytes of memory promised to the operations around this one
    std::uint64_t open_ = 0;  // and to this one
};

}  // namespace velum::detail
