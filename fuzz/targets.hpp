#pragma once

#include <array>
#include <string>

namespace fuzz {

/// Takes any bytes and aborts when the library does with them what it must not do.
using target_function = void(std::string const& bytes);
target_function values_by_stream, values_by_serializer, objects, value_round_trip, object_round_trip, routes, compare,
    identifiers, operations, inspected;

struct target {
    char const* name;  ///< also that of its file and its corpus
    target_function* run;
};

inline constexpr std::array targets = {
    target{"values_by_stream", values_by_stream},
    target{"values_by_serializer", values_by_serializer},
    target{"objects", objects},
    target{"value_round_trip", value_round_trip},
    target{"object_round_trip", object_round_trip},
    target{"routes", routes},
    target{"compare", compare},
    target{"identifiers", identifiers},
    target{"operations", operations},
#if defined(VELUM_FUZZ_TOOLS)
    target{"inspected", inspected},
#endif
};

/// The target of this name, or null.
inline target const* find_target(std::string const& name) {
    for (target const& each : targets) {
        if (each.name == name) {
            return &each;
        }
    }
    return nullptr;
}

}  // namespace fuzz
