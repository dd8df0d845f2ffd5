#include "dot_view.hpp"

#include "quoting.hpp"
#include "text_view.hpp"

#include <algorithm>
#include <utility>

namespace inspect {
namespace {

constexpr int most_lines = 6;             // of values in a node
constexpr std::size_t longest_line = 48;  // bytes

std::string shortened_line(std::string const& text) {
    return text.size() <= longest_line ? text : std::string(whole_characters(text.substr(0, longest_line))) + "...";
}

/// Within quotation marks of the graph's language, where a backslash begins an escape, and an ampersand an entity.
std::string escaped(std::string const& text) {
    std::string out;
    for (char const c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
        out += c == '&' ? "amp;" : "";
    }
    return out;
}

std::string node_of(object_id id) {
    return 'o' + std::to_string(id.number) + (id.again == 0 ? "" : '_' + std::to_string(id.again));
}

std::string step_to(slot const& at) {
    return at.is == slot::kind::element ? '[' + std::to_string(at.index) + ']'
                                        : shortened_line(name_for_people(at.name));
}

}  // namespace

void dot_view::begin(document) {
    to_ << "digraph velum {\n"
           "  node [shape=box, fontname=\"monospace\", fontsize=10]\n"
           "  edge [fontname=\"monospace\", fontsize=10]\n";
}

// The last steps from the node to a place, of which there may be very many.
std::string dot_view::path_to(slot const& at) const {
    constexpr std::size_t most_steps = 5;
    std::string path = step_to(at);
    auto const nearest = std::find_if(levels_.rbegin(), levels_.rend(), [](level const& l) { return l.is_node; });
    std::size_t steps = 1;
    for (auto around = levels_.rbegin(); around != nearest; ++around) {
        if (++steps > most_steps) {
            return "..." + path;
        }
        path.insert(0, around->step + (path.front() == '[' ? "" : "."));
    }
    return path;
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
        levels_.push_back({false, step_to(at)});
    }
}

void dot_view::object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) {
    add_edge(at, node_of(id));
    enter({node_of(id), text_of(id) + ' ' + escaped(shortened_line(class_name.empty() ? clsid.string() : class_name))});
}

void dot_view::close(std::uint64_t) {
    if (levels_.back().is_node) {
        to_ << "  " << nodes_.back().id << " [label=\"" << nodes_.back().label << "\\l\"]\n";
        nodes_.pop_back();
    }
    levels_.pop_back();
}

void dot_view::reference(slot const& at, object_id id, bool) {
    add_edge(at, node_of(id));
}

void dot_view::finish(ending const& end) {
    while (!levels_.empty()) {
        close(end.offset);
    }
    for (auto const& [id, count] : end.references) {
        to_ << "  " << node_of(id) << " [style=bold]\n";
    }
    if (end.broken) {
        to_ << "  broken [shape=octagon, label=\"" << (end.broken->is_unknown_class ? "stopped" : "broken")
            << " at byte " << end.broken->offset << "\"]\n";
    }
    to_ << "}\n";
}

}  // namespace inspect
