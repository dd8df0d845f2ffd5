#pragma once

#include <velum/core/api.hpp>

#include <new>

namespace velum {

/// A stored length or count promises far more than the stream holds.
class VELUM_API length_exceeds_stream : public std::bad_alloc {
public:
    length_exceeds_stream() = default;
    length_exceeds_stream(length_exceeds_stream const&) = default;
    length_exceeds_stream& operator=(length_exceeds_stream const&) = default;
    ~length_exceeds_stream() override;

    /// "length exceeds the stream"
    char const* what() const noexcept override;
};

}  // namespace velum
