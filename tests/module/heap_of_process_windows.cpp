#include "heap_of_process.hpp"

#include <malloc.h>

// MinGW's compilers emulate such variables by blocks that stay for as long as the thread.
std::size_t const left_in_thread = 96;

std::size_t heap_of_process() {
    std::size_t size = 0;
    _HEAPINFO block{};
    while (_heapwalk(&block) == _HEAPOK) {
        size += block._useflag == _USEDENTRY ? block._size : 0;
    }
    return size;
}
