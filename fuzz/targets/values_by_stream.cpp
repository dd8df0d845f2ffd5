#include "checks.hpp"
#include "targets.hpp"

// Value maps from a standard stream.
void fuzz::values_by_stream(std::string const& bytes) {
    read_by_both(route::stream, bytes);
}
