#include "contest.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

// contest [--runs N ROW/NAME] [ARGUMENT...]: measures all rows of the table. The arguments are those of Google
// Benchmark; with --runs the work of one contender is only done, N times, for a tool that counts instructions.

namespace {

thread_local contest::heap_use used{};

void measure(benchmark::State& state, contest::contender const& of) {
    contest::work const run = of.prepare();
    run();
    contest::heap_use const before = contest::heap_so_far();
    run();
    contest::heap_use const after = contest::heap_so_far();
    for ([[maybe_unused]] auto round : state) {
        run();
    }
    state.counters["seconds"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * of.operations,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert | benchmark::Counter::kAvgThreads);
    auto const per_operation = [&](std::uint64_t from, std::uint64_t to) {
        return benchmark::Counter(static_cast<double>(to - from) / of.operations, benchmark::Counter::kAvgThreads);
    };
    state.counters["allocations"] = per_operation(before.allocations, after.allocations);
    state.counters["bytes"] = per_operation(before.bytes, after.bytes);
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

}  // namespace

namespace contest {

std::vector<contender>& contenders() {
    static std::vector<contender> all;
    return all;
}

heap_use heap_so_far() {
    return used;
}

}  // namespace contest

// Every allocation of the program, its libraries included, comes here: those of C go through these names as well.

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
    ++used.allocations;
    used.bytes += size;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    ++used.allocations;
    used.bytes += count * size;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    ++used.allocations;
    used.bytes += size;
    return __libc_realloc(block, size);
}

}  // extern "C"

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == "--runs") {
        return run_only(std::strtol(argv[2], nullptr, 10), argv[3]);
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
