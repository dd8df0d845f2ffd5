#pragma once

#include <velum/core/any.hpp>
#include <velum/core/api.hpp>

namespace velum {

/// Whether `a` is ordered before `b`. Two values are equal when neither is before the other.
///
/// Values of one type of the catalogue compare by what they hold: numbers by size, texts and identifiers by their
/// bytes, vectors, matrices and lists element by element, maps entry by entry with the key before the value; what ends
/// first comes first. An `ustring` and an object compare by address, so objects of two documents are never equal.
/// Values of different types (`int` and `long long`, the two kinds of map) are never equal either; their order, as that
/// of addresses, lasts for as long as the process.
///
/// A NaN is neither less nor greater than anything, so it equals every number of its type: with one among them values
/// have no order to sort them by, and equality says less than it seems.
///
/// Values are compared where they are; the cost grows with their size. (A map that is handed over as such, and not in a
/// `boost::any`, is copied into one first.) Throws `std::runtime_error`: "can't find the proper any_compare for ", with
/// the name of the type, when it comes to two values that are both empty or have the same type outside the catalogue,
/// which it may not while something before them differs; and "nesting too deep" before the stack runs out. Safe from
/// several threads as `type_key` is.
VELUM_API bool any_compare(boost::any const& a, boost::any const& b);

}  // namespace velum
