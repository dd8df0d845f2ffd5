#include "support/heap_hooks.hpp"
#include "support/sanitized.hpp"

#include <cstdlib>
#include <new>

#include <malloc.h>

#if VELUM_SANITIZED

extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*on_malloc)(void const volatile*, std::size_t),
                                              void (*on_free)(void const volatile*));
std::size_t __sanitizer_get_allocated_size(void const volatile*);
}

namespace {

[[maybe_unused]] int const hooks = __sanitizer_install_malloc_and_free_hooks(
    [](void const volatile*, std::size_t size) { support::count(size); },
    [](void const volatile* block) { support::uncount(__sanitizer_get_allocated_size(block)); });

}  // namespace

void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return support::fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
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

using support::count;
using support::fails;
using support::uncount;

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
