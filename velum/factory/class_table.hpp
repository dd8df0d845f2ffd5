#pragma once

#include <velum/core/guid.hpp>

#include <boost/unordered_map.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velum {

/// Hashes class identifiers, which nobody chooses to collide: whoever registers a class is trusted with more than that.
struct clsid_hash {
    /// The exclusive or of both halves.
    std::size_t operator()(guid_t const& clsid) const {
        std::array<std::uint64_t, 2> words{};
        std::memcpy(words.data(), clsid.data(), sizeof words);
        return words[0] ^ words[1];
    }
};

/// What a factory knows of classes, by their identifiers.
template <class Entry>
using class_table = boost::unordered_map<guid_t, Entry, clsid_hash>;

}  // namespace velum
