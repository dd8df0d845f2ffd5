#pragma once

#include <velum/core/api.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace sys {

/// An allocator whose blocks begin at a multiple of `A` bytes, a power of two.
/// Throws `std::runtime_error` ("memory allocation failed") where there is no memory.
template <class T, std::size_t A>
class VELUM_SHARED_TYPE aligned_allocator {
    static_assert(A != 0 && (A & (A - 1)) == 0, "the alignment is a power of two");
    static_assert(A % alignof(T) == 0 && A <= std::numeric_limits<std::uint32_t>::max() / 2);

public:
    using value_type = T;  ///< as the standard has it

    /// As the standard has it; `A` stays.
    template <class U>
    struct rebind {
        using other = aligned_allocator<U, A>;  ///< the allocator for `U`
    };

    constexpr aligned_allocator() = default;

    /// From that of another type: none has any state.
    template <class U>
    constexpr aligned_allocator(aligned_allocator<U, A> const&) {}

    /// Room for `n` elements. Throws `std::runtime_error` ("memory allocation failed").
    T* allocate(std::size_t n) {
        void* const block = n <= most ? std::malloc(n * sizeof(T) + extra) : nullptr;
        if (block == nullptr) {
            throw std::runtime_error("memory allocation failed");
        }
        auto const behind_distance = reinterpret_cast<std::uintptr_t>(block) + sizeof(distance_t);
        auto const distance = static_cast<distance_t>(sizeof(distance_t) + A - behind_distance % A);
        char* const result = static_cast<char*>(block) + distance;
        std::memcpy(result - sizeof distance, &distance, sizeof distance);
        return static_cast<T*>(static_cast<void*>(result));
    }

    /// Gives back what `allocate` gave.
    void deallocate(T* pointer, std::size_t) noexcept {
        char* const result = static_cast<char*>(static_cast<void*>(pointer));
        distance_t distance = 0;
        std::memcpy(&distance, result - sizeof distance, sizeof distance);
        std::free(result - distance);
    }

    /// Always: what one allocates another may give back.
    template <class U>
    constexpr bool operator==(aligned_allocator<U, A> const&) const {
        return true;
    }

private:
    // From the start of the block to the result: kept just below the result, so that `deallocate` finds the start.
    using distance_t = std::uint32_t;

    static constexpr std::size_t extra = A + sizeof(distance_t);
    static constexpr std::size_t most = (std::numeric_limits<std::size_t>::max() - extra) / sizeof(T);
};

}  // namespace sys
