#include "support/failure.hpp"
#include "support/node.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

// What the code of others may do while an operation runs it.

namespace {

using namespace support;

std::shared_ptr<void> words(std::function<void()> const& last) {
    return {nullptr, [last](void*) { last(); }};
}

TEST(within_an_operation, a_class_or_a_mapper_may_let_go_of_the_serializer) {
    std::stringstream stream;
    serializer_ptr s = writer_on(stream);
    velum::iptr<node> const first(new node("a"));
    bool mapped = false;
    s->set_object_mapper([&](serializable const& object) {
        mapped = true;
        s = nullptr;
        return object;
    });
    velum::i_serializer_t& writer = *s;
    writer.write_object(first.get());
    EXPECT_TRUE(mapped && !s);

    object_factory const factory = new_factory();
    factory->register_class(node::id, {}, {},
                            [&](auto const& outer, auto const& reader, auto& out) {
                                s = nullptr;
                                return node::rebuild(outer, reader, out);
                            },
                            {});
    s = reader_on(stream, factory);
    velum::i_serializer_t& reader = *s;
    serializable back;
    EXPECT_TRUE(reader.read_object(back) && as_node(back).name == "a" && !s);
}

TEST(within_an_operation, a_mapper_may_replace_itself) {
    std::stringstream stream;
    serializer_ptr const s = writer_on(stream);
    std::string seen;
    s->set_object_mapper([&, text = std::string(50, 'x')](serializable const& object) {
        s->set_object_mapper({});
        seen += text;
        return object;
    });
    s->write_object(nullptr);
    s->write_object(nullptr);
    EXPECT_EQ(seen, std::string(50, 'x'));
}

TEST(within_an_operation, a_destructor_may_use_the_holder_and_the_map_that_it_leaves) {
    int alive = 0;
    auto const counted = [&alive](std::function<void()> last) {
        velum::iptr<node> const made(new node);
        made->last_words = words([&alive, last = std::move(last)] { --alive, last(); });
        ++alive;
        return object_ptr(made.get());
    };
    auto const nothing = [] {};
    {
        object_ptr holder;
        holder = counted([&] { holder = counted(nothing); });
        holder = counted(nothing);
        EXPECT_EQ(alive, 1);
        object_map const map = new_object_map();
        map->set("k", counted([&] { map->set("k", counted(nothing)); }));
        map->set("k", nullptr);
        EXPECT_TRUE(alive == 1 && !map->get("k"));
        std::istringstream empty;
        map->set("k", counted([&] { stored_form(map)->deserialize(reader_on(empty)); }));
        map->set("k", counted(nothing));
        EXPECT_TRUE(alive == 2 && map->get("k"));
    }
    EXPECT_EQ(alive, 0);
}

// However much of the stack a destructor takes, as long as there is some.
TEST(within_an_operation, an_object_dies_before_the_one_that_drops_it_goes_on) {
    bool dead = false, was_dead = false;
    velum::iptr<node> outer(new node), inner(new node);
    inner->last_words = words([&dead] { dead = true; });
    outer->last_words = words([&was_dead, &dead, held = std::make_shared<object_ptr>(inner.get())] {
        char volatile room[100'000] = {};
        *held = nullptr;
        was_dead = dead && room[5] == 0;
    });
    inner = nullptr;
    outer = nullptr;
    EXPECT_TRUE(was_dead);
}

// A map of so many entries must arrive; that says nothing of an empty stream that is read meanwhile.
TEST(within_an_operation, another_stream_is_judged_on_its_own) {
    object_map const map = new_object_map();
    for (int i = 0; i < 300'000; ++i) {
        map->set(std::to_string(i), nullptr);
    }
    map->set("text", identity_of(boxed_text("t")));
    std::stringstream stream;
    writer_on(stream)->write_object(stored_form(map));
    serializer_ptr const reader = reader_on(stream);
    int empty_maps = 0;
    reader->set_object_mapper([&](serializable const& object) {
        std::istringstream empty;
        velum::any_map values;
        velum::read(empty, values);
        empty_maps += values.empty() ? 1 : 0;
        return object;
    });
    serializable back;
    EXPECT_TRUE(reader->read_object(back) && empty_maps == 2);
}

}  // namespace
