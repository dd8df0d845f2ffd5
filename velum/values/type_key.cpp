#include <velum/values/detail/interning_mutex.hpp>
#include <velum/values/detail/published_index.hpp>
#include <velum/values/type_key.hpp>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>

#include <cxxabi.h>

namespace velum {
namespace {

using key_table = std::map<std::string, ustring>;  // by the names that the compiler gives
using key_entry = key_table::value_type;
using key_index = detail::published_index<key_entry>;

constinit detail::interning_mutex table_mutex;

// Entries under the addresses of types that had them last. An address tells nothing for certain: where a module was
// unloaded the types of another may lie, so the name has to agree.
constinit std::array<std::atomic<key_entry const*>, 512> nearby{};

std::atomic<key_entry const*>& place_near(std::type_info const& ti) {
    // Addresses differ in their middle bits; the multiplication brings these to the high ones.
    std::uint64_t const mixed = reinterpret_cast<std::uint64_t>(&ti) * 0x9E3779B97F4A7C15U;
    return nearby[mixed >> 55U];
}

// `boost::core::demangle` would do, but gives the raw name when its memory fails, and that would be remembered.
std::string readable_name(char const* name) {
    int status = 0;
    char* const text = abi::__cxa_demangle(name, nullptr, nullptr, &status);
    std::unique_ptr<char, decltype(&std::free)> const owner(text, &std::free);
    constexpr int no_memory = -1;
    if (status == no_memory) {
        throw std::bad_alloc();
    }
    return text != nullptr ? text : name;
}

key_entry const& remember(key_table& table, key_index& index, std::size_t hash, char const* name) {
    ustring const key(readable_name(name));
    std::lock_guard const lock(table_mutex);
    auto const [entry, inserted] = table.emplace(name, key);
    if (inserted) {
        try {
            index.add(hash, *entry);
        } catch (...) {
            table.erase(entry);
            throw;
        }
    }
    return *entry;
}

key_entry const& entry_of(std::string_view name) {
    static key_table table;
    static key_index index;
    std::size_t const hash = std::hash<std::string_view>{}(name);
    auto const* const known = index.find(hash, [name](key_entry const& entry) { return entry.first == name; });
    return known != nullptr ? *known : remember(table, index, hash, name.data());
}

}  // namespace

ustring type_key(std::type_info const& ti) {
    std::string_view const name = ti.name();
    auto& nearest = place_near(ti);
    key_entry const* entry = nearest.load(std::memory_order_acquire);
    if (entry == nullptr || entry->first != name) {
        entry = &entry_of(name);
        nearest.store(entry, std::memory_order_release);
    }
    return entry->second;
}

}  // namespace velum
