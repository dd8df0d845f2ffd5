#include "checks.hpp"
#include "targets.hpp"

// Value maps through a serializer, with objects.
void fuzz::values_by_serializer(std::string const& bytes) {
    read_by_both(route::serializer, bytes);
}
