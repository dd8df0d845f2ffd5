#include <velum/core/build_info.hpp>
#include <velum/version.hpp>

#include <gtest/gtest.h>
#include <boost/version.hpp>

#include <regex>
#include <string>

namespace {

// The library and its tests are built alike, so that its macros that didn't expand would show.
TEST(build_info, has_a_fact_in_each_line) {
#if defined(__clang__)
    std::string const compiler = "clang " + std::to_string(__clang_major__);
#else
    std::string const compiler = "gcc " + std::to_string(__GNUC__);
#endif
    std::string const text = velum::build_info();
    std::regex const lines("velum " VELUM_VERSION R"( \(ABI )" + std::to_string(VELUM_ABI) + R"(\)
compiler: )" + compiler + R"(\.[\d.]+
standard library: lib(std)?c\+\+ \d+
Boost: )" BOOST_LIB_VERSION R"(
interning: for (several threads|one thread)
assertions of the standard library: o(n|ff)
)");
    EXPECT_TRUE(std::regex_match(text, lines)) << text;
}

}  // namespace
