#include "support/bytes.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"
#include "support/stack.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace support;

std::string const too_deep = "std::runtime_error: nesting too deep";

serializable node_around(serializable const& inner, bool early) {
    velum::iptr<node> const made(new node);
    made->links.resize(inner && !early ? 1 : 0, inner);
    made->origin = early ? inner : nullptr;
    return made.get();
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
    for (auto const around : kinds) {
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
                EXPECT_EQ(failure_of([&] { reader_on(stream, node_factory())->read_object(chain); }), "");
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
        for (auto const around : kinds) {
            EXPECT_EQ(failure_of_writing(chain_of(around, 1000000), bytes), too_deep) << &around - kinds;
        }
        bytes.clear();
        for (std::uint32_t id = 0; id < 1000000; ++id) {
            bytes += u32(2) + u32(id) + stored(node::id) + u32(0) + u32(0);
        }
        std::istringstream stream(bytes);
        serializable chain;
        EXPECT_EQ(failure_of([&] { reader_on(stream, node_factory())->read_object(chain); }), too_deep);
    });
}

// Each object refers to the one before it, so none is within another in the stream.
TEST(nesting_of_objects, a_flat_chain_of_a_million_takes_no_stack) {
    on_stack(std::size_t{256} << 10U, [] {
        std::stringstream stream;
        auto const writer = writer_on(stream), reader = reader_on(stream, node_factory());
        serializable last, back;
        for (int i = 0; i < 1000000; ++i) {
            last = node_around(serializable(last), false);
            writer->write_object(last);
        }
        for (int i = 0; i < 1000000; ++i) {
            reader->read_object(back);
        }
        EXPECT_EQ(as_node(back).links.size(), 1U);
    });
}

}  // namespace
