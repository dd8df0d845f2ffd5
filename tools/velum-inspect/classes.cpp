#include "classes.hpp"

#include "quoting.hpp"

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

constexpr std::size_t text_end = std::string_view::npos;

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
    throw std::runtime_error(what + ": " + in_quotes(text));
}

/// Whether a name is made of letters, digits and what else names in C++ have.
bool is_name(std::string_view text) {
    auto const belongs = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || std::string_view("_:.<>-").find(c) != text_end;
    };
    return !text.empty() && std::all_of(text.begin(), text.end(), belongs);
}

/// What stands before the first colon that isn't one of two.
std::string_view take_head(std::string_view& text) {
    for (std::size_t at = 0; (at = text.find(':', at)) != text_end; at += 2) {
        if (text.substr(at, 2) != "::") {
            std::string_view const head = text.substr(0, at);
            text.remove_prefix(at + 1);
            return trimmed(head);
        }
    }
    return {};
}

std::variant<once, until_null, std::uint64_t, counted_by> parse_count(std::string_view word) {
    std::uint64_t count = 0;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    if (error == std::errc() && end == word.data() + word.size()) {
        return count;
    }
    if (!is_name(word) || std::isdigit(static_cast<unsigned char>(word.front())) != 0 || word.front() == '-') {
        refuse("a count is a number, the name of one or of an entry of a map", word);
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
    if (!is_name(made.name) || !trimmed(rest).empty() || (!how.empty() && !ends_with_null && !counted)) {
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

bool is_whole(number_kind kind) {
    return kind != number_kind::f32 && kind != number_kind::f64;
}

// A count stands before what it counts.
void check_count(class_description const& described, field const& counted) {
    auto const* const by = std::get_if<counted_by>(&counted.repeat);
    if (by == nullptr) {
        return;
    }
    std::string const name = by->name.substr(0, by->name.find('.'));
    bool const is_in_map = name.size() != by->name.size();
    for (field const& before : described.fields) {
        bool const fits = is_in_map ? before.type->shape == form::map
                                    : before.type->shape == form::numbers && is_whole(before.type->kind);
        if (before.name == name && fits && std::holds_alternative<once>(before.repeat)) {
            return;
        }
    }
    refuse("no whole number of this name stands before field \"" + counted.name + '"', by->name);
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
    std::string_view head = take_head(rest);
    class_description described;
    char const* const form = R"(a class is "{IDENTIFIER} NAME: FIELD, FIELD")";
    try {
        described.id = velum::guid_t(std::string(take_word(head)));
    } catch (std::runtime_error const&) {
        refuse(form, line);
    }
    described.name = trimmed(head);
    if (!is_name(described.name)) {
        refuse(form, line);
    }
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
    char const mark[] = "\xEF\xBB\xBF";  // which some editors put before the first line
    for (int number = 1; std::getline(file, line); ++number) {
        line.erase(0, number == 1 && line.starts_with(mark) ? sizeof mark - 1 : 0);
        std::string_view const text = trimmed(std::string_view(line).substr(0, line.find('#')));
        try {
            if (!text.empty()) {
                add(text);
            }
        } catch (std::runtime_error const& failure) {
            throw std::runtime_error(printable(path) + ':' + std::to_string(number) + ": " + failure.what());
        }
    }
    if (!file.eof()) {
        throw std::runtime_error(printable(path) + ": can't be read");
    }
}

class_description const* class_catalogue::find(velum::guid_t const& id) const {
    auto const found = classes_.find(id);
    return found != classes_.end() ? &found->second : nullptr;
}

}  // namespace inspect
