#pragma once

#include <cstddef>

namespace support {

inline constexpr std::size_t mebibyte = std::size_t{1} << 20U;

/// While it exists, the process gets no more than `size` bytes of memory in addition to what it has. The sanitizers,
/// which have their own ways with memory, go without, and so does Windows.
class memory_limit {
public:
    explicit memory_limit(std::size_t size);
    memory_limit(memory_limit const&) = delete;
    memory_limit& operator=(memory_limit const&) = delete;
    ~memory_limit();

private:
    [[maybe_unused]] unsigned long long before_ = 0;
};

}  // namespace support
