#pragma once

#include <velum/values/catalogue.hpp>

#include <boost/any.hpp>

namespace scene {

/// Calls `visitor(shape, value)` with what `any` holds and the form that the catalogue gives to its type. False for an
/// empty value or one of a type outside the catalogue.
template <class Visitor>
bool visit(boost::any const& any, Visitor visitor) {
    bool found = false;
    velum::value_catalogue::for_each([&]<class Row>(Row) {
        if (auto const* const value = boost::any_cast<typename Row::type>(&any)) {
            found = true;
            visitor(typename Row::shape(), *value);
        }
    });
    return found;
}

}  // namespace scene
