#include <velum/core/build_info.hpp>
#include <velum/version.hpp>

#include <gtest/gtest.h>
#include <boost/version.hpp>

#include <algorithm>
#include <string>

namespace {

#if defined(__clang__)
std::string const compiler = "compiler: clang " + std::to_string(__clang_major__) + '.';
#else
std::string const compiler = "compiler: gcc " + std::to_string(__GNUC__) + '.';
#endif

// The library and its tests are built alike, so that its macros that didn't expand would show.
TEST(build_info, has_a_fact_in_each_line) {
    std::string const text = velum::build_info();
    std::string const first = "velum " VELUM_VERSION " (ABI " + std::to_string(VELUM_ABI) + ")\n";
    EXPECT_EQ(text.substr(0, first.size() + compiler.size()), first + compiler);
    for (char const* const fact : {"\nstandard library: lib", "\nBoost: " BOOST_LIB_VERSION "\ninterning: for ",
                                   " thread", "\nassertions of the standard library: o"}) {
        EXPECT_NE(text.find(fact), text.npos) << text;
    }
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6) << text;
    EXPECT_EQ(text.find("__"), text.npos) << text;
}

}  // namespace
