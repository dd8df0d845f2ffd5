#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace inspect {

/// Bytes from the first to the last.
class input {
public:
    /// Where they come from: fills a buffer, and tells how many came, 0 at the end only.
    using source = std::function<std::size_t(char*, std::size_t)>;

    /// `size` in bytes, where it is known beforehand.
    explicit input(source from, std::optional<std::uint64_t> size = std::nullopt)
        : from_(std::move(from)), size_(size) {}

    /// The next bytes, as many as there are up to `size`, which is at most 64 KiB. They stay to be read.
    std::string_view peek(std::size_t size);

    /// How many bytes came; fewer than `size` at the end only.
    std::size_t read(char* data, std::size_t size);
    std::uint64_t skip(std::uint64_t size);

    /// How many bytes there are behind; none is left. Reads them only where the size isn't known.
    std::uint64_t skip_rest();

    std::uint64_t position() const { return position_; }
    /// In bytes; empty where nobody knows.
    std::optional<std::uint64_t> size() const { return size_; }

    /// To be called now and then while bytes are read.
    std::function<void(input const&)> watch;

private:
    std::size_t refill();

    source from_;
    std::optional<std::uint64_t> size_;
    std::string buffer_;
    std::size_t next_ = 0;  // in the buffer
    std::uint64_t position_ = 0;
};

/// A file, or the standard input for "-". Throws `std::runtime_error`, also later when reading fails.
input open_input(std::string const& path);

}  // namespace inspect
