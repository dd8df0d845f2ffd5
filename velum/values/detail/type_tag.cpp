#include <velum/values/catalogue.hpp>
#include <velum/values/detail/type_tag.hpp>
#include <velum/values/type_key.hpp>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace velum::detail {
namespace {

/// From an address to a tag. It has no destructor, so it is there for whoever writes or compares while the process
/// ends.
class tag_table {
public:
    void add(void const* address, int tag) { rows_[place_of(address)] = {address, tag}; }

    /// 0 for an address that wasn't added.
    int operator[](void const* address) const { return rows_[place_of(address)].tag; }

private:
    struct row {
        void const* address = nullptr;
        int tag = 0;
    };

    // That of the row with `address`, or of the free one where it would be.
    std::size_t place_of(void const* address) const {
        // Addresses differ in their middle bits; the multiplication brings these to the high ones.
        std::size_t place = std::bit_cast<std::uint64_t>(address) * 0x9E3779B97F4A7C15U >> 56U;
        while (rows_[place].address != nullptr && rows_[place].address != address) {
            place = (place + 1) % rows_.size();
        }
        return place;
    }

    std::array<row, 256> rows_{};
};

static_assert(std::is_trivially_destructible_v<tag_table>);

/// By the text of the key, of which there is one.
int tag_of_key(ustring const& key) {
    static tag_table const by_key = [] {
        tag_table table;
        value_catalogue::for_each(
            [&table]<class Row>(Row) { table.add(type_key(typeid(typename Row::type)).c_str(), Row::tag); });
        return table;
    }();
    return by_key[key.c_str()];
}

}  // namespace

// The library's own `type_info` objects stay where they are as long as it does; a module has others for the same types.
int type_tag(std::type_info const& type) {
    static tag_table const by_type = [] {
        tag_table table;
        value_catalogue::for_each([&table]<class Row>(Row) { table.add(&typeid(typename Row::type), Row::tag); });
        return table;
    }();
    int const tag = by_type[&type];
    return tag != 0 ? tag : tag_of_key(type_key(type));
}

}  // namespace velum::detail
