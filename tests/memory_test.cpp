#include "support/panel.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

// What happens when memory runs out, at each allocation in turn.
namespace {

thread_local int allocations_left = -1;  // below 0: as many as there is memory for

/// Calls `action` with memory for no allocation, for one and so on, until it succeeds.
template <class Action>
int fail_everywhere(Action const& action) {
    for (int failures = 0;; ++failures) {
        try {
            allocations_left = failures;
            action();
            allocations_left = -1;
            return failures;
        } catch (std::bad_alloc const&) {
            allocations_left = -1;
        }
    }
}

}  // namespace

void* operator new(std::size_t size) {
    void* const block = allocations_left == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    allocations_left -= allocations_left > 0 ? 1 : 0;
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

// Some of these texts come just when a table behind has to grow.
TEST(memory, that_runs_out_while_interning_leaves_all_as_it_was) {
    int failures = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string const text = "a text without memory, number " + std::to_string(i);
        char const* kept = nullptr;
        failures += fail_everywhere([&] { kept = velum::ustring(text).c_str(); });
        ASSERT_EQ(velum::ustring(text).c_str(), kept);
        ASSERT_EQ(kept, text);
    }
    EXPECT_GE(failures, 2 * 2000);
}

TEST(memory, that_runs_out_while_an_object_is_made_leaves_none) {
    velum::iptr<velum::i_unknown_t> object;
    int const made = support::panel_t::made;
    EXPECT_GE(fail_everywhere([&] { object = support::panel_t::make(); }), 2);
    EXPECT_TRUE(support::panel_t::made > made + 1 && support::panel_t::alive == 1);
}

}  // namespace
