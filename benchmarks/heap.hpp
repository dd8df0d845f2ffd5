#pragma once

#include <cstddef>

namespace benchmarks {

/// The bytes that `new` has handed out and not got back, in the whole process, as the allocator counts them.
std::size_t heap_in_use();

}  // namespace benchmarks
