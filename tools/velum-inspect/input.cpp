#include "input.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
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

}  // namespace

void input::closer::operator()(std::FILE* file) const {
    if (file != stdin) {
        std::fclose(file);
    }
}

input::input(std::string const& path) : name_(path == "-" ? "standard input" : path), file_(open_binary(path)) {
    if (!file_) {
        fail(name_);
    }
    std::error_code unknown;
    if (path != "-" && std::filesystem::is_regular_file(path, unknown)) {
        auto const size = std::filesystem::file_size(path, unknown);
        size_ = unknown ? std::nullopt : std::optional<std::uint64_t>(size);
    }
}

// Keeps what is in the buffer and adds what comes.
std::size_t input::refill() {
    buffer_.erase(0, next_);
    next_ = 0;
    std::size_t const kept = buffer_.size();
    buffer_.resize(kept + block);
    std::size_t const came = std::fread(buffer_.data() + kept, 1, block, file_.get());
    buffer_.resize(kept + came);
    if (came == 0 && std::ferror(file_.get()) != 0) {
        fail(name_);
    }
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

}  // namespace inspect
