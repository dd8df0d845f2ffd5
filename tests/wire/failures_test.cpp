#include "support/bytes.hpp"
#include "wire/route.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace support;
using velum::any_map;
using velum::uany_map;
using any = boost::any;
using anys = std::vector<any>;
using object = velum::iptr<velum::i_unknown_t>;

class failures : public by_route {};
INSTANTIATE_TEST_SUITE_P(on, failures, both_routes(), route_name);

std::string const p = "unknown type in the any_map: ";
std::string const w = " - while writing map key: ";
std::string const r = " - while reading map key: ";
std::string const no_objects = "std::runtime_error: i_unknown serialization not possible with this type of stream";

std::string unknown(std::string const& text) {
    return "velum::unknown_type: " + text;
}

TEST_P(failures, writing_names_the_type_and_the_keys_that_lead_to_it) {
    any const bad = 5U;
    std::string const nul("b\0c", 3), refused = p + p + "unsigned int" + w;
    struct {
        any_map map;
        std::string failure;
        char const* left_in_sink;
    } const rows[] = {
        {{{"", any()}}, p + p + "void" + w, "01000000 00000000"},
        {{{"a", true}, {"b", bad}, {"c", 1}}, refused + "b", "03000000 01000000 61 02000000 01000000 01000000 62"},
        {{{"k", 5L}}, p + p + "long" + w + "k", "01000000 01000000 6b"},
        {{{"k", static_cast<char const*>("c")}}, p + p + "char const*" + w + "k", "01000000 01000000 6b"},
        {{{"k", velum::init_function_t()}}, p + p + "boost::function<void ()>" + w + "k", "01000000 01000000 6b"},
        {{{"a", uany_map{{"b", any_map{{"c", bad}}}}}},
         p + p + refused + "c" + w + "b" + w + "a",
         "01000000 01000000 61 2b000000 01000000 01000000 62 28000000 01000000 01000000 63"},
        {{{"a", std::vector<any_map>{{}, {{nul, anys{true, any(anys{bad})}}}}}},
         p + refused + "b" + w + "a",
         "01000000 01000000 61 29000000 02000000 00000000 01000000 03000000 620063 2e000000 02000000"
         "02000000 01000000 2e000000 01000000"},
    };
    for (auto const& [map, failure, left] : rows) {
        written const result = write(map);
        EXPECT_EQ(result.failure, unknown(failure));
        EXPECT_EQ(result.bytes, from_hex(left)) << failure;
    }
}

TEST_P(failures, reading_refuses_tags_that_no_type_has) {
    for (std::uint32_t const tag : {0U, 30U, 33U, 36U, 39U, 48U, 0x100U, 0x80000001U, 0xFFFFFFFFU}) {
        std::string const body = body_of("k", static_cast<int>(tag), "behind");
        any_map map{{"k", 1}};
        outcome const result = read(body, map);
        EXPECT_EQ(result.failure, unknown(p + p + "type_id<" + std::to_string(tag) + ">" + r + "k"));
        EXPECT_EQ(result.consumed, body.size() - 6) << "stands behind the tag";
        EXPECT_TRUE(same_map(map, {{"k", 1}}));
    }
}

TEST_P(failures, reading_names_the_keys_that_lead_to_the_tag) {
    std::string const b33 = "01000000 01000000 62 21000000", type = p + p + p + "type_id<33>" + r + "b" + r + "a";
    std::pair<std::string, std::string> const rows[] = {
        {"28000000" + b33, type},
        {"2c000000 02000000 00000000" + b33, type},
        {"2e000000 02000000 28000000 00000000 28000000" + b33, type},
        {"2e000000 01000000 21000000", p + p + "type_id<33>" + r + "a"},
        {"28000000 01000000 00000000 2b000000 01000000 03000000 630064 28000000" + b33,
         p + p + p + p + p + "type_id<33>" + r + "b" + r + "c" + r + r + "a"},
    };
    for (auto const& [value, failure] : rows) {
        std::string const body = from_hex("03000000 01000000 39 02000000 00000000 01000000 61 " + value);
        any_map map{{"9", 1}, {"old", 2}};
        outcome const result = read(body, map);
        EXPECT_EQ(result.failure, unknown(failure));
        EXPECT_EQ(result.consumed, body.size());
        EXPECT_TRUE(same_map(map, {{"9", false}, {"old", 2}})) << "what was read before stays, the rest isn't there";
    }
}

