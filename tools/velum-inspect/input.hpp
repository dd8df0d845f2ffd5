#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// The bytes of a file or of the standard input, from the first to the last.
class input {
public:
    /// Opens a file, or the standard input for "-". Throws `std::runtime_error`.
    explicit input(std::string const& path);

    /// The next bytes, as many as there are up to `size`, which is at most 64 KiB. They stay to be read.
    std::string_view peek(std::size_t size);

    /// How many bytes came; fewer than `size` at the end only. Throws `std::runtime_error` where reading fails.
    std::size_t read(char* data, std::size_t size);
    std::uint64_t skip(std::uint64_t size);

    std::uint64_t position() const { return position_; }
    /// In bytes; empty where nobody knows.
    std::optional<std::uint64_t> size() const { return size_; }

    /// To be called now and then while bytes are read.
    std::function<void(input const&)> watch;

private:
    struct closer {
        void operator()(std::FILE* file) const;
    };

    std::size_t refill();

    std::string name_;
    std::unique_ptr<std::FILE, closer> file_;
    std::optional<std::uint64_t> size_;
    std::string buffer_;
    std::size_t next_ = 0;  // in the buffer
    std::uint64_t position_ = 0;
};

}  // namespace inspect
