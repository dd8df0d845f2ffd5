#include "json_view.hpp"

#include "quoting.hpp"

#include <cmath>

namespace inspect {
namespace {

std::string member(char const* name, std::string const& value) {
    return '"' + std::string(name) + "\":" + value;
}

std::string number_as_json(stored_number const& value) {
    double const held = std::visit([](auto each) { return static_cast<double>(each); }, value);
    if (std::isfinite(held)) {
        return as_text(value);
    }
    return std::isnan(held) ? "\"NaN\"" : held < 0 ? "\"-Infinity\"" : "\"Infinity\"";
}

std::string shortened_unless(bool is_whole) {
    return is_whole ? "" : ',' + member("shortened", "true");
}

struct members_of {
    std::string operator()(bool value) const { return member("value", value ? "true" : "false"); }
    std::string operator()(velum::guid_t const& id) const { return member("value", json_string(id.string())); }
    std::string operator()(text_content const& text) const {
        bool const is_whole = text.first.size() == text.size;
        std::string_view const shown = is_whole ? std::string_view(text.first) : whole_characters(text.first);
        std::string const bytes =
            is_utf8(shown) ? member("value", json_string(shown)) : member("hex", json_string(as_hex(shown)));
        std::string const size = is_whole ? "" : ',' + member("size", std::to_string(text.size));
        return bytes + size + shortened_unless(is_whole);
    }
    std::string operator()(bytes_content const& bytes) const {
        bool const is_whole = bytes.first.size() == bytes.size;
        return member("size", std::to_string(bytes.size)) + ',' + member("hex", json_string(as_hex(bytes.first))) +
               shortened_unless(is_whole);
    }
    std::string operator()(std::vector<stored_number> const& numbers) const {
        if (numbers.size() == 1) {
            return member("value", number_as_json(numbers.front()));
        }
        std::string list;
        for (stored_number const& each : numbers) {
            list += (list.empty() ? '[' : ',') + number_as_json(each);
        }
        return member("value", list + ']');
    }
};

/// The number, and how many objects had the same before, if any had.
std::string numbered(char const* name, object_id id) {
    return member(name, std::to_string(id.number)) +
           (id.again == 0 ? "" : ',' + member("again", std::to_string(id.again)));
}

char const* list_name(form shape) {
    switch (shape) {
        case form::maps:
            return "maps";
        case form::values:
            return "values";
        case form::row:
            return "elements";
        default:
            return "entries";
    }
}

std::string name_as_json(char const* what, std::string const& name) {
    return is_utf8(name) ? member(what, json_string(name))
                         : member((std::string(what) + "_hex").c_str(), json_string(as_hex(name)));
}

bool is_object_place(slot const& at) {
    return at.type != nullptr && at.type->shape == form::object && at.type->tag == 0;
}

std::string as_json(damage const& broken) {
    std::string path;
    for (path_step const& each : broken.path) {
        auto const* const name = std::get_if<std::string>(&each);
        std::string const text = name == nullptr  ? std::to_string(std::get<std::uint64_t>(each))
                                 : is_utf8(*name) ? json_string(*name)
                                                  : json_string(in_quotes(*name));
        path += (path.empty() ? "" : ",") + text;
    }
    char const* const kind = broken.is_unknown_class ? R"("unknown class")" : R"("damage")";
    return '{' + member("kind", kind) + ',' + member("offset", std::to_string(broken.offset)) + ',' +
           member("path", '[' + path + ']') + ',' + member("expected", json_string(broken.expected)) + ',' +
           member("found", json_string(broken.found)) + '}';
}

}  // namespace

void json_view::separate() {
    if (!levels_.back().is_empty) {
        to_ << ',';
    }
    levels_.back().is_empty = false;
}

void json_view::enter(std::string const& opening, std::string const& closing) {
    to_ << opening;
    levels_.push_back({closing});
}

// What stands before a value: its name, its type and its place.
std::string json_view::label(slot const& at) const {
    std::string text;
    if (at.is == slot::kind::entry) {
        text += name_as_json("key", at.name) + ',';
        text += at.has_whole_name ? "" : member("key_shortened", "true") + ',';
    } else if (at.is == slot::kind::field) {
        text += name_as_json("field", at.name) + ',';
    }
    if (at.type != nullptr && !is_object_place(at)) {
        text += member("type", json_string(at.type->name)) + ',';
        if (at.type->tag != 0) {
            text += member("tag", std::to_string(at.type->tag)) + ',';
        }
    }
    if (with_offsets_) {
        text += member("offset", std::to_string(at.offset)) + ',' + member("value_offset", std::to_string(at.payload)) +
                ',';
    }
    return text;
}

void json_view::begin(document kind) {
    kind_ = kind;
    switch (kind) {
        case document::map:
            enter(R"({"kind":"map")", "");
            break;
        case document::maps:
            enter(R"({"kind":"maps","maps":[)", "]");
            break;
        case document::objects:
            enter(R"({"kind":"objects","objects":[)", "]");
            break;
    }
}

void json_view::value(slot const& at, content const& held, std::uint64_t) {
    separate();
    to_ << '{' << label(at) << std::visit(members_of(), held) << '}';
}

void json_view::open(slot const& at, form shape, std::optional<std::uint64_t>) {
    if (at.is == slot::kind::root && kind_ == document::map) {
        enter(",\"entries\":[", "]");
        return;
    }
    separate();
    enter('{' + label(at) + '"' + list_name(shape) + "\":[", "]}");
}

void json_view::put_object(slot const& at, std::string const& object) {
    separate();
    to_ << (at.is == slot::kind::root ? object : '{' + label(at) + member("object", object) + '}');
}

void json_view::object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) {
    separate();
    std::string head = numbered("number", id) + ',' + member("class", json_string(clsid.string())) + ',';
    if (!class_name.empty()) {
        head += member("class_name", json_string(class_name)) + ',';
    }
    head += "\"fields\":[";
    if (at.is == slot::kind::root) {
        enter('{' + label(at) + head, "]}");
    } else {
        enter('{' + label(at) + "\"object\":{" + head, "]}}");
    }
}

void json_view::close(std::uint64_t) {
    to_ << levels_.back().closing;
    levels_.pop_back();
}

void json_view::null(slot const& at) {
    put_object(at, "null");
}

void json_view::reference(slot const& at, object_id id, bool) {
    put_object(at, '{' + numbered("reference", id) + '}');
}

void json_view::omitted(std::uint64_t count) {
    levels_.back().closing = "]," + member("omitted", std::to_string(count)) + levels_.back().closing.substr(1);
}

void json_view::finish(ending const& end) {
    while (!levels_.empty()) {
        close(end.offset);
    }
    std::string shared;
    for (auto const& [id, count] : end.references) {
        shared += (shared.empty() ? "{" : ",{") + numbered("object", id) + ',' +
                  member("references", std::to_string(count)) + '}';
    }
    if (!shared.empty()) {
        to_ << ',' << member("shared", '[' + shared + ']');
        if (end.unlisted != 0) {
            to_ << ',' << member("shared_omitted", std::to_string(end.unlisted));
        }
    }
    if (end.rest != 0) {
        to_ << ','
            << member("rest", '{' + member("offset", std::to_string(end.offset)) + ',' +
                                  member("size", std::to_string(end.rest)) + '}');
    }
    if (end.broken) {
        to_ << ',' << member("error", as_json(*end.broken));
    }
    to_ << "}\n";
}

}  // namespace inspect
