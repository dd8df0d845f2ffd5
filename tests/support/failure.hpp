#pragma once

#include <boost/core/demangle.hpp>

#include <exception>
#include <ios>
#include <string>
#include <typeinfo>

namespace support {

/// Runs `work` and gives the type and the text of what it throws, or an empty text.
template <class Work>
std::string failure_of(Work work) {
    try {
        work();
    } catch (std::ios_base::failure const&) {
        return "std::ios_base::failure";  // of which each standard library has its own words
    } catch (std::exception const& failure) {
        return boost::core::demangle(typeid(failure).name()) + ": " + failure.what();
    }
    return {};
}

}  // namespace support
