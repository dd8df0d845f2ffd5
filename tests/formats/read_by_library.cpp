// Prints what the library reads in the golden files that are maps, in the form of descriptions.js.

#include "support/decode.hpp"
#include "support/golden.hpp"

#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace support;

std::string hex(auto const& bytes) {
    std::ostringstream digits;
    digits << '"' << std::hex << std::uppercase << std::setfill('0');
    for (auto const byte : bytes) {
        digits << std::setw(2) << static_cast<int>(static_cast<unsigned char>(byte));
    }
    return digits.str() + '"';
}

std::string number(auto n) {
    std::ostringstream text;
    text << std::setprecision(17) << n;
    return n == n ? text.str() : "\"NaN\"";
}

template <class T>
std::string list(std::size_t count, T element) {
    std::string text;
    for (std::size_t i = 0; i != count; ++i) {
        text += (i == 0 ? "" : ",") + element(i);
    }
    return text;
}

std::string form(boost::any const& value);

std::string entries(auto const& map) {
    std::string text;
    for (auto const& [key, value] : map) {
        text += (text.empty() ? "" : ",") + ("{\"key\":" + hex(std::string(key)) + "," + form(value) + "}");
    }
    return "\"entries\":[" + text + "]";
}

std::string numbers(auto const& row) {
    return list(static_cast<std::size_t>(row.size), [&](std::size_t i) { return number(row[static_cast<int>(i)]); });
}

std::string numbers(velum::linear_space3 const& space) {
    return numbers(space[0]) + "," + numbers(space[1]) + "," + numbers(space[2]);
}

std::string numbers(velum::affine_space3 const& space) {
    return numbers(space.linear) + "," + numbers(space.origin);
}

// What stands behind the tag, by the shape that the catalogue has for the type.

namespace shape = velum::value_shape;

std::string content(shape::text, auto const& text) {
    return "\"hex\":" + hex(std::string(text));
}

std::string content(shape::truth, bool truth) {
    return std::string("\"value\":") + (truth ? "true" : "false");
}

template <class T>
std::string content(shape::block, T const& value) {
    if constexpr (std::is_same_v<T, velum::guid_t>) {
        return "\"value\":\"" + value.string() + "\"";
    } else if constexpr (std::is_same_v<T, long long>) {
        return "\"value\":\"" + number(value) + "\"";
    } else if constexpr (std::is_arithmetic_v<T>) {
        return "\"value\":" + number(value);
    } else {
        return "\"value\":[" + numbers(value) + "]";
    }
}

std::string content(shape::triples, auto const& value) {
    return "\"value\":[" + numbers(value) + "]";
}

std::string content(shape::bytes, velum::byte_vector const& bytes) {
    return "\"size\":" + number(bytes.size()) + ",\"hex\":" + hex(bytes);
}

std::string content(shape::map, auto const& map) {
    return entries(map);
}

std::string content(shape::maps, auto const& maps) {
    return "\"maps\":[" + list(maps.size(), [&](std::size_t i) { return "{" + entries(maps[i]) + "}"; }) + "]";
}

std::string content(shape::values, std::vector<boost::any> const& values) {
    return "\"values\":[" + list(values.size(), [&](std::size_t i) { return "{" + form(values[i]) + "}"; }) + "]";
}

std::string content(shape::object, object_ptr const& object) {
    return "\"object\":" + (object ? "\"" + stored_form(object)->clsid().string() + "\"" : "null");
}

std::string form(boost::any const& value) {
    std::string text;
    velum::value_catalogue::for_each([&]<class Row>(Row) {
        if (auto const* const held = boost::any_cast<typename Row::type>(&value)) {
            text = "\"tag\":" + std::to_string(Row::tag) + "," + content(typename Row::shape(), *held);
        }
    });
    return text;
}

}  // namespace

int main() {
    std::string all;
    for (golden const& file : goldens()) {
        if (file.objects == 0) {
            std::ifstream stream(std::string(VELUM_GOLDEN) + "/" + file.name, std::ios::binary);
            arrivals arrived;
            velum::any_map map;
            read_values(route::serializer, stream, arrived, map);
            all += (all.empty() ? "" : ",\n") + ("\"" + file.name + "\":{" + entries(map) + "}");
        }
    }
    std::cout << "{" << all << "}\n";
}
