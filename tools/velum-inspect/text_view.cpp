#include "text_view.hpp"

#include "quoting.hpp"

#include <algorithm>
#include <iomanip>

namespace inspect {
namespace {

constexpr int offset_width = 10;
constexpr std::size_t deepest_indent = 40;  // levels; below it their number stands instead

std::string with_size(std::string const& shown, std::uint64_t size, bool is_whole) {
    return is_whole ? shown : shown + "... of " + std::to_string(size) + " bytes";
}

struct describe {
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(velum::guid_t const& id) const { return id.string(); }
    std::string operator()(text_content const& text) const {
        bool const is_whole = text.first.size() == text.size;
        return with_size(in_quotes(is_whole ? text.first : whole_characters(text.first)), text.size, is_whole);
    }
    std::string operator()(bytes_content const& bytes) const {
        if (bytes.size == 0) {
            return "no bytes";
        }
        return with_size(as_hex(bytes.first), bytes.size, bytes.first.size() == bytes.size);
    }
    std::string operator()(std::vector<stored_number> const& numbers) const {
        if (numbers.size() == 1) {
            return as_text(numbers.front());
        }
        std::string text;
        for (stored_number const& each : numbers) {
            text += (text.empty() ? "(" : ", ") + as_text(each);
        }
        return text + ')';
    }
};

std::string counted(std::optional<std::uint64_t> count, char const* one, char const* many) {
    return std::to_string(*count) + ' ' + (*count == 1 ? one : many);
}

std::string described(form shape, std::optional<std::uint64_t> count) {
    switch (shape) {
        case form::map:
            return counted(count, "entry", "entries");
        case form::maps:
            return counted(count, "map", "maps");
        case form::values:
            return counted(count, "value", "values");
        case form::object_map:
            return counted(count, "object", "objects");
        default:
            return count ? counted(count, "time", "times") : "up to a null";
    }
}

std::string label(slot const& at) {
    switch (at.is) {
        case slot::kind::root:
            return {};
        case slot::kind::element:
            return '[' + std::to_string(at.index) + "] ";
        default:
            break;
    }
    return name_for_people(at.name) + (at.has_whole_name ? ": " : "...: ");
}

// Of an object its class says more than the type of the place, of a root there is none.
std::string type_name(slot const& at) {
    return at.type == nullptr ? std::string() : at.type->name + ' ';
}

}  // namespace

std::string described(content const& held) {
    return std::visit(describe(), held);
}

void text_view::begin(document) {
    if (with_offsets_) {
        to_ << std::setw(offset_width) << "begins" << std::setw(offset_width) << "value" << '\n';
    }
}

void text_view::indent() {
    std::size_t const shown = std::min(depth_, deepest_indent);
    to_ << std::string(2 * shown, ' ');
    if (shown != depth_) {
        to_ << "(level " << depth_ << ") ";
    }
}

void text_view::line(slot const& at, std::string const& what) {
    if (with_offsets_) {
        to_ << std::setw(offset_width) << at.offset << ' ' << std::setw(offset_width - 1) << at.payload << "  ";
    }
    indent();
    to_ << label(at) << what << '\n';
}

void text_view::value(slot const& at, content const& held, std::uint64_t) {
    line(at, type_name(at) + described(held));
}

void text_view::open(slot const& at, form shape, std::optional<std::uint64_t> count) {
    std::string const type = at.is == slot::kind::root ? "map, " : at.type->name + ", ";
    line(at, type + described(shape, count));
    ++depth_;
}

void text_view::object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) {
    line(at,
         "object " + text_of(id) + ", " + (class_name.empty() ? "unknown class" : class_name) + ' ' + clsid.string());
    ++depth_;
}

void text_view::close(std::uint64_t) {
    --depth_;
}

void text_view::null(slot const& at) {
    line(at, "null");
}

void text_view::reference(slot const& at, object_id id, bool is_around) {
    line(at, "reference to object " + text_of(id) + (is_around ? ", which is around it" : ""));
}

void text_view::omitted(std::uint64_t count) {
    to_ << std::string(with_offsets_ ? 2 * offset_width + 2 : 0, ' ');
    indent();
    to_ << "... " << count << " more\n";
}

void text_view::finish(ending const& end) {
    if (!end.references.empty()) {
        to_ << "shared objects:";
        char const* before = " ";
        for (auto const& [id, count] : end.references) {
            to_ << before << text_of(id) << " (" << count << (count == 1 ? " reference)" : " references)");
            before = ", ";
        }
        if (end.unlisted != 0) {
            to_ << ", and " << end.unlisted << " more";
        }
        to_ << '\n';
    }
    if (end.rest != 0) {
        to_ << end.rest << (end.rest == 1 ? " byte follows" : " bytes follow") << " from byte " << end.offset
            << " on\n";
    }
}

}  // namespace inspect
