#pragma once

/// @file
/// The version of the headers. This is the one place that states it: the build takes it from here.

#define VELUM_VERSION_MAJOR 0  ///< the first number
#define VELUM_VERSION_MINOR 1  ///< the second
#define VELUM_VERSION_PATCH 0  ///< the third
#define VELUM_ABI 1            ///< goes up when programs have to be built again

/// @cond
#define VELUM_TEXT_OF(number) #number
#define VELUM_TEXT(macro) VELUM_TEXT_OF(macro)
/// @endcond

/// All of it as a text.
#define VELUM_VERSION \
    VELUM_TEXT(VELUM_VERSION_MAJOR) "." VELUM_TEXT(VELUM_VERSION_MINOR) "." VELUM_TEXT(VELUM_VERSION_PATCH)