class grouping : public std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST_P(failures, the_number_of_a_tag_follows_the_global_locale) {
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new grouping));
    any_map map;
    std::string const failure = read(body_of("k", -1, ""), map).failure;
    std::locale::global(before);
    EXPECT_EQ(failure, unknown(p + p + "type_id<4.294.967.295>" + r + "k"));
}

// A stream can't carry an object, be it null. That is no unknown type, so no map adds its key.
TEST(stream_route, refuses_objects_behind_their_tag) {
    object text;
    ASSERT_TRUE(velum::basic_string_t::create(nullptr, "", velum::iid_unknown, &text));
    for (object const& value : {object(), text}) {
        written const result = write_by(route::stream, any_map{{"a", anys{any_map{{"k", value}}}}});
        EXPECT_EQ(result.failure, no_objects);
        EXPECT_EQ(result.bytes,
                  from_hex("01000000 01000000 61 2e000000 01000000 28000000 01000000 01000000 6b 2f000000"));
    }
    any_map map;
    outcome const result = read_by(route::stream, body_of("k", 47, u32(0)), map);
    EXPECT_EQ(result.failure, no_objects);
    EXPECT_EQ(result.consumed, 13U);
}

TEST(serializer_route, refuses_objects_that_are_not_serializable) {
    object const stubborn(new_factory(), velum::iid_unknown);
    written const result = write_by(route::serializer, any_map{{"k", stubborn}});
    EXPECT_EQ(result.failure, "std::runtime_error: object is not serializable");
    EXPECT_EQ(result.bytes, from_hex("01000000 01000000 6b 2f000000"));
}

// The maps around an object are on the path to a value in the object's own map.
TEST(serializer_route, a_failure_in_an_object_gets_the_keys_around_it) {
    object const bad(velum::uany_map_obj_t::create({{"in", any()}}), velum::iid_unknown);
    EXPECT_EQ(write_by(route::serializer, any_map{{"a", uany_map{{"o", bad}}}}).failure,
              unknown(p + p + p + p + "void" + w + "in" + w + "o" + w + "a"));
    any_map back;
    EXPECT_EQ(read_by(route::serializer,
                      from_hex("01000000 01000000 6f 2f000000 02000000 00000000 2d4af8b5 dd7543fc a053411a 316f2c99"
                               "00000100 01000000 02000000 696e 21000000"),
                      back)
                  .failure,
              unknown(p + p + p + "type_id<33>" + r + "in" + r + "o"));
}

TEST(serializer_route, refuses_to_be_null) {
    any_map map;
    EXPECT_EQ(failure_of([&] { velum::write(nullptr, map); }), "std::runtime_error: serializer is null");
    EXPECT_EQ(failure_of([&] { velum::read(nullptr, map); }), "std::runtime_error: serializer is null");
}

/// A buffer over another, for which it has work of its own to do before each reading.
class busy_buffer : public std::stringbuf {
public:
    busy_buffer(std::string const& bytes, std::function<void()> work) : std::stringbuf(bytes), work_(std::move(work)) {}

private:
    std::streamsize xsgetn(char* data, std::streamsize size) override {
        work_();
        return std::stringbuf::xsgetn(data, size);
    }

    std::function<void()> work_;
};

// Operations within one another are told apart by their streams, and their failures by who looked for what.
TEST(stream_route, a_stream_may_read_maps_of_its_own) {
    std::string const bytes = body_of("k", 41, u32(1) + body_of("in", 3, u32(1)));
    any_map map, own;
    busy_buffer busy(bytes, [&] { read_by(route::stream, bytes, own); });
    std::istream stream(&busy);
    velum::read(stream, map);
    EXPECT_TRUE(same_map(map, own) && map.size() == 1);

    busy_buffer broken(bytes, [] { throw velum::unknown_type("of the stream"); });
    std::istream input(&broken);
    input.exceptions(std::ios::badbit);
    EXPECT_EQ(failure_of([&] { velum::read(input, map); }), unknown(p + "of the stream"));
}

}  // namespace
