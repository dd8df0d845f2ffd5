#include "progress.hpp"

#include <cstdio>
#include <iostream>

#if defined(_WIN32)
#    include <io.h>
#else
#    include <sys/stat.h>
#    include <unistd.h>
#endif

namespace inspect {
namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;
constexpr std::uint64_t large = 64 * mebibyte, step = 8 * mebibyte;  // bytes

#if defined(_WIN32)
bool is_terminal(std::FILE* file) {
    return _isatty(_fileno(file)) != 0;
}
bool is_file(std::FILE* file) {
    return !is_terminal(file);
}
#else
bool is_terminal(std::FILE* file) {
    return isatty(fileno(file)) != 0;
}
// Behind a pipe may be a pager, which has the terminal.
bool is_file(std::FILE* file) {
    struct stat found {};
    return fstat(fileno(file), &found) == 0 && !S_ISFIFO(found.st_mode) && !is_terminal(file);
}
#endif

}  // namespace

progress::progress(input const& from, bool output_is_at_end)
    : is_shown_(is_terminal(stderr) && (output_is_at_end || is_file(stdout)) &&
                (!from.size() || *from.size() >= large)) {}

progress::~progress() {
    if (shown_ != 0) {
        std::cerr << "\r\033[K" << std::flush;
    }
}

// Of the standard input nobody knows beforehand whether it is large.
void progress::show(input const& from) {
    std::uint64_t const done = from.position();
    if (!is_shown_ || done < (shown_ == 0 && !from.size() ? large : shown_ + step)) {
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
