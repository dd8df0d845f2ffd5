#include "input.hpp"

#include "quoting.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>
#include <stdexcept>
#include <system_error>

#if defined(_WIN32)
#    include <fcntl.h>
#    include <io.h>
#endif

namespace inspect {
namespace {

constexpr std::size_t block = std::size_t{64} << 10U;  // bytes

[[noreturn]] void fail(std::string const& name) {
    throw std::runtime_error(name + ": " + std::generic_category().message(errno));
}

std::FILE* open_binary(std::string const& path) {
    if (path != "-") {
        return std::fopen(path.c_str(), "rb");
    }
#if defined(_WIN32)
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    return stdin;
}

void close(std::FILE* file) {
    if (file != nullptr && file != stdin) {
        std::fclose(file);
    }
}

}  // namespace

// Keeps what is in the buffer and adds what comes.
std::size_t input::refill() {
    buffer_.erase(0, next_);
    next_ = 0;
    std::size_t const kept = buffer_.size();
    buffer_.resize(kept + block);
    std::size_t const came = from_(buffer_.data() + kept, block);
    buffer_.resize(kept + came);
    if (watch) {
        watch(*this);
    }
    return came;
}

std::string_view input::peek(std::size_t size) {
    while (buffer_.size() - next_ < size && refill() != 0) {
    }
    return std::string_view(buffer_).substr(next_, size);
}

std::size_t input::read(char* data, std::size_t size) {
    std::size_t done = 0;
    while (done != size) {
        if (next_ == buffer_.size() && refill() == 0) {
            break;
        }
        std::size_t const step = std::min(size - done, buffer_.size() - next_);
        if (data != nullptr) {
            std::memcpy(data + done, buffer_.data() + next_, step);
        }
        next_ += step;
        position_ += step;
        done += step;
    }
    return done;
}

std::uint64_t input::skip(std::uint64_t size) {
    std::uint64_t done = 0;
    while (done != size) {
        std::size_t const step = static_cast<std::size_t>(std::min<std::uint64_t>(size - done, block));
        std::size_t const came = read(nullptr, step);
        done += came;
        if (came != step) {
            break;
        }
    }
    return done;
}

std::uint64_t input::skip_rest() {
    return size_ && *size_ >= position_ ? *size_ - position_ : skip(std::numeric_limits<std::uint64_t>::max());
}

input open_input(std::string const& path) {
    std::string const name = path == "-" ? "standard input" : path;
    std::shared_ptr<std::FILE> const file(open_binary(path), close);
    if (!file) {
        fail(printable(name));
    }
    std::optional<std::uint64_t> size;
    std::error_code unknown;
    if (path != "-" && std::filesystem::is_regular_file(path, unknown)) {
        size = std::filesystem::file_size(path);
    }
    return input(
        [file, name](char* data, std::size_t most) {
            std::size_t const came = std::fread(data, 1, most, file.get());
            if (came == 0 && std::ferror(file.get()) != 0) {
                fail(printable(name));
            }
            return came;
        },
        size);
}

}  // namespace inspect
