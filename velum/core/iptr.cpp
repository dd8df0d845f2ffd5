#include <velum/core/iptr.hpp>

#include <boost/core/demangle.hpp>

#include <stdexcept>

namespace velum::detail {

void refuse_interface(std::type_info const& wanted, guid_t const& iid, bool is_null) {
    throw std::runtime_error((is_null ? "null was asked for the interface " : "object doesn't have the interface ") +
                             boost::core::demangle(wanted.name()) + " " + iid.string());
}

}  // namespace velum::detail
