#include "support/heap.hpp"

#include "support/sanitized.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

std::atomic<std::size_t> in_use{0}, most_in_use{0};

constexpr int never = -1;
thread_local constinit int until_failure = never;  // allocations
thread_local constinit bool is_lasting = false, has_failed = false;

void count(std::size_t size) {
    std::size_t const now = in_use.fetch_add(size, std::memory_order_relaxed) + size;
    std::size_t most = most_in_use.load(std::memory_order_relaxed);
    while (now > most && !most_in_use.compare_exchange_weak(most, now, std::memory_order_relaxed)) {
    }
}

void uncount(std::size_t size) {
    in_use.fetch_sub(size, std::memory_order_relaxed);
}

bool fails() {
    if (until_failure != 0) {
        until_failure -= until_failure > 0 ? 1 : 0;
        return false;
    }
    until_failure = is_lasting ? 0 : never;
    return has_failed = true;
}

}  // namespace

namespace support {

std::size_t heap_in_use() {
    return in_use;
}

heap_watch::heap_watch() : before_(in_use) {
    most_in_use = before_;
}

std::size_t heap_watch::most() const {
    return most_in_use - before_;
}

std::ptrdiff_t heap_watch::change() const {
    return static_cast<std::ptrdiff_t>(in_use) - static_cast<std::ptrdiff_t>(before_);
}

heap_failure::heap_failure(int first, bool lasting) {
    is_lasting = lasting;
    has_failed = false;
    until_failure = first;
}

heap_failure::~heap_failure() {
    until_failure = never;
}

bool heap_failure::happened() const {
    return has_failed;
}

}  // namespace support

#if VELUM_SANITIZED

extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*on_malloc)(void const volatile*, std::size_t),
                                              void (*on_free)(void const volatile*));
std::size_t __sanitizer_get_allocated_size(void const volatile*);
}

namespace {

[[maybe_unused]] int const hooks = __sanitizer_install_malloc_and_free_hooks(
    [](void const volatile*, std::size_t size) { count(size); },
    [](void const volatile* block) { uncount(__sanitizer_get_allocated_size(block)); });

}  // namespace

void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void* operator new(std::size_t size) {
    void* const block = operator new(size, std::nothrow);
    return block != nullptr ? block : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

#else

// In the place of the C library's own functions, whose other names they use.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace {

void* counted(void* block) {
    count(block != nullptr ? malloc_usable_size(block) : 0);
    return block;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
    return fails() ? nullptr : counted(__libc_malloc(size));
}

void* calloc(std::size_t n, std::size_t size) noexcept {
    return fails() ? nullptr : counted(__libc_calloc(n, size));
}

void* realloc(void* block, std::size_t size) noexcept {
    if (fails()) {
        return nullptr;
    }
    std::size_t const before = block != nullptr ? malloc_usable_size(block) : 0;
    void* const moved = __libc_realloc(block, size);
    if (moved != nullptr || size == 0) {
        uncount(before);
    }
    return counted(moved);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return fails() ? nullptr : counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    constexpr int no_memory = 12;
    void* const made = memalign(alignment, size);
    *block = made != nullptr ? made : *block;
    return made != nullptr ? 0 : no_memory;
}

void free(void* block) noexcept {
    uncount(block != nullptr ? malloc_usable_size(block) : 0);
    __libc_free(block);
}
}

#endif
