#include "inspect/extent.hpp"
#include "support/golden.hpp"

#include "dot_view.hpp"
#include "json_view.hpp"
#include "shortened.hpp"
#include "summary_view.hpp"
#include "text_view.hpp"

#include <gtest/gtest.h>
#include <boost/property_tree/json_parser.hpp>

#include <sstream>
#include <string>

namespace {

using namespace support;

void expect_same_extent(golden const& file, std::string const& bytes) {
    std::ostringstream nowhere;
    inspect::text_view view(nowhere, true);
    ASSERT_EQ(difference(file.objects, bytes, view), "") << file.name << ": " << testing::PrintToString(bytes);
}

TEST(walk, ends_where_the_library_does_also_in_damaged_files) {
    for (golden const& file : goldens()) {
        EXPECT_EQ(inspect::begins_with_object(file.bytes, {}), file.objects != 0 && file.name != "null") << file.name;
        ASSERT_NO_FATAL_FAILURE(expect_same_extent(file, file.bytes + "behind"));
        for (std::size_t cut = 0; cut <= file.bytes.size(); ++cut) {
            ASSERT_NO_FATAL_FAILURE(expect_same_extent(file, file.bytes.substr(0, cut)));
        }
        for (std::size_t bit = 0; bit < 8 * file.bytes.size(); ++bit) {
            std::string damaged = file.bytes;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
            ASSERT_NO_FATAL_FAILURE(expect_same_extent(file, damaged));
        }
    }
}

TEST(views, a_broken_stream_is_printed_in_whole_lines_and_whole_json) {
    for (golden const& file : goldens()) {
        for (std::size_t cut = 0; cut <= file.bytes.size(); ++cut) {
            std::string const bytes = file.bytes.substr(0, cut);
            std::stringstream json, text, dot, summary;
            inspect::json_view as_json(json, cut % 2 == 0);
            inspect::shortened few(as_json, 1);
            inspect::text_view as_text(text, true);
            inspect::dot_view as_dot(dot);
            inspect::summary_view as_summary(summary);
            bool const is_whole = !walk(file.objects, bytes, few, {.text = 1, .bytes = 1}).broken;
            walk(file.objects, bytes, as_text);
            walk(file.objects, bytes, as_dot);
            walk(file.objects, bytes, as_summary);

            boost::property_tree::ptree tree;
            ASSERT_NO_THROW(boost::property_tree::read_json(json, tree)) << file.name << " at " << cut << json.str();
            ASSERT_EQ(tree.count("error"), is_whole ? 0U : 1U) << json.str();
            ASSERT_TRUE(text.str().ends_with('\n')) << text.str();
            ASSERT_TRUE(dot.str().ends_with("}\n")) << dot.str();
            if (is_whole) {
                std::string const total = "in all " + std::to_string(bytes.size()) + " bytes";
                ASSERT_NE(summary.str().find(total), std::string::npos) << file.name << summary.str();
            }
        }
    }
}

// As deep as it may be, without a stack that grows.
TEST(walk, nesting_has_no_bound) {
    constexpr std::size_t levels = 200'000;
    std::string const level = body_of("k", 40, "");
    std::string bytes;
    for (std::size_t i = 0; i != levels; ++i) {
        bytes += level;
    }
    std::ostringstream json, text, dot, summary;
    inspect::json_view as_json(json, false);
    inspect::text_view as_text(text, false);
    inspect::dot_view as_dot(dot);
    inspect::summary_view as_summary(summary);
    for (inspect::view* const each : std::initializer_list<inspect::view*>{&as_json, &as_text, &as_dot, &as_summary}) {
        EXPECT_FALSE(walk(0, bytes + std::string(4, '\0'), *each).broken);
    }
    EXPECT_LT(text.str().size(), 200 * levels);
    EXPECT_EQ(walk(0, bytes, as_json).broken->path.size(), levels);
}

}  // namespace
