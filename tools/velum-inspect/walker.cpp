#include "walker.hpp"

#include "quoting.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

namespace inspect {
namespace {

template <class Number>
stored_number number_of(char const* bytes) {
    Number value;
    std::memcpy(&value, bytes, sizeof value);
    if constexpr (std::is_floating_point_v<Number>) {
        return value;
    } else if constexpr (std::is_signed_v<Number>) {
        return std::int64_t{value};
    } else {
        return std::uint64_t{value};
    }
}

stored_number number_of(number_kind kind, char const* bytes) {
    switch (kind) {
        case number_kind::u8:
            return number_of<std::uint8_t>(bytes);
        case number_kind::u16:
            return number_of<std::uint16_t>(bytes);
        case number_kind::u32:
            return number_of<std::uint32_t>(bytes);
        case number_kind::u64:
            return number_of<std::uint64_t>(bytes);
        case number_kind::i8:
            return number_of<std::int8_t>(bytes);
        case number_kind::i16:
            return number_of<std::int16_t>(bytes);
        case number_kind::i32:
            return number_of<std::int32_t>(bytes);
        case number_kind::i64:
            return number_of<std::int64_t>(bytes);
        case number_kind::f32:
            return number_of<float>(bytes);
        case number_kind::f64:
            break;
    }
    return number_of<double>(bytes);
}

std::string count_of_bytes(std::uint64_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

}  // namespace

slot walker::root_at(std::optional<std::uint64_t> root) {
    root_ = root;
    place_ = slot{.index = root.value_or(0), .offset = from_.position(), .payload = from_.position()};
    return *place_;
}

void walker::read_map(std::optional<std::uint64_t> root) {
    read_value(root_at(root), *type_of_word("map"));
    finish_frames();
}

void walker::read_object(std::uint64_t root) {
    read_object(root_at(root));
    finish_frames();
}

void walker::finish_frames() {
    while (!frames_.empty()) {
        frame& innermost = frames_.back();
        if (!innermost.is_done()) {
            read_next();
            continue;
        }
        if (innermost.object != nullptr) {
            leave(innermost.id);
        }
        frames_.pop_back();
        to_.close(from_.position());
    }
}

// One that has the same number and came later may be around too.
void walker::leave(object_id id) {
    known_object& last = objects_[id.number];
    last.is_around = last.is_around && last.again != id.again;
}

// What is read may begin a frame of its own, so the innermost one is done with before.
void walker::read_next() {
    frame& in = frames_.back();
    place_.reset();
    if (in.object != nullptr) {
        read_field(in);
        return;
    }
    slot at = in.shape == form::map || in.shape == form::object_map ? key() : element();
    ++in.done;
    switch (in.shape) {
        case form::object_map:
            at.type = type_of_word("object");
            read_object(at);
            break;
        case form::maps:
            read_value(at, *type_of_word("map"));
            break;
        case form::row:
            read_value(at, *in.element);
            break;
        default:
            read_tagged(at);
            break;
    }
}

void walker::read_field(frame& stages) {
    field const& next = stages.object->fields[stages.done++];
    slot const at{slot::kind::field, next.name, true, 0, from_.position(), from_.position(), next.type};
    place_ = at;
    if (std::holds_alternative<once>(next.repeat)) {
        read_value(at, *next.type);
    } else {
        read_repeated(at, next, stages);
    }
}

void walker::read_repeated(slot const& at, field const& repeated, frame const& stages) {
    std::optional<std::uint64_t> count;
    if (auto const* const fixed = std::get_if<std::uint64_t>(&repeated.repeat)) {
        count = *fixed;
    } else if (auto const* const by = std::get_if<counted_by>(&repeated.repeat)) {
        auto const found = stages.counts.find(by->name);
        if (found == stages.counts.end()) {
            fail(at.offset, "a number \"" + by->name + "\" before it, as the class is described", "none");
        }
        count = found->second;
        if (static_cast<std::int64_t>(*count) < 0) {
            fail(at.offset, "a number \"" + by->name + "\" that isn't negative or beyond all streams",
                 std::to_string(static_cast<std::int64_t>(*count)));
        }
    }
    if (repeated.type->shape == form::raw) {
        std::string first = read_bytes(*count, limits_.bytes, "the bytes of a field");
        put(at, bytes_content{std::move(first), *count});
        return;
    }
    push(at, form::row, count, repeated.type);
}

slot walker::element() const {
    frame const& in = frames_.back();
    return {slot::kind::element, {}, true, in.done, from_.position(), from_.position(), in.element};
}

slot walker::key() {
    std::uint64_t const offset = from_.position();
    auto const size = read_number<std::uint32_t>("the length of a key");
    std::string name = read_bytes(size, limits_.key, "a key");
    bool const is_whole = name.size() == size;
    if (!is_whole) {
        name.resize(whole_characters(name).size());
    }
    return {slot::kind::entry, std::move(name), is_whole, 0, offset, from_.position()};
}

void walker::read_tagged(slot at) {
    place_ = at;
    std::uint64_t const offset = from_.position();
    auto const tag = read_number<std::uint32_t>("the tag of a value");
    stored_type const* const type = type_of_tag(tag);
    if (type == nullptr) {
        fail(offset, "the tag of a type", std::to_string(tag));
    }
    at.type = type;
    at.payload = from_.position();
    read_value(std::move(at), *type);
}

void walker::read_value(slot at, stored_type const& type) {
    if (at.type == nullptr && at.is != slot::kind::root) {
        at.type = &type;
    }
    place_ = at;
    switch (type.shape) {
        case form::truth: {
            bool const value = read_number<std::uint32_t>("a truth value") != 0;
            put(at, value);
            break;
        }
        case form::numbers:
            read_numbers(at, type);
            break;
        case form::identifier: {
            velum::guid_t id;
            read_exactly(reinterpret_cast<char*>(&id), sizeof id, "an identifier");
            put(at, id);
            break;
        }
        case form::text: {
            auto const size = read_number<std::uint32_t>("the length of a text");
            put(at, text_content{read_bytes(size, limits_.text, "a text"), size});
            break;
        }
        case form::bytes: {
            auto const size = read_number<std::uint64_t>("the length of a buffer");
            put(at, bytes_content{read_bytes(size, limits_.bytes, "a buffer"), size});
            break;
        }
        case form::map:
        case form::maps:
        case form::values:
        case form::object_map:
            push(at, type.shape, read_number<std::uint32_t>("a count"));
            break;
        case form::object:
            read_object(at);
            break;
        case form::tagged:
            at.type = nullptr;
            read_tagged(std::move(at));
            break;
        case form::raw:
        case form::row:
            break;  // are read by their counts
    }
}

void walker::read_numbers(slot const& at, stored_type const& type) {
    std::size_t const size = size_of(type.kind);
    std::string bytes(size * type.count, '\0');
    read_exactly(bytes.data(), bytes.size(), "a number");
    std::vector<stored_number> numbers;
    for (std::size_t i = 0; i != bytes.size(); i += size) {
        numbers.push_back(number_of(type.kind, bytes.data() + i));
    }
    note_count(at, numbers.front());
    put(at, std::move(numbers));
}

void walker::read_object(slot const& at) {
    place_ = at;
    std::uint64_t const offset = from_.position();
    auto const tag = read_number<std::uint32_t>("the tag of an object");
    switch (tag) {
        case 0:
            to_.null(at);
            note_null();
            break;
        case 1:
            read_reference(at);
            break;
        case 2:
            read_new_object(at);
            break;
        default:
            fail(offset, "0 for null, 1 for a reference or 2 for a new object", std::to_string(tag));
    }
}

void walker::read_reference(slot const& at) {
    std::uint64_t const offset = from_.position();
    auto const number = read_number<std::uint32_t>("the number of an object");
    auto const met = objects_.find(number);
    if (met == objects_.end()) {
        fail(offset, "the number of an object before it", std::to_string(number));
    }
    object_id const id{number, met->second.again};
    ++references_[id];
    to_.reference(at, id, met->second.is_around);
}

void walker::read_new_object(slot const& at) {
    auto const number = read_number<std::uint32_t>("the number of an object");
    std::uint64_t const offset = from_.position();
    velum::guid_t clsid;
    read_exactly(reinterpret_cast<char*>(&clsid), sizeof clsid, "the identifier of a class");
    class_description const* const described = classes_.find(clsid);
    auto const [met, is_new] = objects_.try_emplace(number);
    met->second.again += is_new ? 0 : 1;
    met->second.is_around = true;
    object_id const id{number, met->second.again};
    to_.object(at, id, clsid, described != nullptr ? described->name : std::string());
    if (described == nullptr) {
        throw damage_at(offset, "a class that is described (by --class or --classes)", clsid.string(), true);
    }
    frames_.push_back({.at = at, .object = described, .id = id});
}

void walker::push(slot const& at, form shape, std::optional<std::uint64_t> count, stored_type const* element) {
    to_.open(at, shape, count);
    frames_.push_back({.at = at, .shape = shape, .count = count, .element = element});
}

// A number in a field, or in a map that is a field.
void walker::note_count(slot const& at, stored_number const& value) {
    std::uint64_t count = 0;
    if (auto const* const natural = std::get_if<std::uint64_t>(&value)) {
        count = *natural;
    } else if (auto const* const whole = std::get_if<std::int64_t>(&value)) {
        count = static_cast<std::uint64_t>(*whole);
    } else {
        return;
    }
    if (at.is == slot::kind::field) {
        frames_.back().note(at.name, count);
    } else if (at.is == slot::kind::entry && frames_.back().at.is == slot::kind::field) {
        frames_[frames_.size() - 2].note(frames_.back().at.name + '.' + at.name, count);
    }
}

// Ends a row of objects.
void walker::note_null() {
    if (!frames_.empty() && frames_.back().object == nullptr && !frames_.back().count) {
        frames_.back().count = frames_.back().done;
    }
}

template <class Number>
Number walker::read_number(char const* what) {
    Number value = 0;
    read_exactly(reinterpret_cast<char*>(&value), sizeof value, what);
    return value;
}

void walker::read_exactly(char* data, std::size_t size, char const* what) {
    std::uint64_t const offset = from_.position();
    if (std::size_t const came = from_.read(data, size); came != size) {
        fail_at_end(offset, size, came, what);
    }
}

// Memory follows what comes, not what a length promises.
std::string walker::read_bytes(std::uint64_t size, std::uint64_t limit, char const* what) {
    constexpr std::uint64_t most_at_once = std::uint64_t{1} << 20U;
    std::uint64_t const offset = from_.position();
    std::string bytes;
    while (bytes.size() != std::min(size, limit)) {
        std::uint64_t const before = bytes.size();
        std::uint64_t const wanted = std::min(std::min(size, limit) - before, most_at_once);
        bytes.resize(before + wanted);
        std::size_t const came = from_.read(bytes.data() + before, wanted);
        if (came != wanted) {
            fail_at_end(offset, size, before + came, what);
        }
    }
    if (std::uint64_t const came = from_.skip(size - bytes.size()); bytes.size() + came != size) {
        fail_at_end(offset, size, bytes.size() + came, what);
    }
    return bytes;
}

void walker::fail_at_end(std::uint64_t offset, std::uint64_t wanted, std::uint64_t came, char const* what) const {
    // A place that isn't known yet is that of an entry whose key is being read.
    std::string const of_entry = place_ ? "" : " of entry " + std::to_string(frames_.back().done);
    fail(offset, count_of_bytes(wanted) + " (" + what + of_entry + ')',
         came == 0 ? "the end of the stream" : count_of_bytes(came) + " and the end of the stream");
}

void walker::fail(std::uint64_t offset, std::string const& expected, std::string const& found) const {
    throw damage_at(offset, expected, found);
}

damage walker::damage_at(std::uint64_t offset, std::string const& expected, std::string const& found,
                         bool is_unknown_class) const {
    damage broken{is_unknown_class, offset, {}, expected, found};
    auto const add = [&broken](slot const& at) {
        if (at.is == slot::kind::element) {
            broken.path.emplace_back(at.index);
        } else if (at.is != slot::kind::root) {
            broken.path.emplace_back(at.has_whole_name ? at.name : at.name + "...");
        }
    };
    if (root_) {
        broken.path.emplace_back(*root_);
    }
    for (frame const& around : frames_) {
        add(around.at);
    }
    if (place_) {
        add(*place_);
    }
    return broken;
}

}  // namespace inspect
