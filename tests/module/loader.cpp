// loader TIMES LIBRARY...: loads the libraries in their order and unloads them, and that TIMES times; in the end it
// loads them once more and leaves them to the end of the process. It isn't linked with any of them. Says what went
// wrong.

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <dlfcn.h>
#include <malloc.h>

namespace {

void* load(char const* library) {
    void* const loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    if (loaded == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    return loaded;
}

bool is_loaded(char const* library) {
    void* const found = dlopen(library, RTLD_NOW | RTLD_NOLOAD);
    return found != nullptr && dlclose(found) == 0;
}

std::size_t heap_in_use() {
    auto const heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

constexpr int first_rounds = 100;  // in which the allocator's own caches fill

bool is_flat(std::size_t before, int rounds) {
    constexpr std::size_t least_block = 24;  // bytes; one in each round would be a leak
    std::size_t const after = heap_in_use();
    bool const flat = after <= before + static_cast<std::size_t>(rounds) * least_block;
    if (!flat) {
        std::fprintf(stderr, "%d rounds took %zu bytes\n", rounds, after - before);
    }
    return flat;
}

}  // namespace

int main(int argc, char** argv) {
    int const times = std::atoi(argv[1]);
    std::vector<char const*> const libraries(argv + 2, argv + argc);
    std::size_t in_use = 0;
    for (int i = 0; i < times; ++i) {
        std::vector<void*> loaded;
        for (char const* const library : libraries) {
            loaded.push_back(load(library));
        }
        for (void* const library : loaded) {
            dlclose(library);
        }
        for (char const* const library : libraries) {
            if (is_loaded(library)) {
                std::fprintf(stderr, "%s stays\n", library);
                return 1;
            }
        }
        in_use = i == first_rounds ? heap_in_use() : in_use;
    }
    if (times > first_rounds && !is_flat(in_use, times - first_rounds)) {
        return 1;
    }
    for (char const* const library : libraries) {
        load(library);
    }
}
