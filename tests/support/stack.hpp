#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace support {

/// Runs `work` on a thread with a stack of `size` bytes, to its end.
void on_stack(std::size_t size, std::function<void()> const& work);

/// The lowest place that the stack of the calling thread may reach.
std::uintptr_t end_of_own_stack();

/// Runs `work` on a stack that isn't the thread's own, as fibers do.
void on_foreign_stack(std::size_t size, std::function<void()> const& work);

/// The largest depth for which `works`, to one part in a hundred.
template <class Works>
int deepest(Works works) {
    int least = 1;
    while (works(2 * least)) {
        least *= 2;
    }
    for (int step = least; step > least / 128; step /= 2) {
        least += works(least + step) ? step : 0;
    }
    return least;
}

}  // namespace support
