#pragma once

#include "support/route.hpp"

#include <gtest/gtest.h>

#include <string>

namespace support {

/// The fixture of what must hold on both routes.
class by_route : public testing::TestWithParam<route> {
protected:
    template <class Map>
    static written write(Map const& map) {
        return write_by(GetParam(), map);
    }

    template <class Map>
    static outcome read(std::string const& bytes, Map& map) {
        return read_by(GetParam(), bytes, map);
    }
};

inline auto both_routes() {
    return testing::Values(route::stream, route::serializer);
}
inline std::string route_name(testing::TestParamInfo<route> const& info) {
    return info.param == route::stream ? "stream" : "serializer";
}

}  // namespace support
