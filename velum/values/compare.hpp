#pragma once

#include <velum/core/api.hpp>

#include <boost/any.hpp>

namespace velum {

/// Whether `a` is ordered before `b`. Two values are equal when neither is before the other.
///
/// Values of one type of the catalogue compare by what they hold: numbers by size, texts and identifiers by their
/// bytes, vectors, matrices and lists element by element, maps entry by entry with the key before the value, an
/// `ustring` and an object by its address. A NaN is neither less nor greater than anything. Values of different types
/// have an order that lasts for as long as the process.
///
/// Copies nothing; the cost grows with the size of the values. Throws `std::runtime_error`: "can't find the proper
/// any_compare for ", with the name of the type, when two values that it comes to have the same type outside the
/// catalogue or are both empty, and "nesting too deep" before the stack runs out. Safe from several threads as
/// `type_key` is.
VELUM_API bool any_compare(boost::any const& a, boost::any const& b);

}  // namespace velum
