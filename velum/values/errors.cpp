#include <velum/values/errors.hpp>

namespace velum {

key_not_found::key_not_found(std::string const& key) : std::runtime_error("key not found in any_map: " + key) {}

unknown_type::unknown_type(std::string const& detail) : std::runtime_error("unknown type in the any_map: " + detail) {}

// Defined here, so that there is one type_info of each for all modules to catch by.
key_not_found::~key_not_found() = default;
unknown_type::~unknown_type() = default;

}  // namespace velum
