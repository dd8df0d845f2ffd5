#pragma once

#include <velum/core/i_serializer.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace scene {

// What the classes here share when they write and read their state.

/// The word that opens the state stage. Readers take any: it is there for a later form of a class.
inline void write_version(velum::iptr<velum::i_serializer_t> const& s) {
    std::uint32_t const version = 0x00010000;
    s->write(reinterpret_cast<char const*>(&version), sizeof version);
}

inline void read_version(velum::iptr<velum::i_serializer_t> const& s) {
    std::uint32_t version = 0;
    s->read(reinterpret_cast<char*>(&version), sizeof version);
}

/// Writes a reference, null too. A class that can't be stored must not be taken for null.
template <class Interface>
void write_reference(velum::iptr<velum::i_serializer_t> const& s, velum::iptr<Interface> const& object) {
    auto const serializable = object.template try_as<velum::i_serializable_t>();
    if (object && !serializable) {
        throw std::runtime_error("an object can't be stored");
    }
    s->write_object(serializable);
}

/// Reads a reference, null too. Throws `std::runtime_error` for an object without `Interface`; `place` says in words
/// where it stands.
template <class Interface>
velum::iptr<Interface> read_reference(velum::iptr<velum::i_serializer_t> const& s, char const* place) {
    velum::iptr<velum::i_serializable_t> object;
    bool const is_serializable = s->read_object(object);
    auto const result = object.try_as<Interface>();
    if (!is_serializable || (object && !result)) {
        throw std::runtime_error("an object of another kind is in the place of " + std::string(place));
    }
    return result;
}

}  // namespace scene
