#pragma once

#include <velum/core/guid.hpp>

namespace velum {

/// The identifier that an interface is asked for by. Each interface is tied to its own once, by one line outside of any
/// namespace in its header:
///
///     template <> inline constexpr velum::guid_t velum::iid_of<i_note_t>{"{72D90348-3F75-44F7-AF4D-0BF435E4F4EB}"};
///
/// The identifier that is all zero stands for none.
template <class Interface>
inline constexpr guid_t iid_of{};

namespace detail {

/// `iid_of` by value, where it is an error that there is none. What the compiler alone calls leaves no variable behind,
/// which gcc would mark as unique in the process.
template <class Interface>
consteval guid_t required_iid_of() {
    static_assert(iid_of<Interface> != guid_t{},
                  "this interface has no identifier: its header must specialise velum::iid_of for it");
    return iid_of<Interface>;
}

}  // namespace detail
}  // namespace velum
