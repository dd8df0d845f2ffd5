#pragma once

#include "classes.hpp"
#include "events.hpp"
#include "input.hpp"

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace inspect {

/// How much of a key, text or buffer is handed on, in bytes; all is read.
struct content_limits {
    std::uint64_t key = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t text = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t bytes = std::numeric_limits<std::uint64_t>::max();
};

/// Reads a stream from its first byte on and tells a view what stands where.
///
/// It stops at the first byte that isn't what it must be, where a reader of velum goes on with zeros. What is nested is
/// kept in a list and not on the stack, so it may be nested as deep as it likes.
class walker {
public:
    walker(input& from, class_catalogue const& classes, view& to, content_limits limits)
        : from_(from), classes_(classes), to_(to), limits_(limits) {}

    /// One map, or one object with all that is stored within it. They throw `damage`. `root` counts them, where there
    /// may be several.
    void read_map(std::optional<std::uint64_t> root);
    void read_object(std::uint64_t root);

    std::map<object_id, std::uint64_t> const& references() const { return references_; }

private:
    // What is being read: a container, a repeated field, or the stages of an object.
    struct frame {
        slot at{};
        form shape{};
        std::uint64_t done = 0;
        std::optional<std::uint64_t> count{};  // empty: up to a null
        stored_type const* element{};          // of a repeated field
        class_description const* object{};     // whose stages these are
        object_id id{};
        std::unordered_map<std::string, std::uint64_t> counts{};  // that fields behind may need

        bool is_done() const { return object != nullptr ? done == object->fields.size() : done == count; }

        void note(std::string const& name, std::uint64_t value) {
            if (object != nullptr && object->counts_by(name)) {
                counts[name] = value;
            }
        }
    };

    struct known_object {
        std::uint32_t again = 0;
        bool is_around = false;  // the place that is being read
    };

    slot root_at(std::optional<std::uint64_t> root);
    void finish_frames();
    void leave(object_id id);
    void read_next();
    void read_field(frame& stages);

    void read_value(slot at, stored_type const& type);
    void read_tagged(slot at);
    void read_repeated(slot const& at, field const& repeated, frame const& stages);
    void read_numbers(slot const& at, stored_type const& type);
    void read_object(slot const& at);
    void read_reference(slot const& at);
    void read_new_object(slot const& at);

    slot key();
    slot element() const;
    void put(slot const& at, content const& held) { to_.value(at, held, from_.position()); }
    void push(slot const& at, form shape, std::optional<std::uint64_t> count, stored_type const* element = nullptr);
    void note_count(slot const& at, stored_number const& value);
    void note_null();

    template <class Number>
    Number read_number(char const* what);
    std::string read_bytes(std::uint64_t size, std::uint64_t limit, char const* what);
    void read_exactly(char* data, std::size_t size, char const* what);
    damage damage_at(std::uint64_t offset, std::string const& expected, std::string const& found,
                     bool is_unknown_class = false) const;
    [[noreturn]] void fail(std::uint64_t offset, std::string const& expected, std::string const& found) const;
    [[noreturn]] void fail_at_end(std::uint64_t offset, std::uint64_t wanted, std::uint64_t came,
                                  char const* what) const;

    input& from_;
    class_catalogue const& classes_;
    view& to_;
    content_limits limits_;
    std::vector<frame> frames_;
    std::optional<slot> place_;                                // what is being read in the innermost frame
    std::unordered_map<std::uint32_t, known_object> objects_;  // by number: the last
    std::map<object_id, std::uint64_t> references_;
    std::optional<std::uint64_t> root_;
};

}  // namespace inspect
