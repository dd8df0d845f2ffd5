#pragma once

#include <boost/core/demangle.hpp>

#include <exception>
#include <string>
#include <typeinfo>

namespace support {

/// Runs `work` and gives the type and the text of what it throws, or an empty text.
template <class Work>
std::string failure_of(Work work) {
    try {
        work();
    } catch (std::exception const& failure) {
        return boost::core::demangle(typeid(failure).name()) + ": " + failure.what();
    }
    return {};
}

}  // namespace support
