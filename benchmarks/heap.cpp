#include "heap.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

std::atomic<std::size_t> in_use{0};

}  // namespace

std::size_t benchmarks::heap_in_use() {
    return in_use;
}

void* operator new(std::size_t size) {
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    in_use.fetch_add(malloc_usable_size(memory), std::memory_order_relaxed);
    return memory;
}

void operator delete(void* memory) noexcept {
    in_use.fetch_sub(malloc_usable_size(memory), std::memory_order_relaxed);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
