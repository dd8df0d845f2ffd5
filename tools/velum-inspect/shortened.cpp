#include "shortened.hpp"

#include <iterator>

namespace inspect {

// An element beyond the first few counts as left out, unless it is within another such.
bool shortened::shows(slot const& at) {
    if (hidden_ != 0) {
        return false;
    }
    if (at.is == slot::kind::element && at.index >= most_) {
        ++left_out_.back();
        return false;
    }
    return true;
}

bool shortened::enters(slot const& at) {
    if (!shows(at)) {
        ++hidden_;
        return false;
    }
    left_out_.push_back(0);
    return true;
}

void shortened::value(slot const& at, content const& held, std::uint64_t end) {
    if (shows(at)) {
        to_.value(at, held, end);
    }
}

void shortened::open(slot const& at, form shape, std::optional<std::uint64_t> count) {
    if (enters(at)) {
        to_.open(at, shape, count);
    }
}

void shortened::object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) {
    if (enters(at)) {
        to_.object(at, id, clsid, class_name);
    }
}

void shortened::close(std::uint64_t end) {
    if (hidden_ != 0) {
        --hidden_;
        return;
    }
    if (left_out_.back() != 0) {
        to_.omitted(left_out_.back());
    }
    left_out_.pop_back();
    to_.close(end);
}

void shortened::null(slot const& at) {
    if (shows(at)) {
        to_.null(at);
    }
}

void shortened::reference(slot const& at, object_id id, bool is_around) {
    if (shows(at)) {
        to_.reference(at, id, is_around);
    }
}

void shortened::finish(ending const& end) {
    for (; !left_out_.empty(); left_out_.pop_back()) {  // of a stream that broke
        if (left_out_.back() != 0) {
            to_.omitted(left_out_.back());
        }
        to_.close(end.offset);
    }
    ending shown = end;
    while (shown.references.size() > most_) {
        shown.references.erase(std::prev(shown.references.end()));
        ++shown.unlisted;
    }
    to_.finish(shown);
}

}  // namespace inspect
