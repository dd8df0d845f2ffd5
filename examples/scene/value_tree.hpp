#pragma once

#include "put_value.hpp"
#include "text.hpp"
#include "visit.hpp"

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace scene {

namespace value_shape = velum::value_shape;

/// Prints values as a tree, each behind its name. Long lists and texts and deep nesting are cut short.
class value_tree {
public:
    explicit value_tree(std::ostream& out) : out_(out) {}

    template <class Map>
    void put_map(Map const& map) {
        std::map<std::string, boost::any const*> by_name;  // the order of interned keys means nothing to a reader
        for (auto const& [key, value] : map) {
            by_name.emplace(key, &value);
        }
        put_rows(by_name.size(), 24, [this, entry = by_name.begin()](std::size_t) mutable {
            start_line() << printable(entry->first, 60);
            put(*entry->second);
            ++entry;
        });
    }

protected:
    // `put_row(i)` prints a line and what is below it.
    template <class Put>
    void put_rows(std::size_t count, std::size_t most, Put put_row) {
        for (std::size_t i = 0; i < count && i < most; ++i) {
            put_row(i);
        }
        if (count > most) {
            start_line() << "and " << count - most << " more";
        }
    }

    template <class Put>
    void indented(Put put_all) {
        if (depth_ == 16) {  // what is stored can nest deeper than this could follow on its stack
            out_ << " ...";
            return;
        }
        ++depth_;
        put_all();
        --depth_;
    }

    std::ostream& start_line() { return out_ << '\n' << std::string(2 * depth_, ' '); }

    std::ostream& out() { return out_; }

private:
    void put(boost::any const& any) {
        if (!visit(any, [this](auto form, auto const& value) { put(form, value); })) {
            out_ << ": of a type that can't be stored";
        }
    }

    void put(value_shape::block, auto const& value) { put_value(out_ << ": ", value); }
    void put(value_shape::triples, auto const& value) { put_value(out_ << ": ", value); }
    void put(value_shape::truth, bool value) { out_ << (value ? ": true" : ": false"); }
    void put(value_shape::text, std::string const& text) { out_ << ": \"" << printable(text, 60) << '"'; }
    void put(value_shape::bytes, velum::byte_vector const& bytes) { out_ << ": " << bytes.size() << " bytes"; }
    void put(value_shape::object, auto const& object) { out_ << (object ? ": an object" : ": no object"); }

    void put(value_shape::map, auto const& map) {
        indented([&] { put_map(map); });
    }
    void put(value_shape::maps, auto const& maps) {
        put_list(maps, [this](auto const& map) { this->put(value_shape::map(), map); });
    }
    void put(value_shape::values, auto const& values) {
        put_list(values, [this](boost::any const& value) { put(value); });
    }

    template <class List, class Put>
    void put_list(List const& list, Put put_element) {
        out_ << ": " << list.size();
        indented([&] {
            put_rows(list.size(), 8, [&](std::size_t i) {
                start_line() << '[' << i << ']';
                put_element(list[i]);
            });
        });
    }

    std::ostream& out_;
    std::size_t depth_ = 0;
};

}  // namespace scene
