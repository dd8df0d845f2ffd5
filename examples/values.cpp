// Values under names, to a file and back.

#include <velum/velum.hpp>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

using namespace velum;

int main() {
    using point = math::vec<float, 3, math::use_simd_tag>;
    char const* const path = "values.velum";

    any_map const lamp{{"at", point(0, 2.5F, 1)}, {"watts", 40}};
    any_map const room{{"name", std::string("hall")}, {"lamps", std::vector<any_map>{lamp, lamp}}};

    // A stream with exceptions enabled tells of every byte that couldn't be written, or wasn't there to be read.
    std::ofstream out;
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out.open(path, std::ios::binary);
    write(out, room);
    out.close();

    any_map copy;
    std::ifstream in;
    in.exceptions(std::ios::failbit | std::ios::badbit);
    in.open(path, std::ios::binary);
    read(in, copy);
    in.close();
    std::remove(path);

    // A value comes out as the very type that went in, and no other.
    auto const& lamps = any_map_get<std::vector<any_map> const&>(copy, "lamps");
    double watts = 0;
    bool const is_double = any_map_try_get(lamps[1], "watts", watts);
    std::cout << any_map_get<std::string>(copy, "name") << ": " << lamps.size() << " lamps of "
              << any_map_get<int>(lamps[1], "watts") << " W, " << any_map_get<point>(lamps[1], "at")[1] << " m up\n";
    try {
        any_map_get<int>(copy, "doors");
    } catch (key_not_found const& error) {
        std::cout << error.what() << '\n';
    }

    // Two values are equal when neither comes before the other.
    bool const equal = !any_compare(room, copy) && !any_compare(copy, room);
    std::cout << (equal ? "the same values\n" : "other values\n");
    return equal && !is_double ? 0 : 1;
}

// It prints:
//
//     hall: 2 lamps of 40 W, 2.5 m up
//     key not found in any_map: doors
//     the same values
