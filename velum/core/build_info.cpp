#include <velum/core/build_info.hpp>
#include <velum/version.hpp>

#include <boost/version.hpp>

#include <cstddef>  // the standard library's own macros

#if defined(__clang__)
#    define VELUM_COMPILER "clang " VELUM_TEXT(__clang_major__.__clang_minor__.__clang_patchlevel__)
#elif defined(__GNUC__)
#    define VELUM_COMPILER "gcc " VELUM_TEXT(__GNUC__.__GNUC_MINOR__.__GNUC_PATCHLEVEL__)
#elif defined(_MSC_VER)
#    define VELUM_COMPILER "MSVC " VELUM_TEXT(_MSC_FULL_VER)
#else
#    define VELUM_COMPILER "unknown"
#endif

#if defined(_LIBCPP_VERSION)
#    define VELUM_STANDARD_LIBRARY "libc++ " VELUM_TEXT(_LIBCPP_VERSION)
#elif defined(__GLIBCXX__)
#    define VELUM_STANDARD_LIBRARY "libstdc++ " VELUM_TEXT(__GLIBCXX__)
#else
#    define VELUM_STANDARD_LIBRARY "unknown"
#endif

#if defined(VELUM_SINGLE_THREADED_INTERNING)
#    define VELUM_INTERNING "for one thread"
#else
#    define VELUM_INTERNING "for several threads"
#endif

#if defined(_GLIBCXX_ASSERTIONS)
#    define VELUM_ASSERTIONS "on"
#else
#    define VELUM_ASSERTIONS "off"
#endif

char const* velum::build_info() {
    return "velum " VELUM_VERSION " (ABI " VELUM_TEXT(VELUM_ABI) ")\n"
           "compiler: " VELUM_COMPILER "\n"
           "standard library: " VELUM_STANDARD_LIBRARY "\n"
           "Boost: " BOOST_LIB_VERSION "\n"
           "interning: " VELUM_INTERNING "\n"
           "assertions of the standard library: " VELUM_ASSERTIONS "\n";
}
