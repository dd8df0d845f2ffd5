#pragma once

/// @namespace velum::conformance
/// Checks that whoever writes a class runs on it, in whatever test framework: each gives the rules that broke, in
/// words. Not a part of velum.hpp.

#include <velum/testing/check_class.hpp>
#include <velum/testing/check_object.hpp>
#include <velum/testing/check_round_trip.hpp>
