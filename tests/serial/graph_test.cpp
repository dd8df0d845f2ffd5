#include "support/bytes.hpp"
#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace support;
using velum::iptr;

std::string const no_object = "std::runtime_error: object not deserialized yet";
std::string const no_class = "velum::i_object_factory_t::class_not_registered: object not registered in this factory";
std::string const not_rebuilt = "std::runtime_error: object is not deserializable";

std::string new_record(std::uint32_t id, velum::guid_t const& clsid, std::string const& stages, std::uint32_t tag = 2) {
    return u32(tag) + u32(id) + stored(clsid) + stages;
}

std::string new_node(std::uint32_t id, std::string const& name, std::string const& stages, std::uint32_t tag = 2) {
    return new_record(id, node::id, u32(name.size()) + name + stages, tag);
}

std::string const null = u32(0), to_0 = u32(1) + u32(0), to_1 = u32(1) + u32(1);

TEST(graph, the_mapper_stands_before_every_record) {
    auto const a = boxed_text("a"), b = boxed_text("b"), c = boxed_text("c");
    journal asked;
    auto const mapper = [&](serializable const& o) -> serializable {
        asked += !o ? "0" : text_in(o);
        return !o ? c : o == a ? b : o == b ? nullptr : o;
    };
    std::stringstream stream;
    auto const writer = writer_on(stream);
    writer->set_object_mapper(mapper);
    for (serializable const& each : {a, a, b, serializable(), c}) {
        writer->write_object(each);
    }
    EXPECT_EQ(asked, "aab0c");
    std::string const version = u32(0x10000), c_record = new_record(1, c->clsid(), version + u32(1) + "c");
    EXPECT_EQ(stream.str(), new_record(0, b->clsid(), version + u32(1) + "b") + to_0 + null + c_record + to_1);

    asked.clear();
    auto const reader = reader_on(stream);
    reader->set_object_mapper([&](serializable const&) { return asked += "m", boxed_text("instead"); });
    serializable first, second, none = a, fourth, unmapped;
    EXPECT_TRUE(reader->read_object(first) && reader->read_object(second) && reader->read_object(none));
    EXPECT_TRUE(first != second && !none);
    EXPECT_TRUE(reader->read_object(fourth));
    reader->set_object_mapper({});
    EXPECT_TRUE(reader->read_object(unmapped));
    EXPECT_EQ(asked, "mmm") << "at each reference again, and not at a null";
    EXPECT_EQ(text_in(unmapped), "c");
}

TEST(graph, the_head_alone_is_for_those_who_do_the_rest) {
    auto const text = boxed_text("t");
    std::stringstream stream;
    auto const writer = writer_on(stream), reader = reader_on(stream);
    for (object_ptr const& refused : {object_ptr(), identity_of(new_factory())}) {
        EXPECT_EQ(failure_of([&] { writer->write_object_header(refused); }),
                  "std::runtime_error: object not serializable");
    }
    EXPECT_EQ(stream.str(), "");
    writer->write_object_header(identity_of(text));
    writer->write_object_header(identity_of(text));
    writer->write_object(text);
    std::string const heads = new_record(0, text->clsid(), "") + new_record(1, text->clsid(), "");
    EXPECT_EQ(stream.str(), heads + to_1) << "a second head gives a second number";
    stream.str("\x09" + heads.substr(1) + to_1);

    journal calls;
    counting_object outer(calls, "outer");
    object_ptr first, second;
    serializable third;
    EXPECT_TRUE(reader->read_object_header(nullptr, first) && reader->read_object_header(&outer, second));
    EXPECT_TRUE(first != second && identity_of(first) == first && references(second) == 2);
    EXPECT_TRUE(reader->read_object(third) && third && outer.references == 1) << "its sides count on the outer object";
}

std::string read_one(iptr<velum::i_serializer_t> const& reader, serializable& into) {
    bool read = false;
    std::string const failure = failure_of([&] { read = reader->read_object(into); });
    return !failure.empty() ? failure : !read ? "refused" : into ? "read" : "null";
}

TEST(graph, what_a_record_leaves_behind) {
    velum::guid_t const nobody, nothing("00000000000000000000000000000001"), mute("00000000000000000000000000000002");
    auto const factory = node_factory();
    factory->register_class(nothing, {}, {}, [](auto&&...) { return true; }, {});
    factory->register_class(mute, {}, {},
                            [](auto&&, auto&&, object_ptr& out) { return out = new_factory().get(), false; }, {});
    struct {
        std::string record, result, reference;
    } const rows[] = {
        {to_0, no_object, no_object},
        {new_record(0, nobody, ""), no_class, no_object},
        {new_record(0, nothing, ""), not_rebuilt, no_object},
        {new_record(0, mute, ""), not_rebuilt, "refused"},
        {new_node(0, "n", null + null), "read", "read"},
        {new_node(0, "n", null + null, 5), "read", "read"},
        {new_node(0, "n", null + null, 0xFFFFFFFF), "read", "read"},
        {new_node(1, "n", null + null), "read", no_object},
        {new_node(0, "n", to_1), no_object, no_object},
        {new_node(0, "n", null + new_node(1, "in", null + null) + u32(1) + u32(2)), no_object, "read"},
        {new_node(0, "n", null + new_record(1, nobody, "")), no_class, "read"},
    };
    for (auto const& [record, result, reference] : rows) {
        std::stringstream stream(record + to_0 + null);
        auto const reader = reader_on(stream, factory);
        serializable into = boxed_text("before");
        EXPECT_EQ(read_one(reader, into), result);
        EXPECT_EQ(stream.tellg(), record.size()) << result;
        EXPECT_EQ(read_one(reader, into), reference);
        EXPECT_EQ(static_cast<bool>(into), reference == "read");
        EXPECT_EQ(read_one(reader, into), "null");
    }
}

TEST(graph, a_number_that_comes_twice_means_the_later_object) {
    for (std::uint32_t const number : {0U, 7U}) {  // that of the first object, and one that no writer would choose
        std::stringstream stream(new_node(number, "a", null + null) + new_node(number, "b", null + null) + u32(1) +
                                 u32(number) + u32(1) + u32(number + 1));
        auto const reader = reader_on(stream, node_factory());
        serializable a, b, c;
        EXPECT_TRUE(reader->read_object(a) && reader->read_object(b) && reader->read_object(c));
        EXPECT_TRUE(a != b && b == c && as_node(c).name == "b");
        EXPECT_EQ(read_one(reader, a), no_object);
    }
}

}  // namespace
