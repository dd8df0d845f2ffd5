#include "support/bytes.hpp"
#include "support/failure.hpp"
#include "support/heap.hpp"
#include "support/node.hpp"
#include "support/panel.hpp"
#include "support/sanitized.hpp"
#include "support/stack.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using namespace support;

std::string const too_deep = "std::runtime_error: nesting too deep";

serializable node_around(serializable const& inner, bool early) {
    velum::iptr<node> const made(new node);
    made->links.resize(inner && !early ? 1 : 0, inner);
    made->origin = early ? inner : nullptr;
    return made.get();
}

/// Writes and reads the one that it holds in two steps: the head, and the state.
struct by_head : velum::flat_t<by_head, velum::i_serializable_t> {
    static inline velum::guid_t const id{"{0F6A1C52-4B7D-4E36-9A20-C8D3517E9B64}"};

    serializable held;

    velum::guid_t clsid() const override { return id; }
    void serialize_obj(serializer_ptr const&) const override {}
    void serialize(serializer_ptr const& s) const override {
        bool const holds = static_cast<bool>(held);
        s->write(reinterpret_cast<char const*>(&holds), 1);
        if (holds) {
            s->write_object_header(identity_of(held));
            held->serialize(s);
        }
    }
    void deserialize(serializer_ptr const& s) override {
        bool holds = false;
        s->read(reinterpret_cast<char*>(&holds), 1);
        if (holds) {
            object_ptr made;
            s->read_object_header(nullptr, made);
            held = stored_form(made);
            held->deserialize(s);
        }
    }
    friend velum::object_access;
    std::int32_t ref_count = 0;
};

object_factory factory_of_all() {
    object_factory const factory = node_factory();
    auto const rebuild = [](auto const&, auto const&, object_ptr& out) { return out = new by_head, true; };
    factory->register_class(by_head::id, {}, {}, rebuild, {});
    return factory;
}

/// Ways to make an object that holds another.
serializable (*const kinds[])(serializable const&) = {
    [](serializable const& inner) {
        object_map const map = new_object_map();
        map->set("n", identity_of(inner));
        return stored_form(map);
    },
    [](serializable const& inner) {
        return stored_form(velum::uany_map_obj_t::create({{"n", identity_of(inner)}}));
    },
    [](serializable const& inner) { return node_around(inner, false); },
    [](serializable const& inner) { return node_around(inner, true); },
    [](serializable const& inner) {
        velum::iptr<by_head> const made(new by_head);
        made->held = inner;
        return serializable(made.get());
    },
};

std::string failure_of_writing(serializable const& chain, std::string& bytes) {
    std::ostringstream stream;
    std::string const failure = failure_of([&] { writer_on(stream)->write_object(chain); });
    bytes = stream.str();
    return failure;
}

serializable chain_of(serializable (*around)(serializable const&), int length) {
    serializable chain;
    while (length-- != 0) {
        chain = around(serializable(chain));
    }
    return chain;
}

TEST(nesting_of_objects, what_is_written_can_be_read_on_a_stack_of_the_same_size) {
    for (auto const& around : kinds) {
        for (std::size_t const size : {std::size_t{8} << 20U, std::size_t{256} << 10U}) {
            SCOPED_TRACE(testing::Message() << "kind " << &around - kinds << " on " << size << " bytes");
            int length = 0;
            std::string bytes, again;
            on_stack(size, [&] {
                length = deepest([&](int n) { return failure_of_writing(chain_of(around, n), bytes).empty(); });
                EXPECT_EQ(failure_of_writing(chain_of(around, length), bytes), "");
            });
            EXPECT_GT(length, 20);
            serializable chain;
            on_stack(size, [&] {
                std::istringstream stream(bytes);
                EXPECT_EQ(failure_of([&] { reader_on(stream, factory_of_all())->read_object(chain); }), "");
            });
            on_stack(2 * size, [&] {
                failure_of_writing(chain, again);
                chain = nullptr;
            });
            EXPECT_TRUE(again == bytes);
        }
    }
}

