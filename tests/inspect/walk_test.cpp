#include "support/decode.hpp"
#include "support/golden.hpp"

#include "dot_view.hpp"
#include "inspect.hpp"
#include "json_view.hpp"
#include "shortened.hpp"
#include "summary_view.hpp"
#include "text_view.hpp"
#include "walker.hpp"

#include <gtest/gtest.h>
#include <boost/property_tree/json_parser.hpp>

#include <memory>
#include <sstream>
#include <string>

namespace {

using namespace support;

inspect::class_catalogue const& classes() {
    static inspect::class_catalogue const known = [] {
        inspect::class_catalogue made;
        made.add(node::id.string() + " node: text name, object origin, object links until null");
        return made;
    }();
    return known;
}

inspect::input input_of(std::istream& stream) {
    return inspect::input([&stream](char* data, std::size_t most) {
        stream.read(data, static_cast<std::streamsize>(most));
        return static_cast<std::size_t>(stream.gcount());
    });
}

/// How `bytes` are walked in the place of a golden file.
inspect::ending walk(golden const& file, std::string const& bytes, inspect::view& to,
                     inspect::content_limits limits = {}) {
    std::istringstream stream(bytes);
    inspect::input from = input_of(stream);
    inspect::walker walker(from, classes(), to, limits);
    inspect::ending end;
    to.begin(file.objects != 0 ? inspect::document::objects : inspect::document::map);
    try {
        for (int i = 0; i != file.objects; ++i) {
            walker.read_object(static_cast<std::uint64_t>(i));
        }
        if (file.objects == 0) {
            walker.read_map(0);
        }
    } catch (inspect::damage const& broken) {
        end.broken = broken;
    }
    end.references = walker.references();
    end.offset = from.position();
    to.finish(end);
    return end;
}

/// The same by the library, which is told of every byte that is missing.
outcome read(golden const& file, std::string const& bytes) {
    std::istringstream stream(bytes);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    arrivals arrived;
    velum::any_map map;
    std::string const failure = failure_of([&] {
        if (file.objects != 0) {
            read_records(stream, arrived, file.objects);
        } else {
            read_values(route::serializer, stream, arrived, map);
        }
    });
    return {consumed_of(stream), failure};
}

// A reader takes any other number for that of a new object; a reference to an object that is still being built, or that
// the class doesn't take, is refused by the objects and not by their form.
bool may_differ(outcome const& by_library, inspect::ending const& walked) {
    bool const is_object_tag = walked.broken && walked.broken->expected.starts_with("0 for null");
    return is_object_tag || by_library.failure == "std::runtime_error: object not deserialized yet";
}

void expect_same_extent(golden const& file, std::string const& bytes) {
    std::ostringstream nowhere;
    inspect::text_view view(nowhere, true);
    inspect::ending const walked = walk(file, bytes, view);
    outcome const by_library = read(file, bytes);
    if (may_differ(by_library, walked)) {
        return;
    }
    ASSERT_EQ(!walked.broken, by_library.failure.empty())
        << file.name << ": " << testing::PrintToString(bytes) << " " << by_library.failure << ", "
        << (walked.broken ? inspect::message(*walked.broken) : "");
    if (!walked.broken) {
        ASSERT_EQ(walked.offset, by_library.consumed) << file.name << ": " << testing::PrintToString(bytes);
    } else {
        ASSERT_LE(walked.broken->offset, bytes.size());
    }
}

TEST(walk, ends_where_the_library_does_also_in_damaged_files) {
    for (golden const& file : goldens()) {
        EXPECT_EQ(inspect::begins_with_object(file.bytes), file.objects != 0 && file.name != "null") << file.name;
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
            bool const is_whole = !walk(file, bytes, few, {.text = 1, .bytes = 1}).broken;
            walk(file, bytes, as_text);
            walk(file, bytes, as_dot);
            walk(file, bytes, as_summary);

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
    std::ostringstream json, text;
    inspect::json_view as_json(json, false);
    inspect::text_view as_text(text, false);
    golden const map{};
    EXPECT_FALSE(walk(map, bytes + std::string(4, '\0'), as_json).broken);
    EXPECT_FALSE(walk(map, bytes + std::string(4, '\0'), as_text).broken);
    EXPECT_LT(text.str().size(), 200 * levels);
    EXPECT_EQ(walk(map, bytes, as_json).broken->path.size(), levels);
}

}  // namespace
