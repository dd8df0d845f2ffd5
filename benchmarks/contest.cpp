#include "contest.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include <malloc.h>

// contest [ARGUMENT...]: measures all rows of the table. The arguments are those of Google Benchmark.
// contest --runs N ROW/NAME: does the work of one contender N times, for a tool that counts instructions.
// contest --memory: prints what data take in memory, a line each: what, whose, bytes an item.

namespace {

/// What the calling thread asked of the heap.
struct heap_use {
    std::uint64_t allocations;
    std::uint64_t bytes;  ///< in these
    std::int64_t live;    ///< bytes not given back
    std::int64_t peak;    ///< the most that these were
};

thread_local heap_use used{};
thread_local bool is_counting = false;  // else the heap is as quick as it is

/// What `work` asks of the heap.
heap_use heap_used(std::function<void()> const& work) {
    used = {};
    is_counting = true;
    work();
    is_counting = false;
    return used;
}

void measure(benchmark::State& state, contest::contender const& of) {
    contest::work const run = of.prepare();
    run();
    heap_use const heap = heap_used(run);
    for ([[maybe_unused]] auto round : state) {
        run();
    }
    state.counters["seconds"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * of.operations,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert | benchmark::Counter::kAvgThreads);
    auto const per_operation = [&of](auto number) {
        return benchmark::Counter(static_cast<double>(number) / of.operations, benchmark::Counter::kAvgThreads);
    };
    state.counters["allocations"] = per_operation(heap.allocations);
    state.counters["bytes"] = per_operation(heap.bytes);
    state.counters["peak"] = per_operation(heap.peak);
}

int run_only(long runs, std::string const& name) {
    for (contest::contender const& each : contest::contenders()) {
        if (each.row + "/" + each.name == name) {
            contest::work const run = each.prepare();
            while (runs-- > 0) {
                run();
            }
            return 0;
        }
    }
    std::cerr << "no such work: " << name << '\n';
    return 2;
}

int print_memory() {
    for (contest::holder const& each : contest::holders()) {
        each.make();  // what it makes once for all isn't counted
        std::shared_ptr<void const> held;
        std::int64_t const bytes = heap_used([&] { held = each.make(); }).live;
        std::cout << each.what << '\t' << each.name << '\t' << static_cast<double>(bytes) / each.items << '\n';
    }
    return 0;
}

void count(void* block, std::size_t size) {
    if (!is_counting) {
        return;
    }
    ++used.allocations;
    used.bytes += size;
    used.live += static_cast<std::int64_t>(malloc_usable_size(block));
    used.peak = std::max(used.peak, used.live);
}

void forget(void* block) {
    if (is_counting) {
        used.live -= static_cast<std::int64_t>(malloc_usable_size(block));
    }
}

}  // namespace

namespace contest {

std::vector<holder>& holders() {
    static std::vector<holder> all;
    return all;
}

std::vector<contender>& contenders() {
    static std::vector<contender> all;
    return all;
}

}  // namespace contest

// Every allocation of the program, those of its libraries included, comes here.

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
    void* const block = __libc_malloc(size);
    count(block, size);
    return block;
}

void* calloc(std::size_t number, std::size_t size) {
    void* const block = __libc_calloc(number, size);
    count(block, number * size);
    return block;
}

void* realloc(void* before, std::size_t size) {
    forget(before);
    void* const block = __libc_realloc(before, size);
    count(block, size);
    return block;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    void* const block = __libc_memalign(alignment, size);
    count(block, size);
    return block;
}

void* memalign(std::size_t alignment, std::size_t size) {
    return aligned_alloc(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = aligned_alloc(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void* block) {
    forget(block);
    __libc_free(block);
}

}  // extern "C"

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == "--runs") {
        return run_only(std::strtol(argv[2], nullptr, 10), argv[3]);
    }
    if (argc == 2 && std::string_view(argv[1]) == "--memory") {
        return print_memory();
    }
    for (contest::contender const& each : contest::contenders()) {
        benchmark::RegisterBenchmark((each.row + "/" + each.name).c_str(),
                                     [&each](benchmark::State& state) { measure(state, each); })
            ->Threads(each.threads)
            ->UseRealTime();
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
}
