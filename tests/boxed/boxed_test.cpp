#include "support/bytes.hpp"
#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"
#include "support/route.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace {

using namespace support;

// The state alone, without the head.
std::string state_of(object_map const& map) {
    std::ostringstream stream;
    stored_form(map)->serialize(writer_on(stream));
    return stream.str();
}

std::string failure_of_reading(object_map const& map, std::string const& state) {
    std::istringstream stream(state);
    return failure_of([&] { stored_form(map)->deserialize(reader_on(stream)); });
}

TEST(boxed_object_map, holds_a_reference_under_each_name) {
    journal calls;
    counting_object a(calls, "a"), b(calls, "b");
    auto map = new_object_map();
    EXPECT_FALSE(map->get("k"));
    map->set("k", &a);
    map->set("", &a);
    map->set("K", nullptr);
    calls.clear();
    map->set("k", &b);
    EXPECT_EQ(calls, "b+ a- b+ b- ") << "the old one goes before the new one comes";
    EXPECT_TRUE(map->get("k").get() == &b && map->get("").get() == &a && !map->get("K") && !map->get("x"));
    map->set("", nullptr);
    EXPECT_TRUE(a.references == 0 && b.references == 1);
    map->set("k", map->get("k"));
    EXPECT_EQ(b.references, 1);
    map = nullptr;
    EXPECT_EQ(b.references, 0);
}

// The version in front of a state is read and means nothing; what is read takes the place of a text and joins a map.
TEST(boxed, states_are_read_behind_any_version) {
    std::string const nul("a\0\xFF", 3), entry = from_hex("01000000 01000000 6b 03000000 05000000");
    for (std::uint32_t const version : {0x10000U, 0xFFFFFFFFU, 0U}) {
        auto const text = boxed_text("old content");
        auto const values = velum::uany_map_obj_t::create({{"k", 4}, {"kept", std::string("old")}});
        std::istringstream stream(u32(version) + u32(3) + nul + u32(version) + entry + "behind");
        auto const reader = reader_on(stream);
        text->deserialize(reader);
        stored_form(values)->deserialize(reader);
        EXPECT_TRUE(text_in(text) == nul && stream.tellg() == 11 + 4 + 17) << version;
        EXPECT_TRUE(same_map(values->map(), {{"k", 5}, {"kept", std::string("old")}})) << version;
    }
}

TEST(boxed_object_map, keeps_of_what_is_read_the_later_and_of_a_failure_what_came_before) {
    object_map const map = new_object_map();
    map->set("k", identity_of(boxed_text("t")));
    std::string const three = u32(99) + u32(3) + u32(1) + "x" + u32(0) + u32(1) + "y" + u32(0) + u32(1) + "x";
    EXPECT_EQ(failure_of_reading(map, three + state_of(map).substr(13)), "");
    EXPECT_FALSE(map->get("k")) << "what was there is gone";
    EXPECT_EQ(text_in(map->get("x")), "t") << "the later one stays";
    EXPECT_EQ(map->get("x"), identity_of(map->get("x")));
    EXPECT_EQ(failure_of_reading(map, three + u32(1) + u32(5)), "std::runtime_error: object not deserialized yet");
    EXPECT_EQ(state_of(map).substr(0, 8), from_hex("00000100 02000000")) << "what came before a failure stays";
    EXPECT_EQ(state_of(map).size(), 8 + 2 * (4 + 1 + 4U)) << "nulls, both of them";
    map->set("x", identity_of(new_factory()));
    map->set("y", map->get("x"));
    std::ostringstream stream;
    EXPECT_EQ(failure_of([&] { stored_form(map)->serialize(writer_on(stream)); }),
              "std::runtime_error: object is not serializable");
    EXPECT_EQ(stream.str().size(), 8 + 4 + 1U) << "left behind the key";
}

// Whoever looks into the map while its objects go finds it empty.
TEST(boxed_string, gives_its_text_to_change_and_to_read) {
    auto const text = velum::make<velum::basic_string_t>("a").as<velum::i_string_t>();
    text->string() += "b";
    EXPECT_EQ(std::as_const(*text).string(), "ab");
}

TEST(boxed_object_map, is_empty_for_the_destructors_of_what_it_held) {
    object_map const map = new_object_map();
    int looks = 0;
    for (int i = 0; i < 50; ++i) {
        velum::iptr<node> const watcher(new node);
        watcher->last_words = std::shared_ptr<void>(map.get(), [&](void*) {
            for (int other = 0; other < 50; ++other) {
                looks += map->get(std::to_string(other)) ? 0 : 1;
            }
        });
        map->set(std::to_string(i), watcher.get());
    }
    EXPECT_EQ(failure_of_reading(map, ""), "");
    EXPECT_EQ(looks, 50 * 50);
}

}  // namespace
