#include "progress.hpp"

#include <cstdio>
#include <iostream>

#if defined(_WIN32)
#    include <io.h>
#else
#    include <unistd.h>
#endif

namespace inspect {
namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;
constexpr std::uint64_t large = 64 * mebibyte, step = 8 * mebibyte;  // bytes

bool is_terminal(std::FILE* file) {
#if defined(_WIN32)
    return _isatty(_fileno(file)) != 0;
#else
    return isatty(fileno(file)) != 0;
#endif
}

}  // namespace

progress::progress(input& from, bool output_is_at_end) : from_(from) {
    bool const has_room = is_terminal(stderr) && (output_is_at_end || !is_terminal(stdout));
    bool const is_large = !from.size() || *from.size() >= large;
    if (has_room && is_large) {
        from_.watch = [this](input const& watched) { show(watched); };
    }
}

progress::~progress() {
    from_.watch = nullptr;
    if (shown_ != 0) {
        std::cerr << "\r\033[K" << std::flush;
    }
}

// Of the standard input nobody knows beforehand whether it is large.
void progress::show(input const& from) {
    std::uint64_t const done = from.position();
    if (done < (shown_ == 0 && !from.size() ? large : shown_ + step)) {
        return;
    }
    shown_ = done;
    std::cerr << "\r\033[K" << done / mebibyte << " MiB read";
    if (from.size()) {
        std::cerr << ", " << 100 * done / *from.size() << " %";
    }
    std::cerr << std::flush;
}

}  // namespace inspect
