#include "support/heap_hooks.hpp"

#include <array>
#include <cstdint>
#include <cstring>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <malloc.h>

// There each library has its own way to the C library, by its table of imports. In those of the program, of velum and
// of the C++ standard library, on which all else builds, the functions that allocate are replaced.
namespace {

using namespace support;

template <class Function>
Function* original(char const* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), name)));
}
auto* const real_malloc = original<void*(std::size_t)>("malloc");
auto* const real_calloc = original<void*(std::size_t, std::size_t)>("calloc");
auto* const real_realloc = original<void*(void*, std::size_t)>("realloc");
auto* const real_free = original<void(void*)>("free");

std::size_t size_of(void* block) {
    return block != nullptr ? _msize(block) : 0;
}

void* counted(void* block) {
    count(size_of(block));
    return block;
}

void* counting_malloc(std::size_t size) {
    return fails() ? nullptr : counted(real_malloc(size));
}

void* counting_calloc(std::size_t n, std::size_t size) {
    return fails() ? nullptr : counted(real_calloc(n, size));
}

void* counting_realloc(void* block, std::size_t size) {
    if (fails()) {
        return nullptr;
    }
    std::size_t const before = size_of(block);
    void* const moved = real_realloc(block, size);
    if (moved != nullptr || size == 0) {
        uncount(before);
    }
    return counted(moved);
}

void counting_free(void* block) {
    uncount(size_of(block));
    real_free(block);
}

// As the C library does it: where the whole block begins is told before the aligned part.
void* counting_aligned_malloc(std::size_t size, std::size_t alignment) {
    auto* const block = static_cast<char*>(counting_malloc(size + alignment + sizeof(void*)));
    if (block == nullptr) {
        return nullptr;
    }
    auto const first = reinterpret_cast<std::uintptr_t>(block) + sizeof(void*);
    char* const part = block + sizeof(void*) + (alignment - first % alignment) % alignment;
    std::memcpy(part - sizeof(void*), &block, sizeof block);
    return part;
}

void counting_aligned_free(void* part) {
    void* block = nullptr;
    part != nullptr ? void(std::memcpy(&block, static_cast<char*>(part) - sizeof(void*), sizeof block)) : void();
    counting_free(block);
}

struct replacement {
    char const* name;
    void* by;
};
std::array const replacements = {
    replacement{"malloc", reinterpret_cast<void*>(&counting_malloc)},
    replacement{"calloc", reinterpret_cast<void*>(&counting_calloc)},
    replacement{"realloc", reinterpret_cast<void*>(&counting_realloc)},
    replacement{"free", reinterpret_cast<void*>(&counting_free)},
    replacement{"_aligned_malloc", reinterpret_cast<void*>(&counting_aligned_malloc)},
    replacement{"_aligned_free", reinterpret_cast<void*>(&counting_aligned_free)},
};

void put(ULONGLONG& place, void* function) {
    DWORD protection = 0;
    VirtualProtect(&place, sizeof place, PAGE_READWRITE, &protection);
    place = reinterpret_cast<ULONGLONG>(function);
    VirtualProtect(&place, sizeof place, protection, &protection);
}

void replace_in(char const* library) {
    auto* const begin = reinterpret_cast<char*>(GetModuleHandleA(library));
    if (begin == nullptr) {
        return;
    }
    auto const& header = *reinterpret_cast<IMAGE_NT_HEADERS*>(
        begin + reinterpret_cast<IMAGE_DOS_HEADER*>(static_cast<void*>(begin))->e_lfanew);
    auto const table = header.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* from = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(begin + table); from->FirstThunk != 0; ++from) {
        for (auto* at = reinterpret_cast<IMAGE_THUNK_DATA*>(begin + from->FirstThunk); at->u1.Function != 0; ++at) {
            for (auto const& [name, by] : replacements) {
                if (at->u1.Function == reinterpret_cast<ULONGLONG>(original<void()>(name))) {
                    put(at->u1.Function, by);
                }
            }
        }
    }
}

[[maybe_unused]] bool const are_replaced = [] {
    count(std::size_t{1} << 30U);  // what is there already may go
    for (char const* const library : {static_cast<char const*>(nullptr), "libvelum-1.dll", "libstdc++-6.dll"}) {
        replace_in(library);
    }
    return true;
}();

}  // namespace
