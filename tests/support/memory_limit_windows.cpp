#include "support/memory_limit.hpp"

namespace support {

memory_limit::memory_limit(std::size_t) {}

memory_limit::~memory_limit() = default;

}  // namespace support
