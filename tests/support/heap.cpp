#include "support/heap.hpp"

#include "support/heap_hooks.hpp"

#include <atomic>

namespace {

std::atomic<std::size_t> in_use{0}, most_in_use{0};

constexpr int never = -1;
thread_local constinit int until_failure = never;  // allocations
thread_local constinit bool is_lasting = false, has_failed = false;

}  // namespace

namespace support {

void count(std::size_t size) {
    std::size_t const now = in_use.fetch_add(size, std::memory_order_relaxed) + size;
    std::size_t most = most_in_use.load(std::memory_order_relaxed);
    while (now > most && !most_in_use.compare_exchange_weak(most, now, std::memory_order_relaxed)) {
    }
}

void uncount(std::size_t size) {
    in_use.fetch_sub(size, std::memory_order_relaxed);
}

bool fails() {
    if (until_failure != 0) {
        until_failure -= until_failure > 0 ? 1 : 0;
        return false;
    }
    until_failure = is_lasting ? 0 : never;
    return has_failed = true;
}

std::size_t heap_in_use() {
    return in_use;
}

heap_watch::heap_watch() : before_(in_use) {
    most_in_use = before_;
}

std::size_t heap_watch::most() const {
    return most_in_use - before_;
}

std::ptrdiff_t heap_watch::change() const {
    return static_cast<std::ptrdiff_t>(in_use) - static_cast<std::ptrdiff_t>(before_);
}

heap_failure::heap_failure(int first, bool lasting) {
    is_lasting = lasting;
    has_failed = false;
    until_failure = first;
}

heap_failure::~heap_failure() {
    until_failure = never;
}

bool heap_failure::happened() const {
    return has_failed;
}

}  // namespace support
