#include "classes.hpp"

#include <velum/boxed/string.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/boxed/value_map.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/implements.hpp>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <stdexcept>

namespace inspect {
namespace {

bool is_space(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_space(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Takes what stands before `end` from `text`, or all of it.
std::string_view take(std::string_view& text, char end) {
    std::string_view const head = text.substr(0, text.find(end));
    text.remove_prefix(std::min(text.size(), head.size() + 1));
    return trimmed(head);
}

std::string_view take_word(std::string_view& text) {
    text = trimmed(text);
    std::string_view const word(text.begin(), std::find_if(text.begin(), text.end(), is_space));
    text.remove_prefix(word.size());
    return word;
}

[[noreturn]] void refuse(std::string const& what, std::string_view text) {
    throw std::runtime_error(what + ": \"" + std::string(text) + '"');
}

std::variant<once, until_null, std::uint64_t, counted_by> parse_count(std::string_view word) {
    std::uint64_t count = 0;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    if (error == std::errc() && end == word.data() + word.size()) {
        return count;
    }
    return counted_by{std::string(word)};
}

field parse_field(std::string_view text) {
    std::string_view rest = text;
    field made;
    made.type = type_of_word(take_word(rest));
    if (made.type == nullptr) {
        refuse("a field begins with its type, as \"u32 version\"", text);
    }
    made.name = take_word(rest);
    std::string_view const how = take_word(rest), what = take_word(rest);
    bool const ends_with_null = how == "until" && what == "null" && made.type->shape == form::object;
    bool const counted = how == "times" && !what.empty();
    if (made.name.empty() || !trimmed(rest).empty() || (!how.empty() && !ends_with_null && !counted)) {
        refuse(R"(a field is "TYPE NAME", "TYPE NAME times COUNT" or "object NAME until null")", text);
    }
    if (made.type->shape == form::raw && !counted) {
        refuse("bytes need a count, as \"bytes NAME times 16\"", text);
    }
    if (ends_with_null) {
        made.repeat = until_null();
    } else if (counted) {
        made.repeat = parse_count(what);
    }
    return made;
}

// A count stands before what it counts.
void check_count(class_description const& described, field const& counted) {
    auto const* const by = std::get_if<counted_by>(&counted.repeat);
    if (by == nullptr) {
        return;
    }
    std::string const name = by->name.substr(0, by->name.find('.'));
    form const wanted = name.size() == by->name.size() ? form::numbers : form::map;
    for (field const& before : described.fields) {
        if (before.name == name && before.type->shape == wanted && std::holds_alternative<once>(before.repeat)) {
            return;
        }
    }
    refuse("no number of this name stands before field \"" + counted.name + '"', by->name);
}

std::string identifier_of(auto const& object) {
    return object.template as<velum::i_serializable_t>()->clsid().string();
}

}  // namespace

bool class_description::counts_by(std::string_view number) const {
    return std::any_of(fields.begin(), fields.end(), [&](field const& f) {
        auto const* const by = std::get_if<counted_by>(&f.repeat);
        return by != nullptr && by->name == number;
    });
}

class_catalogue::class_catalogue() {
    add(identifier_of(velum::make<velum::basic_string_t>("")) + " basic_string_t: u32 version, text text");
    add(identifier_of(velum::make<velum::basic_unknown_map_t>()) +
        " basic_unknown_map_t: u32 version, object_map objects");
    add(identifier_of(velum::uany_map_obj_t::create({})) + " uany_map_obj_t: u32 version, map map");
}

void class_catalogue::add(std::string_view line) {
    std::string_view rest = line;
    std::string_view head = take(rest, ':');
    class_description described;
    try {
        described.id = velum::guid_t(std::string(take_word(head)));
    } catch (std::runtime_error const&) {
        refuse("a class is \"{IDENTIFIER} NAME: FIELD, FIELD\"", line);
    }
    described.name = trimmed(head);
    while (!trimmed(rest).empty()) {
        field next = parse_field(take(rest, ','));
        check_count(described, next);
        described.fields.push_back(std::move(next));
    }
    classes_[described.id] = std::move(described);
}

void class_catalogue::add_file(std::string const& path) {
    std::ifstream file(path);
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        std::string_view const text = trimmed(std::string_view(line).substr(0, line.find('#')));
        try {
            if (!text.empty()) {
                add(text);
            }
        } catch (std::runtime_error const& failure) {
            throw std::runtime_error(path + ':' + std::to_string(number) + ": " + failure.what());
        }
    }
    if (!file.eof()) {
        throw std::runtime_error(path + ": can't be read");
    }
}

class_description const* class_catalogue::find(velum::guid_t const& id) const {
    auto const found = classes_.find(id);
    return found != classes_.end() ? &found->second : nullptr;
}

}  // namespace inspect
