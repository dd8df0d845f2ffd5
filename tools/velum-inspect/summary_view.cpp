#include "summary_view.hpp"

#include "quoting.hpp"

#include <algorithm>
#include <iomanip>
#include <utility>

namespace inspect {
namespace {

constexpr std::uint64_t size_of_count = 4, size_of_tag = 4, size_of_null = 4, size_of_reference = 8, size_of_head = 24;

}  // namespace

void summary_view::add(table& to, std::string const& name, std::uint64_t bytes) {
    total& row = to[name];
    ++row.count;
    row.bytes += bytes;
}

// Between the beginning of a place and its value stand its key, if it has one, and its tag, if it has one.
void summary_view::add_name_and_tag(slot const& at) {
    std::uint64_t const before = at.payload - at.offset;
    std::uint64_t const tag = at.type != nullptr && at.type->tag != 0 ? size_of_tag : 0;
    if (tag != 0) {
        add(frame_, "tags", tag);
    }
    if (at.is == slot::kind::entry) {
        add(frame_, "keys", before - tag);
    }
}

void summary_view::value(slot const& at, content const&, std::uint64_t end) {
    add_name_and_tag(at);
    add(types_, at.type->name, end - at.payload);
}

void summary_view::enter(slot const& at, std::string const& class_name) {
    levels_.push_back({class_name, at.payload});
    deepest_ = std::max(deepest_, levels_.size());
}

void summary_view::open(slot const& at, form shape, std::optional<std::uint64_t>) {
    add_name_and_tag(at);
    if (shape != form::row) {
        add(types_, at.type == nullptr ? "map" : at.type->name, size_of_count);
    }
    enter(at, {});
}

void summary_view::object(slot const& at, object_id, velum::guid_t const& clsid, std::string const& class_name) {
    add_name_and_tag(at);
    add(frame_, "heads of objects", size_of_head);
    enter(at, (class_name.empty() ? "unknown class" : class_name) + ' ' + clsid.string());
}

void summary_view::close(std::uint64_t end) {
    level const done = std::move(levels_.back());
    levels_.pop_back();
    std::uint64_t const bytes = end - done.begin;
    bool const is_object = !done.class_name.empty();
    if (is_object) {
        add(classes_, done.class_name, bytes - done.within);
    }
    if (!levels_.empty()) {
        levels_.back().within += is_object ? bytes : done.within;
    }
}

void summary_view::null(slot const& at) {
    add_name_and_tag(at);
    add(frame_, "nulls", size_of_null);
}

void summary_view::reference(slot const& at, object_id, bool) {
    add_name_and_tag(at);
    add(frame_, "references", size_of_reference);
}

void summary_view::print(char const* title, char const* unit, table const& rows) const {
    constexpr int count_width = 14, bytes_width = 16;
    std::size_t width = std::string(title).size();
    for (auto const& [name, row] : rows) {
        width = std::max(width, name.size());
    }
    auto const put = [&](std::string const& name, auto const& count, auto const& bytes) {
        to_ << name << std::string(width - name.size(), ' ') << std::setw(count_width) << count
            << std::setw(bytes_width) << bytes << '\n';
    };
    put(title, unit, "bytes");
    std::vector<std::pair<std::string, total>> sorted(rows.begin(), rows.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](auto const& a, auto const& b) { return a.second.bytes > b.second.bytes; });
    for (auto const& [name, row] : sorted) {
        put(name, row.count, row.bytes);
    }
}

void summary_view::finish(ending const& end) {
    while (!levels_.empty()) {
        close(end.offset);
    }
    print("type", "values", types_);
    to_ << '\n';
    print("around them", "number", frame_);
    if (!classes_.empty()) {
        to_ << '\n';
        print("class", "objects", classes_);
    }
    std::uint64_t bytes = 0;
    for (auto const* const part : {&types_, &frame_}) {
        for (auto const& [name, row] : *part) {
            bytes += row.bytes;
        }
    }
    to_ << "\nin all " << bytes << " bytes, " << deepest_ << (deepest_ == 1 ? " level deep" : " levels deep") << '\n';
    if (end.rest != 0) {
        to_ << end.rest << (end.rest == 1 ? " byte follows" : " bytes follow") << " from byte " << end.offset
            << " on\n";
    }
}

}  // namespace inspect
