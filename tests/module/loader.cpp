// loader TIMES LIBRARY...: loads the libraries in their order and unloads them, and that TIMES times; in the end it
// loads them once more and leaves them to the end of the process. It isn't linked with any of them. Says what went
// wrong.

#include "heap_of_process.hpp"
#include "library.hpp"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using loaded_libraries = std::vector<std::unique_ptr<plugin::library>>;

loaded_libraries load(std::vector<char const*> const& paths) {
    loaded_libraries loaded;
    for (char const* const path : paths) {
        loaded.push_back(std::make_unique<plugin::library>(path));
    }
    return loaded;
}

void unload(loaded_libraries loaded) {
    for (auto& library : loaded) {
        library.reset();
    }
}

constexpr int first_rounds = 100;  // in which the allocator's own caches fill

void expect_flat(std::size_t before, int rounds) {
    constexpr std::size_t least_block = 24;  // bytes; one in each round would be a leak
    std::size_t const after = heap_of_process();
    if (after > before + static_cast<std::size_t>(rounds) * (least_block + left_in_thread)) {
        throw std::runtime_error(std::to_string(rounds) + " rounds took " + std::to_string(after - before) + " bytes");
    }
}

void come_and_go(std::vector<char const*> const& paths, int times) {
    std::size_t in_use = 0;
    for (int i = 0; i < times; ++i) {
        unload(load(paths));
        for (char const* const path : paths) {
            if (plugin::library::is_loaded(path)) {
                throw std::runtime_error(path + std::string(" stays"));
            }
        }
        in_use = i == first_rounds ? heap_of_process() : in_use;
    }
    if (times > first_rounds) {
        expect_flat(in_use, times - first_rounds);
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::vector<char const*> const paths(argv + 2, argv + argc);
        come_and_go(paths, std::atoi(argv[1]));
        static auto const& kept = *new loaded_libraries(load(paths));
        return kept.empty() ? 1 : 0;
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
