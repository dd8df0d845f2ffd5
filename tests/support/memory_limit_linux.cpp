#include "support/memory_limit.hpp"

#include "support/sanitized.hpp"

#include <fstream>
#include <stdexcept>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace support {
namespace {

// Of what the process may have in all; gives what that was before.
rlim_t limit_all(rlim_t size) {
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    rlim_t const before = limit.rlim_cur;
    limit.rlim_cur = size;
    if (!sanitized && setrlimit(RLIMIT_AS, &limit) != 0) {
        throw std::runtime_error("no limit on memory can be set");
    }
    return before;
}

}  // namespace

memory_limit::memory_limit(std::size_t size) {
    malloc_trim(0);  // what the heap keeps would come on top
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    before_ = limit_all(pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + size);
}

memory_limit::~memory_limit() {
    limit_all(static_cast<rlim_t>(before_));
}

}  // namespace support
