#pragma once

#include <velum/core/api.hpp>

namespace velum {

/// What the library is that runs, for reports: its version and ABI number, the compiler, standard library and Boost
/// that it was built with, and the options that change it. A line for each; the first is "velum 1.2.3 (ABI 4)", say.
/// A program may run with a later library than that of its headers (`VELUM_VERSION`), of the same `VELUM_ABI`.
/// The other lines are for people and may change. The text stays for as long as the library.
VELUM_API char const* build_info();

}  // namespace velum
