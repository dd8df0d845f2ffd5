#include <velum/velum.hpp>

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

// Two equal documents, compared: the whole of both has to be walked, and at each level in both directions.

namespace {

/// Maps within lists within maps, `depth` levels, each with a dozen values of its own.
boost::any make_document(std::int64_t depth) {
    boost::any inner = std::string("innermost");
    for (std::int64_t level = 0; level < depth; ++level) {
        velum::any_map map;
        for (int i = 0; i < 12; ++i) {
            map["value " + std::to_string(i)] = i % 2 == 0 ? boost::any(i) : boost::any(std::string("text"));
        }
        map["within"] = std::vector<boost::any>{std::move(inner)};
        inner = std::move(map);
    }
    return inner;
}

void compare_nested_documents(benchmark::State& state) {
    boost::any const a = make_document(state.range(0));
    boost::any const b = make_document(state.range(0));
    for ([[maybe_unused]] auto round : state) {
        benchmark::DoNotOptimize(velum::any_compare(a, b));
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0) * 13);
}

BENCHMARK(compare_nested_documents)->RangeMultiplier(2)->Range(1, 256)->Complexity();

}  // namespace
