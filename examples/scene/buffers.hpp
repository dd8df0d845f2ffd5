#pragma once

#include <velum/values/catalogue.hpp>

#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace scene {

// A row of plain values as a byte vector and back, as they lie in memory: velum runs on little-endian machines only.

template <class T>
velum::byte_vector to_bytes(std::vector<T> const& values) {
    static_assert(std::is_trivially_copyable_v<T>);
    velum::byte_vector bytes(values.size() * sizeof(T));
    if (!bytes.empty()) {
        std::memcpy(bytes.data(), values.data(), bytes.size());
    }
    return bytes;
}

template <class T>
std::vector<T> from_bytes(velum::byte_vector const& bytes) {
    static_assert(std::is_trivially_copyable_v<T>);
    if (bytes.size() % sizeof(T) != 0) {
        throw std::runtime_error("a buffer ends within an element");
    }
    std::vector<T> values(bytes.size() / sizeof(T));
    if (!bytes.empty()) {
        std::memcpy(values.data(), bytes.data(), bytes.size());
    }
    return values;
}

}  // namespace scene
