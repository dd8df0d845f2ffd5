#include <velum/values/catalogue.hpp>
#include <velum/values/detail/type_tag.hpp>
#include <velum/values/type_key.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <typeinfo>

namespace velum::detail {
namespace {

/// From the text of a type key, by its address, to the tag. It has no destructor, so it is there for whoever writes or
/// compares while the process ends.
class tag_table {
public:
    tag_table() {
        value_catalogue::for_each([this]<class Row>(Row) {
            char const* const type = type_key(typeid(typename Row::type)).c_str();
            rows_[place_of(type)] = {type, Row::tag};
        });
    }

    int operator[](ustring const& type) const { return rows_[place_of(type.c_str())].tag; }

private:
    struct row {
        char const* type = nullptr;
        int tag = 0;
    };

    // That of the row with `type`, or of the free one where it would be.
    std::size_t place_of(char const* type) const {
        std::size_t place = reinterpret_cast<std::uintptr_t>(type) / alignof(std::max_align_t) % rows_.size();
        while (rows_[place].type != nullptr && rows_[place].type != type) {
            place = (place + 1) % rows_.size();
        }
        return place;
    }

    std::array<row, 128> rows_{};
};

static_assert(std::is_trivially_destructible_v<tag_table>);

}  // namespace

int type_tag(ustring const& type) {
    static tag_table const type_tag_table;
    return type_tag_table[type];
}

}  // namespace velum::detail
