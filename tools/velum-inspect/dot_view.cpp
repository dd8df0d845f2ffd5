#include "dot_view.hpp"

#include "quoting.hpp"
#include "text_view.hpp"

#include <utility>

namespace inspect {
namespace {

constexpr int most_lines = 6;             // of values in a node
constexpr std::size_t longest_line = 48;  // bytes

std::string shortened_line(std::string const& text) {
    return text.size() <= longest_line ? text : std::string(whole_characters(text.substr(0, longest_line))) + "...";
}

/// Within quotation marks of the graph's language, where a backslash begins an escape.
std::string escaped(std::string const& text) {
    std::string out;
    for (char const c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    return out;
}

std::string object_id(std::uint32_t number) {
    return 'o' + std::to_string(number);
}

}  // namespace

void dot_view::begin(document) {
    to_ << "digraph velum {\n"
           "  node [shape=box, fontname=\"monospace\", fontsize=10]\n"
           "  edge [fontname=\"monospace\", fontsize=10]\n";
}

std::string dot_view::path_to(slot const& at) const {
    std::string path = levels_.empty() ? std::string() : levels_.back().path;
    if (at.is == slot::kind::element) {
        return path + '[' + std::to_string(at.index) + ']';
    }
    return path + (path.empty() ? "" : ".") + name_for_people(at.name);
}

void dot_view::enter(node made) {
    nodes_.push_back(std::move(made));
    levels_.push_back({true, {}});
}

void dot_view::add_edge(slot const& at, std::string const& to) {
    if (nodes_.empty()) {
        std::string const root = "root" + std::to_string(at.index);
        to_ << "  " << root << " [shape=point]\n  " << root << " -> " << to << '\n';
    } else {
        to_ << "  " << nodes_.back().id << " -> " << to << " [label=\"" << escaped(path_to(at)) << "\"]\n";
    }
}

void dot_view::value(slot const& at, content const& held, std::uint64_t) {
    node& in = nodes_.back();
    if (++in.lines <= most_lines) {
        in.label += "\\l" + escaped(shortened_line(path_to(at) + " = " + described(held)));
    } else if (in.lines == most_lines + 1) {
        in.label += "\\l...";
    }
}

void dot_view::open(slot const& at, form, std::optional<std::uint64_t>) {
    if (at.is == slot::kind::root) {
        enter({"map" + std::to_string(at.index), "map"});
    } else {
        levels_.push_back({false, path_to(at)});
    }
}

void dot_view::object(slot const& at, std::uint32_t number, velum::guid_t const& clsid, std::string const& name) {
    add_edge(at, object_id(number));
    enter({object_id(number),
           std::to_string(number) + ' ' + escaped(name.empty() ? clsid.string() : name_for_people(name))});
}

void dot_view::close(std::uint64_t) {
    if (levels_.back().is_node) {
        to_ << "  " << nodes_.back().id << " [label=\"" << nodes_.back().label << "\\l\"]\n";
        nodes_.pop_back();
    }
    levels_.pop_back();
}

void dot_view::reference(slot const& at, std::uint32_t number, bool) {
    add_edge(at, object_id(number));
}

void dot_view::finish(ending const& end) {
    while (!levels_.empty()) {
        close(end.offset);
    }
    for (auto const& [number, count] : end.references) {
        to_ << "  " << object_id(number) << " [style=bold]\n";
    }
    if (end.broken) {
        to_ << "  broken [shape=octagon, label=\"broken at byte " << end.broken->offset << "\"]\n";
    }
    to_ << "}\n";
}

}  // namespace inspect
