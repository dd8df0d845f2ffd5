#pragma once

// What the blocks of the manual begin with that are no whole programs.

// They state what holds by assertions.
#undef NDEBUG

#include <velum/testing/conformance.hpp>
#include <velum/velum.hpp>

#include <boost/make_shared.hpp>

#include <cassert>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using velum::iptr;
