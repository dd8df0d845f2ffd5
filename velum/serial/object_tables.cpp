#include <velum/core/detail/secret.hpp>
#include <velum/serial/object_tables.hpp>

#include <algorithm>
#include <bit>

namespace velum::detail {

template <class Row>
template <class Key>
Row const* hashed_rows<Row>::find(Key key) const {
    if (size_ == 0) {
        return nullptr;
    }
    Row const& row = rows_[place_of(key)];
    return row.object.get() != nullptr ? &row : nullptr;
}

template <class Row>
void hashed_rows<Row>::set(Row row) {
    if (2 * (size_ + 1) > rows_.size()) {
        grow();
    }
    Row& place = rows_[place_of(row.key())];
    size_ += place.object.get() == nullptr ? 1 : 0;
    std::swap(place, row);
}

template <class Row>
template <class Key>
std::size_t hashed_rows<Row>::place_of(Key key) const {
    // The high bits of a hash tell where the search begins, so that growing goes over both tables in one order.
    std::size_t const last = rows_.size() - 1;
    std::size_t place = Row::hash_of(key) >> (64 - std::bit_width(last));
    while (rows_[place].object.get() != nullptr && rows_[place].key() != key) {
        place = (place + 1) & last;
    }
    return place;
}

template <class Row>
void hashed_rows<Row>::grow() {
    std::vector<Row> before(std::max<std::size_t>(16, 2 * rows_.size()));
    before.swap(rows_);
    for (Row& row : before) {
        if (row.object.get() != nullptr) {
            rows_[place_of(row.key())] = std::move(row);
        }
    }
}

// Addresses differ in their middle bits; the multiplication brings these to the high ones.
std::size_t identity_table::row::hash_of(i_unknown_t* identity) {
    return reinterpret_cast<std::uintptr_t>(identity) * 0x9E3779B97F4A7C15U;
}

std::uint64_t const* identity_table::find(i_unknown_t* identity) const {
    row const* const found = rows_.find(identity);
    return found != nullptr ? &found->number : nullptr;
}

void identity_table::set(i_unknown_t* identity, std::uint64_t number) {
    rows_.set({object_reference(identity), number});
}

// Nobody knows which numbers end in one place.
std::size_t object_table::row::hash_of(std::uint32_t number) {
    return number * secret_bits();
}

void object_table::set(std::uint32_t number, i_unknown_t* object) {
    object_reference held(object);
    if (number < counted_.size()) {
        std::swap(counted_[number], held);  // what was there before goes last
    } else if (number == counted_.size() && others_.size() == 0) {
        counted_.push_back(std::move(held));
    } else {
        others_.set({std::move(held), number});
    }
}

i_unknown_t* object_table::find(std::uint32_t number) const {
    if (number < counted_.size()) {
        return counted_[number].get();
    }
    row const* const found = others_.find(number);
    return found != nullptr ? found->object.get() : nullptr;
}

}  // namespace velum::detail
