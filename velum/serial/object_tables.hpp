#pragma once

#include <velum/core/api.hpp>
#include <velum/core/unknown.hpp>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// What a serializer knows of the objects that it has met. Not for use outside of it.

namespace velum::detail {

/// A reference on an object as `iptr` holds one, which moves without counting.
class object_reference {
public:
    object_reference() = default;
    explicit object_reference(i_unknown_t* object) : object_(object) { object_->add_ref(); }
    object_reference(object_reference const& other) : object_(other.object_) {
        if (object_ != nullptr) {
            object_->add_ref();
        }
    }
    object_reference(object_reference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    object_reference& operator=(object_reference other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~object_reference() {
        if (object_ != nullptr) {
            object_->release();
        }
    }

    i_unknown_t* get() const { return object_; }

private:
    i_unknown_t* object_ = nullptr;
};

/// Rows that are found by a key. A row has an `object`, which is null in a free one, `key()` and `hash_of(key)`.
template <class Row>
class hashed_rows {
public:
    /// Null where no row has the key.
    template <class Key>
    Row const* find(Key key) const;

    /// What is under the key of `row` goes last, since it may come back to the table.
    void set(Row row);

    std::size_t size() const { return size_; }

    void swap(hashed_rows& other) noexcept {
        rows_.swap(other.rows_);
        std::swap(size_, other.size_);
    }

private:
    // Of the row with the key, or of the free one where it would be.
    template <class Key>
    std::size_t place_of(Key key) const;

    void grow();

    std::vector<Row> rows_;  // at most half of them taken, and a power of two
    std::size_t size_ = 0;   // of those
};

/// The numbers that a writer has given, by what the objects answer to `iid_unknown`.
class identity_table {
public:
    identity_table() = default;
    identity_table(identity_table const&) = default;
    identity_table(identity_table&& other) noexcept { rows_.swap(other.rows_); }
    identity_table& operator=(identity_table const&) = delete;
    identity_table& operator=(identity_table&& other) noexcept {
        clear();
        rows_.swap(other.rows_);
        return *this;
    }
    ~identity_table() = default;

    /// Null for an object that has no number.
    std::uint64_t const* find(i_unknown_t* identity) const;

    /// Takes the place of a number that the object has already.
    void set(i_unknown_t* identity, std::uint64_t number);

    void clear() { hashed_rows<row>().swap(rows_); }

private:
    struct row {
        object_reference object{};
        std::uint64_t number = 0;

        i_unknown_t* key() const { return object.get(); }
        static std::size_t hash_of(i_unknown_t* identity);
    };

    hashed_rows<row> rows_;
};

/// Objects under the numbers that the stream gives them: a writer counts from 0 on, and what doesn't is damaged or has
/// been skipped. No choice of numbers makes the table slow.
class object_table {
public:
    object_table() = default;
    object_table(object_table const&) = default;
    object_table(object_table&& other) noexcept { swap(other); }
    object_table& operator=(object_table const&) = delete;
    object_table& operator=(object_table&& other) noexcept {
        clear();
        swap(other);
        return *this;
    }
    ~object_table() = default;

    void swap(object_table& other) noexcept {
        counted_.swap(other.counted_);
        others_.swap(other.others_);
    }

    /// Takes the place of an object that has the number already.
    void set(std::uint32_t number, i_unknown_t* object);

    /// Null for a number that no object has.
    i_unknown_t* find(std::uint32_t number) const;

    void clear() {
        hashed_rows<row>().swap(others_);
        std::vector<object_reference>().swap(counted_);
    }

private:
    struct row {
        object_reference object{};
        std::uint32_t number = 0;

        std::uint32_t key() const { return number; }
        static std::size_t hash_of(std::uint32_t number);
    };

    std::vector<object_reference> counted_;  // whose numbers are their places
    hashed_rows<row> others_;
};

}  // namespace velum::detail
