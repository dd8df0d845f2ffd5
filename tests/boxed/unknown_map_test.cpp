#include "support/bytes.hpp"
#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"

#include <gtest/gtest.h>

#include <sstream>

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

TEST(boxed_object_map, states_have_these_bytes_in_both_directions) {
    object_map const map = new_object_map();
    EXPECT_EQ(state_of(map), from_hex("00000100 00000000"));
    auto const text = boxed_text("t");
    map->set("k", identity_of(text));
    EXPECT_EQ(state_of(map), from_hex("00000100 01000000 01000000 6b 02000000 00000000") + stored(text->clsid()) +
                                 from_hex("00000100 01000000 74"));
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
