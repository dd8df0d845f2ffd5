#include <velum/values/detail/interning_mutex.hpp>
#include <velum/values/detail/published_index.hpp>
#include <velum/values/type_key.hpp>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>

#include <cxxabi.h>

namespace velum {
namespace {

using key_cache = std::map<std::type_info const*, ustring>;
using key_index = detail::published_index<key_cache::value_type>;

constinit detail::interning_mutex cache_mutex;

// Addresses differ in their middle bits; the multiplication brings these to the low ones, which choose the slot.
std::size_t hash_of(std::type_info const* ti) {
    return static_cast<std::size_t>((reinterpret_cast<std::uint64_t>(ti) * 0x9E3779B97F4A7C15U) >> 32U);
}

// `boost::core::demangle` would do, but gives the raw name when its memory fails, and that would be remembered.
std::string readable_name(std::type_info const& ti) {
    int status = 0;
    char* const text = abi::__cxa_demangle(ti.name(), nullptr, nullptr, &status);
    std::unique_ptr<char, decltype(&std::free)> const owner(text, &std::free);
    constexpr int no_memory = -1;
    if (status == no_memory) {
        throw std::bad_alloc();
    }
    return text != nullptr ? text : ti.name();
}

ustring const& remember(key_cache& cache, key_index& index, std::type_info const& ti) {
    ustring const key(readable_name(ti));
    std::lock_guard const lock(cache_mutex);
    auto const [entry, inserted] = cache.emplace(&ti, key);
    if (inserted) {
        try {
            index.add(hash_of(&ti), *entry);
        } catch (...) {
            cache.erase(entry);
            throw;
        }
    }
    return entry->second;
}

}  // namespace

ustring type_key(std::type_info const& ti) {
    static key_cache cache;
    static key_index index;
    auto const is_same = [&ti](key_cache::value_type const& entry) { return entry.first == &ti; };
    auto const* const known = index.find(hash_of(&ti), is_same);
    return known != nullptr ? known->second : remember(cache, index, ti);
}

}  // namespace velum
