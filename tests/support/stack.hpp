#pragma once

#include <gtest/gtest.h>

#include <pthread.h>

namespace support {

/// Runs `work` on a thread with a stack of `size` bytes, to its end.
template <class Work>
void on_stack(std::size_t size, Work work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
    auto const run = [](void* argument) -> void* { return (*static_cast<Work*>(argument))(), nullptr; };
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
}

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
