#pragma once

#include <velum/core/api.hpp>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>

namespace velum {

/// An interned string: a pointer to the one copy of its text in the process.
///
/// Copying, comparing and hashing touch the pointer alone, so the order says nothing about the alphabet and changes
/// from run to run. A text ends at its first NUL. Texts are never freed before the library is unloaded: intern what
/// serves as a name, not what a user types. Making a `ustring` is safe from several threads at once, unless the library
/// was built with `VELUM_THREAD_SAFE_INTERNING=OFF`; a text that is known already costs no lock.
class VELUM_API ustring {
public:
    /// The empty text.
    ustring();

    /// Interns the text; `s` must not be null. Throws `std::bad_alloc`.
    /// @{
    ustring(char const* s);
    ustring(std::string const& s);
    /// @}

    /// By address.
    /// @{
    friend bool operator==(ustring const& a, ustring const& b) = default;
    friend std::strong_ordering operator<=>(ustring const& a, ustring const& b) {
        return reinterpret_cast<std::uintptr_t>(a.text_) <=> reinterpret_cast<std::uintptr_t>(b.text_);
    }
    /// @}

    /// The text, valid until the library is unloaded.
    char const* c_str() const { return text_; }

    /// A copy of the text.
    /// @{
    std::string string() const { return text_; }
    operator std::string() const { return string(); }
    /// @}

    /// Whether this is the empty text; interns it to find out.
    bool empty() const;

private:
    char const* make_unique(char const* s);
    std::set<std::string>& table() const;

    char const* text_;
};

}  // namespace velum

/// @cond
template <>
struct std::hash<velum::ustring> {
    std::size_t operator()(velum::ustring const& s) const { return reinterpret_cast<std::size_t>(s.c_str()); }
};
/// @endcond
