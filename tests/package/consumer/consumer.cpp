// Exit status 0 if a map with a value of each kind of type survives the way through a stream, and the library is that
// of the headers.

#include <velum/velum.hpp>

#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>

int main() {
    using color_t = math::vec<float, 3, math::use_simd_tag>;

    velum::iptr<velum::i_string_t> object;
    velum::basic_string_t::create(nullptr, "boxed", velum::iid_string, &object);

    velum::any_map const inner{{"color", color_t(1, 2, 3)}};
    velum::any_map const map{{"count", std::int32_t{7}}, {"inner", inner}, {"name", std::string("consumer")}};
    std::stringstream stream;
    velum::write(stream, map);
    velum::any_map back;
    velum::read(stream, back);

    try {
        velum::any_map_get<std::string>(back, "missing");
        return 1;
    } catch (velum::key_not_found const& error) {  // thrown in one module, caught in the other
        std::cout << error.what() << '\n';
    }
    bool const same = velum::any_map_get<std::int32_t>(back, "count") == 7 &&
                      velum::any_map_get<color_t>(velum::any_map_get<velum::any_map>(back, "inner"), "color")[1] == 2;
    bool const is_ours = std::string(velum::build_info()).starts_with("velum " VELUM_VERSION " ");
    return same && object && is_ours ? 0 : 1;
}
