#pragma once

#include <cstddef>

namespace support {

/// The bytes that `malloc` and `new` have handed out and not got back, in the whole process.
std::size_t heap_in_use();

/// How far the heap grows while this lives. One at a time.
class heap_watch {
public:
    heap_watch();

    /// The most bytes that were in use at once, on top of those at the beginning.
    std::size_t most() const;

    /// The bytes that are in use now on top of those at the beginning, or fewer.
    std::ptrdiff_t change() const;

private:
    std::size_t before_;
};

/// While it lives, allocations of the calling thread fail: the one with the number `first`, counted from 0, and where
/// `lasting` those after it. The sanitizers' builds let only `new` fail, the others `malloc` too.
class heap_failure {
public:
    heap_failure(int first, bool lasting);
    heap_failure(heap_failure const&) = delete;
    heap_failure& operator=(heap_failure const&) = delete;
    ~heap_failure();

    /// Whether an allocation has failed.
    bool happened() const;
};

}  // namespace support
