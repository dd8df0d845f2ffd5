#include "heap_of_process.hpp"

#include <malloc.h>

std::size_t const left_in_thread = 0;

std::size_t heap_of_process() {
    auto const heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}