// What counts is the room that is left.
TEST(nesting_of_objects, is_no_matter_of_what_the_stack_holds_already) {
    on_stack(std::size_t{1} << 20U, [] {
        char volatile used[800'000] = {};
        std::string bytes;
        EXPECT_EQ(failure_of_writing(boxed_text("t"), bytes), used[9] == 0 ? "" : "?");
        std::istringstream stream(bytes);
        serializable back;
        EXPECT_TRUE(reader_on(stream)->read_object(back));
    });
}

TEST(nesting_of_objects, ends_before_the_stack_does) {
    on_stack(std::size_t{1} << 20U, [] {
        std::string bytes;
        for (auto const& [clsid, stages] :
             {std::pair(node::id, u32(0) + u32(0)), std::pair(by_head::id, std::string(1, 1))}) {
            bytes.clear();
            for (std::uint32_t id = 0; id < 1000000; ++id) {
                bytes += u32(2) + u32(id) + stored(clsid) + stages;
            }
            std::istringstream stream(bytes);
            serializable chain;
            EXPECT_EQ(failure_of([&] { reader_on(stream, factory_of_all())->read_object(chain); }), too_deep);
        }
    });
}

// Nobody tells where such a stack ends, so little of it is used.
TEST(nesting_of_objects, ends_early_on_the_stack_of_a_fiber) {
    if (sanitized) {
        GTEST_SKIP() << "the sanitizer must be told of other stacks";
    }
    std::string bytes, writing, reading, flat;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        bytes += u32(1) + u32(1) + "k" + u32(40);
    }
    on_foreign_stack(std::size_t{128} * 1024, [&] {
        writing = failure_of_writing(chain_of(kinds[0], 1000), flat);
        std::istringstream deep(bytes), small(body_of("k", 3, u32(1)));
        velum::any_map map;
        reading = failure_of([&] { velum::read(deep, map); });
        flat = failure_of([&] { velum::read(small, map); });
    });
    EXPECT_EQ(writing, too_deep);
    EXPECT_EQ(reading, too_deep);
    EXPECT_EQ(flat, "");
}

/// Has a large frame when it dies, and tells how far down the stack that is.
struct heavy : velum::flat_t<heavy, velum::i_unknown_t> {
    static inline std::uintptr_t lowest = 0;
    static inline int alive = 0;
    heavy() { ++alive; }
    ~heavy() override {
        --alive;
        char frame[std::size_t{2} * 1024];
        asm volatile("" : : "r"(frame) : "memory");  // the optimiser must leave it on the stack
        lowest = std::min(lowest, reinterpret_cast<std::uintptr_t>(frame));
        held = nullptr;
    }
    object_ptr held;
    friend velum::object_access;
    std::int32_t ref_count = 0;
};

TEST(nesting_of_objects, those_that_die_within_one_another_leave_an_eighth_of_the_stack) {
    on_stack(std::size_t{1} << 20U, [] {
        object_ptr chain;
        for (int i = 0; i < 5000; ++i) {
            velum::iptr<heavy> const around(new heavy);
            around->held = std::exchange(chain, object_ptr(around.get()));
        }
        std::uintptr_t const end = end_of_own_stack();
        auto const left = [end](std::uintptr_t place) { return place - end; };
        auto const start = heavy::lowest = reinterpret_cast<std::uintptr_t>(&chain);
        chain = nullptr;
        EXPECT_NEAR(static_cast<double>(left(heavy::lowest)), static_cast<double>(left(start) / 8), 6000);
        EXPECT_EQ(heavy::alive, 0);
    });
}

/// Drops what it holds on the stack of a fiber.
struct wanderer : velum::flat_t<wanderer, velum::i_unknown_t> {
    ~wanderer() override {
        on_foreign_stack(std::size_t{128} * 1024, [this] { held = nullptr; });
        EXPECT_EQ(panel_t::alive, 0) << "what dies on another stack doesn't wait for this one";
    }
    object_ptr held;
    friend velum::object_access;
    std::int32_t ref_count = 0;
};

TEST(nesting_of_objects, another_stack_has_a_destruction_of_its_own) {
    if (sanitized) {
        GTEST_SKIP() << "the sanitizer must be told of other stacks";
    }
    velum::iptr<wanderer> outer(new wanderer);
    outer->held = panel_t::make();
    outer = nullptr;
}

/// Drops what it holds when most of the stack is in use and no memory is left.
struct hungry : velum::flat_t<hungry, velum::i_unknown_t> {
    ~hungry() override {
        char frame[std::size_t{228} * 1024];
        asm volatile("" : : "r"(frame) : "memory");  // the optimiser must leave it on the stack
        heap_failure const failure(0, true);
        held = nullptr;
    }
    object_ptr held;
    friend velum::object_access;
    std::int32_t ref_count = 0;
};

TEST(nesting_of_objects, an_object_that_cannot_wait_dies_at_once) {
    int const alive = panel_t::alive;
    for (bool const knows_its_stack : {true, false}) {  // to ask the system for it takes memory
        on_stack(std::size_t{256} * 1024, [=] {
            std::istringstream nothing;
            velum::any_map map;
            knows_its_stack ? velum::read(nothing, map) : void();
            velum::iptr<hungry> outer(new hungry);
            outer->held = panel_t::make();
            outer = nullptr;
        });
    }
    EXPECT_EQ(panel_t::alive, alive);
}

}  // namespace
