#include "../contest.hpp"

#include <velum/velum.hpp>

#include <QtCore/QVariant>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <compare>
#include <map>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <variant>
#include <vector>

// Two documents, compared: maps of a dozen values, in lists in maps. They are equal, or differ in the last value that
// is come to, so that both have to be walked to their end.

namespace {

using contest::enter;
using contest::work;

constexpr int width = 12;

/// A map with `depth` others within each other. `Model` has the types of a library.
template <class Model>
typename Model::value document(int depth, char const* last) {
    typename Model::map map;
    for (int i = 0; i < width; ++i) {
        typename Model::value& made = map[("value " + std::to_string(i)).c_str()];
        if (i % 2 == 0) {
            made = i;
        } else {
            made = typename Model::text("text");
        }
    }
    if (depth == 0) {
        map["value 9"] = typename Model::text(last);
    } else {
        typename Model::list within;
        within.push_back(document<Model>(depth - 1, last));
        map["within"] = std::move(within);
    }
    return map;
}

/// `is_right` compares, and tells whether the result was the one for documents that differ or are equal.
template <class Model, class IsRight>
bool enter_pair(std::string const& row, std::string const& name, int depth, bool differ, IsRight is_right) {
    return enter({row, name, width * (depth + 1.0), [=] {
                      return work([a = document<Model>(depth, "text"),
                                   b = document<Model>(depth, differ ? "tezt" : "text"), is_right, differ] {
                          if (!is_right(a, b, differ)) {
                              throw std::logic_error("documents were compared wrongly");
                          }
                      });
                  }});
}

template <class Model, class IsRight>
bool enter_documents(std::string const& name, IsRight is_right) {
    for (int const depth : {0, 1, 4, 16}) {
        std::string const shape = depth == 0 ? ", flat" : ", " + std::to_string(depth) + " deep";
        enter_pair<Model>("compare equal" + shape, name, depth, false, is_right);
        enter_pair<Model>("compare nearly equal" + shape, name, depth, true, is_right);
    }
    return true;
}

namespace of_velum {

struct model {
    using value = boost::any;
    using map = velum::any_map;
    using list = std::vector<boost::any>;
    using text = std::string;
};

bool const entered = enter_documents<model>(
    "velum", [](boost::any const& a, boost::any const& b, bool differ) { return velum::any_compare(a, b) == differ; });

}  // namespace of_velum

namespace of_floor {

template <class T>
T const& held(boost::any const& a) {
    return *boost::unsafe_any_cast<T>(&a);
}

/// Whether keys and types are the same. Each type is asked for once.
bool alike(boost::any const& a, boost::any const& b) {
    using list = std::vector<boost::any>;
    using velum::any_map;

    std::type_info const& type = a.type();
    if (type != b.type()) {
        return false;
    }
    if (type == typeid(any_map)) {
        return std::equal(held<any_map>(a).begin(), held<any_map>(a).end(), held<any_map>(b).begin(),
                          [](auto const& left, auto const& right) {
                              return left.first == right.first && alike(left.second, right.second);
                          });
    }
    if (type == typeid(list)) {
        return std::equal(held<list>(a).begin(), held<list>(a).end(), held<list>(b).begin(), alike);
    }
    return true;
}

bool const entered = enter_documents<of_velum::model>(
    "floor", [](boost::any const& a, boost::any const& b, bool) { return alike(a, b); });

}  // namespace of_floor

namespace of_nlohmann {

using nlohmann::json;

struct model {
    using value = json;
    using map = json::object_t;
    using list = json::array_t;
    using text = std::string;
};

bool const entered =
    enter_documents<model>("nlohmann", [](json const& a, json const& b, bool differ) { return (a < b) == differ; });

}  // namespace of_nlohmann

namespace of_qt {

struct model {
    using value = QVariant;
    using map = QVariantMap;
    using list = QVariantList;
    using text = QString;
};

bool const entered = enter_documents<model>(
    "QVariantMap", [](QVariant const& a, QVariant const& b, bool differ) { return (a != b) == differ; });

}  // namespace of_qt

namespace of_std {

/// A value as those have it who write down the types that may occur.
struct value {
    std::variant<int, std::string, std::vector<value>, std::map<std::string, value>> held;

    value() = default;
    template <class T>
    value(T const& of) : held(of) {}

    std::strong_ordering operator<=>(value const&) const = default;  // NOLINT(modernize-use-nullptr): there is none
    bool operator==(value const&) const = default;
};

struct model {
    using value = of_std::value;
    using map = std::map<std::string, value>;
    using list = std::vector<value>;
    using text = std::string;
};

bool const entered = enter_documents<model>(
    "std::variant", [](value const& a, value const& b, bool differ) { return (a < b) == differ; });

}  // namespace of_std

}  // namespace
