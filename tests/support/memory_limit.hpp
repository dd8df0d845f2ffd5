#pragma once

#include "support/sanitized.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace support {

inline constexpr std::size_t mebibyte = std::size_t{1} << 20U;

/// While it exists, the process gets no more than `size` bytes of memory in addition to what it has. The sanitizers,
/// which have their own ways with memory, go without.
class memory_limit {
public:
    explicit memory_limit(std::size_t size) {
        getrlimit(RLIMIT_AS, &before_);
        malloc_trim(0);  // what the heap keeps would come on top
        rlimit limited = before_;
        std::ifstream("/proc/self/statm") >> limited.rlim_cur;
        limited.rlim_cur = limited.rlim_cur * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + size;
        if (!sanitized) {
            EXPECT_EQ(setrlimit(RLIMIT_AS, &limited), 0);
        }
    }
    memory_limit(memory_limit const&) = delete;
    memory_limit& operator=(memory_limit const&) = delete;
    ~memory_limit() { setrlimit(RLIMIT_AS, &before_); }

private:
    rlimit before_{};
};

}  // namespace support
