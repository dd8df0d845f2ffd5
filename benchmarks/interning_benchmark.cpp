#include <velum/values/ustring.hpp>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

// The same class once more, from a build without locks.
namespace velum_unlocked {

class ustring {
public:
    ustring(char const* s);
    char const* c_str() const { return text_; }

private:
    char const* text_;
};

}  // namespace velum_unlocked

// What it costs that texts may be interned on several threads: the library's own interning beside one without locks.

namespace {

std::vector<std::string> texts(std::string const& prefix, std::int64_t count) {
    std::vector<std::string> made;
    for (std::int64_t i = 0; i < count; ++i) {
        made.push_back(prefix + std::to_string(i));
    }
    return made;
}

template <class Text>
void intern_known_texts(benchmark::State& state) {
    auto const known = texts("a known text ", 64);
    for ([[maybe_unused]] auto round : state) {
        for (std::string const& text : known) {
            benchmark::DoNotOptimize(Text(text.c_str()).c_str());
        }
    }
    state.SetItemsProcessed(state.iterations() * 64);
}

template <class Text>
void intern_new_texts(benchmark::State& state) {
    static int runs = 0;
    auto const fresh = texts("run " + std::to_string(runs++) + " of new texts ", state.max_iterations);
    auto next = fresh.begin();
    for ([[maybe_unused]] auto round : state) {
        benchmark::DoNotOptimize(Text((next++)->c_str()).c_str());
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(intern_known_texts<velum::ustring>)->Name("intern_known_texts/locked")->Threads(1)->Threads(2);
BENCHMARK(intern_known_texts<velum_unlocked::ustring>)->Name("intern_known_texts/unlocked");
BENCHMARK(intern_new_texts<velum::ustring>)->Name("intern_new_texts/locked")->Iterations(100000);
BENCHMARK(intern_new_texts<velum_unlocked::ustring>)->Name("intern_new_texts/unlocked")->Iterations(100000);

}  // namespace
