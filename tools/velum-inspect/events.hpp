#pragma once

#include "types.hpp"

#include <velum/core/guid.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace inspect {

using stored_number = std::variant<std::uint64_t, std::int64_t, float, double>;

/// Bytes of which only the first may be at hand.
struct text_content {
    std::string first;
    std::uint64_t size = 0;  // of all of them
};
struct bytes_content {
    std::string first;
    std::uint64_t size = 0;
};

/// What a value without values of its own holds.
using content = std::variant<bool, std::vector<stored_number>, velum::guid_t, text_content, bytes_content>;

/// An object of a stream: the number that stands there, and how many had the same before it. More than one has where a
/// second document begins.
struct object_id {
    std::uint32_t number = 0;
    std::uint32_t again = 0;

    friend bool operator<(object_id const& a, object_id const& b) {
        return a.number != b.number ? a.number < b.number : a.again < b.again;
    }
};

/// "3", and "3#2" for the second of that number.
inline std::string text_of(object_id id) {
    return std::to_string(id.number) + (id.again == 0 ? "" : '#' + std::to_string(std::uint64_t{id.again} + 1));
}

/// A place where something stands.
struct slot {
    enum class kind { root, entry, element, field } is = kind::root;
    std::string name{};  // the key, or the first of a long one, or the field
    bool has_whole_name = true;
    std::uint64_t index = 0;    // of a root or an element, from 0
    std::uint64_t offset = 0;   // in bytes: where it begins, with its key and its tag
    std::uint64_t payload = 0;  // where the value itself does
    stored_type const* type{};  // null for a root
};

/// A step on the way to a place: a key or field, or the index of an element or a root.
using path_step = std::variant<std::string, std::uint64_t>;

/// Where a stream broke, or can't be read on as nobody knows what objects of a class store.
struct damage {
    bool is_unknown_class = false;
    std::uint64_t offset = 0;
    std::vector<path_step> path;
    std::string expected;
    std::string found;
};

/// How it ended.
struct ending {
    std::map<object_id, std::uint64_t> references;  // to each object that has any
    std::uint64_t unlisted = 0;                     // objects that have references too
    std::uint64_t offset = 0;                       // where reading ended
    std::uint64_t rest = 0;                         // bytes that stand behind
    std::optional<damage> broken;
};

enum class document { map, maps, objects };

/// Is told what stands in a stream, in its order. Each `open` and `object` is followed by what is in it and a `close`,
/// unless the stream breaks first.
class view {
public:
    virtual ~view() = default;

    virtual void begin(document) {}
    virtual void value(slot const& at, content const& held, std::uint64_t end) = 0;
    /// A map, vector or repeated field of `count` elements; of one that ends with a null `count` is empty.
    virtual void open(slot const& at, form shape, std::optional<std::uint64_t> count) = 0;
    /// `class_name` is empty for a class that nobody described.
    virtual void object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) = 0;
    virtual void close(std::uint64_t end) = 0;
    virtual void null(slot const& at) = 0;
    /// `is_around`: the place is within the object.
    virtual void reference(slot const& at, object_id id, bool is_around) = 0;
    /// That many more elements are in the container, which are not shown.
    virtual void omitted(std::uint64_t) {}
    virtual void finish(ending const&) = 0;
};

}  // namespace inspect
