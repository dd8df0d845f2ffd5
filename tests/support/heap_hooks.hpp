#pragma once

#include <cstddef>

// What stands in the place of a system's allocation tells it here.
namespace support {

void count(std::size_t size);
void uncount(std::size_t size);

/// Whether this allocation is one that a `heap_failure` lets fail.
bool fails();

}  // namespace support
