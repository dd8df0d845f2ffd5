#pragma once

#include <velum/core/api.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/iid_of.hpp>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <typeinfo>
#include <utility>

namespace velum {
namespace detail {

/// Throws what `iptr::as` does.
[[noreturn]] VELUM_API void refuse_interface(std::type_info const& wanted, guid_t const& iid, bool is_null);

}  // namespace detail

/// Holds one reference on an object through its interface `T`, or null.
///
/// Its one member is the pointer, so the address of an `iptr` is the slot that `query_interface` takes. There is no
/// move: moving an `iptr` copies it, and the source keeps its reference. One `iptr` is used by one thread at a time.
template <class T>
class VELUM_SHARED_TYPE iptr {
public:
    /// Null.
    /// @{
    iptr() = default;
    iptr(std::nullptr_t) {}
    /// @}

    /// Takes a reference on `*pointer`, unless it is null.
    iptr(T* pointer) : pointer_(pointer) { take(); }

    /// Takes another reference on what `other` holds.
    iptr(iptr const& other) : pointer_(other.pointer_) { take(); }

    /// Asks what `other` holds for the interface `iid`, which must be that of `T`. Null if it has none.
    template <class U>
    iptr(iptr<U> const& other, guid_t const& iid) {
        if (other) {
            other->query_interface(iid, this);
        }
    }

    ~iptr() { drop(); }

    /// Drops the old reference first and takes the new one after that; assigning an `iptr` to itself changes nothing.
    /// To step along a chain take a copy first, since the old object may hold the last reference on the new one:
    /// `p = iptr(p->next)`.
    iptr& operator=(iptr const& other) {
        if (this != &other) {
            T* const pointer = other.pointer_;
            drop();
            T* const late = std::exchange(pointer_, pointer);  // what a destructor put here meanwhile
            take();
            if (late != nullptr) {
                late->release();
            }
        }
        return *this;
    }

    /// The pointer, without a reference of its own.
    T* get() const { return pointer_; }

    /// Not for null.
    /// @{
    T& operator*() const { return *pointer_; }
    T* operator->() const { return pointer_; }
    /// @}

    /// Whether it holds anything.
    explicit operator bool() const { return pointer_ != nullptr; }

    /// The interface `U` of the object, by the identifier that `iid_of` ties to it. Throws `std::runtime_error`, which
    /// names the interface, when the object doesn't have it and when there is no object.
    template <class U>
    iptr<U> as() const {
        iptr<U> other = try_as<U>();
        if (!other) {
            detail::refuse_interface(typeid(U), detail::required_iid_of<U>(), pointer_ == nullptr);
        }
        return other;
    }

    /// The same, but null when the object doesn't have the interface and when there is no object.
    template <class U>
    iptr<U> try_as() const {
        return iptr<U>(*this, detail::required_iid_of<U>());
    }

    /// Compares addresses; null comes first. Two interfaces of one object differ: compare what both answer to
    /// `iid_unknown` to learn whether two pointers reach the same object.
    /// @{
    friend bool operator==(iptr const& a, iptr const& b) { return a.pointer_ == b.pointer_; }
    friend std::strong_ordering operator<=>(iptr const& a, iptr const& b) {
        return reinterpret_cast<std::uintptr_t>(a.pointer_) <=> reinterpret_cast<std::uintptr_t>(b.pointer_);
    }
    /// @}

private:
    void take() {
        if (pointer_ != nullptr) {
            pointer_->add_ref();
        }
    }

    // Null while the object goes, since its destructor may come back here.
    void drop() {
        if (T* const pointer = std::exchange(pointer_, nullptr)) {
            pointer->release();
        }
    }

    T* pointer_ = nullptr;
};

}  // namespace velum
