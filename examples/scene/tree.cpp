#include "tree.hpp"

#include "text.hpp"
#include "visit.hpp"

#include <map>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

namespace scene {
namespace {

namespace value_shape = velum::value_shape;

void put_value(std::ostream& out, velum::guid_t const& id) {
    out << id.string();
}

// A number, or whatever is made of numbers.
template <class T>
void put_value(std::ostream& out, T const& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        out << value;
    } else {
        for (int i = 0; i < T::size; ++i) {
            out << (i == 0 ? "(" : " ");
            put_value(out, value[i]);
        }
        out << ')';
    }
}

void put_value(std::ostream& out, velum::affine_space3 const& space) {
    put_value(out, space.linear);
    out << " from ";
    put_value(out, space.origin);
}

class tree {
public:
    explicit tree(std::ostream& out) : out_(out) {}

    template <class Map>
    void put(value_shape::map, Map const& map) {
        std::map<std::string, boost::any const*> by_name;  // the order of interned keys means nothing to a reader
        for (auto const& [key, value] : map) {
            by_name.emplace(key, &value);
        }
        put_lines(by_name.size(), 24, [this, entry = by_name.begin()](std::size_t) mutable {
            out_ << printable(entry->first, 60);
            put(*entry->second);
            ++entry;
        });
    }

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

    void put(value_shape::maps, auto const& maps) {
        put_list(maps, [this](auto const& map) { this->put(value_shape::map(), map); });
    }
    void put(value_shape::values, auto const& values) {
        put_list(values, [this](boost::any const& value) { put(value); });
    }

    template <class List, class Put>
    void put_list(List const& list, Put put_element) {
        out_ << ": " << list.size();
        put_lines(list.size(), 8, [&](std::size_t i) {
            out_ << '[' << i << ']';
            put_element(list[i]);
        });
    }

    template <class Put>
    void put_lines(std::size_t count, std::size_t most, Put put_line) {
        if (depth_ == 16) {  // a stored map can nest deeper than this could follow on its stack
            out_ << " ...";
            return;
        }
        ++depth_;
        for (std::size_t i = 0; i < count && i < most; ++i) {
            start_line();
            put_line(i);
        }
        if (count > most) {
            start_line();
            out_ << "and " << count - most << " more";
        }
        --depth_;
    }

    void start_line() { out_ << '\n' << std::string(2 * depth_, ' '); }

    std::ostream& out_;
    std::size_t depth_ = 0;
};

}  // namespace

void print_tree(std::ostream& out, std::string const& title, velum::any_map const& map) {
    out << printable(title, 500);
    tree(out).put(value_shape::map(), map);
    out << '\n';
}

}  // namespace scene
