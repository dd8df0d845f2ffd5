#include <velum/wire/errors.hpp>

namespace velum {

length_exceeds_stream::~length_exceeds_stream() = default;

char const* length_exceeds_stream::what() const noexcept {
    return "length exceeds the stream";
}

}  // namespace velum
