#include "support/bytes.hpp"
#include "support/failure.hpp"
#include "support/serializers.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace velum;
using support::from_hex;

iptr<i_serializable_t> stored(auto const& object) {
    return {object, iid_serializable};
}

std::string written(auto const& object) {
    std::ostringstream stream;
    stored(object)->serialize_obj(support::writer_on(stream));
    stored(object)->serialize(support::writer_on(stream));
    return stream.str();
}

// The version in front of a state is read and means nothing.
void read_any_version(auto const& object, char const* version, std::string const& body) {
    std::istringstream stream(from_hex(version) + body + "behind");
    stored(object)->deserialize(support::reader_on(stream));
    EXPECT_EQ(stream.tellg(), 4 + body.size());
}

TEST(boxed, states_have_these_bytes_in_both_directions) {
    std::string const entry = from_hex("01000000 01000000 6b 03000000 05000000");
    EXPECT_EQ(written(uany_map_obj_t::create({})), from_hex("00000100 00000000"));
    EXPECT_EQ(written(uany_map_obj_t::create({{"k", 5}})), from_hex("00000100") + entry);
    for (char const* const version : {"00000100", "ffffffff", "00000000"}) {
        for (std::string const& text : {std::string(), std::string("a\0\xFF", 3)}) {
            std::string const body = support::u32(text.size()) + text;
            iptr<i_string_t> object;
            EXPECT_TRUE(basic_string_t::create(nullptr, text, iid_string, &object));
            EXPECT_EQ(written(object), from_hex("00000100") + body);
            object->string() = "old content";
            read_any_version(object, version, body);
            EXPECT_TRUE(object->string() == text && std::as_const(*object).string() == text);
        }
        auto const object = uany_map_obj_t::create({{"k", 4}, {"kept", std::string("old")}});
        read_any_version(object, version, entry);
        ASSERT_EQ(object->map().size(), 2U) << "what is read is merged";
        EXPECT_EQ(boost::any_cast<int>(object->map().at("k")), 5);
        EXPECT_EQ(boost::any_cast<std::string>(object->map().at("kept")), "old");
    }
    EXPECT_EQ(support::failure_of([] {
                  written(uany_map_obj_t::create({{"k", 'c'}}));
              }),
              "velum::unknown_type: unknown type in the any_map: unknown type in the any_map: char - while writing map "
              "key: k");
}

TEST(boxed, a_text_that_a_factory_makes_is_empty) {
    iptr<i_unknown_t> text;
    EXPECT_TRUE(basic_string_t::create_function(nullptr, nullptr, iid_unknown, &text));
    EXPECT_EQ(written(text), from_hex("00000100 00000000"));
    EXPECT_EQ(stored(text)->clsid(), guid_t("43D4FF6A-038F-4d67-B193-8D21B14DA8BC"));
}

}  // namespace
