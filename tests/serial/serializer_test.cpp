#include "support/bytes.hpp"
#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"
#include "support/recording_stream.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

using namespace support;

std::string const hi = from_hex(
    "02000000 00000000 43d4ff6a 038f4d67 b1938d21 b14da8bc 00000100 02000000 6869"
    "01000000 00000000");

// One field is one call, and the version isn't stored.
TEST(serializer, records_have_these_calls_in_both_directions) {
    object_map const map = new_object_map();
    map->set("k", identity_of(boxed_text("hi")));
    recorded const stream(new recording_stream);
    auto const writer = writer_on(stream.get(), 7), reader = reader_on(stream.get(), new_factory(), 8);
    EXPECT_TRUE(writer->version() == 7 && reader->version() == 8);
    for (auto const* const calls : {"4 4 16 4 4 4 1 4 4 16 4 4 2 ", "4 4 "}) {  // the second time a reference
        serializable back;
        writer->write_object(stored_form(map));
        EXPECT_EQ(std::exchange(stream->calls, ""), calls);
        EXPECT_TRUE(reader->read_object(back) && text_in(object_map(back, velum::iid_unknown_map)->get("k")) == "hi");
        EXPECT_EQ(std::exchange(stream->calls, ""), calls);
    }
}

TEST(serializer, texts_bytes_and_positions) {
    recorded const stream(new recording_stream);
    auto const writer = writer_on(stream.get()), reader = reader_on(stream.get(), nullptr);
    writer->write_string("");
    writer->write_string("abc");
    writer->write("xyz", 2);
    writer->write_object(nullptr);
    EXPECT_EQ(writer->tell(), 17);
    writer->seek(0, 0);
    writer->flush();
    EXPECT_EQ(stream->bytes, from_hex("00000000 03000000 616263 7879 00000000"));
    EXPECT_EQ(std::exchange(stream->calls, ""), "4 4 3 2 4 tell seek flush ");
    std::string text = "before", other = "before";
    serializable read = boxed_text("before");
    char bytes[] = "...";
    reader->read_string(text);
    reader->read_string(other);
    reader->read(bytes, 2);
    EXPECT_TRUE(reader->read_object(read) && !read);
    EXPECT_EQ(reader->tell(), 17);
    reader->seek(0, 0);
    reader->flush();
    EXPECT_EQ(text + "|" + other + "|" + bytes, "|abc|xy.");
    EXPECT_EQ(stream->calls, "4 4 3 2 4 tell seek ");
}

TEST(serializer, refuses_what_it_has_no_stream_or_factory_for) {
    recorded const stream(new recording_stream(hi));
    serializer_ptr bare;
    EXPECT_TRUE(velum::basic_serializer_t::create(nullptr, 5, velum::iid_serializer, &bare));
    auto const writer = writer_on(stream.get()), reader = reader_on(stream.get(), nullptr);
    bare->attributes()["a"] = 1;
    bare->flush();
    EXPECT_TRUE(bare->version() == 0 && std::as_const(*bare).attributes().size() == 1);
    std::string text;
    serializable read;
    object_ptr built;
    std::pair<std::function<void()>, char const*> const rows[] = {
        {[&] { reader->write_object(nullptr); }, "output stream"},
        {[&] { reader->write_string(""); }, "output stream"},
        {[&] { bare->write("", 0); }, "output stream"},
        {[&] { writer->read_object(read); }, "input stream"},
        {[&] { writer->read_object_header(nullptr, built); }, "input stream"},
        {[&] { writer->read_string(text); }, "input stream"},
        {[&] { bare->tell(); }, "stream"},
        {[&] { bare->seek(0, 0); }, "stream"},
        {[&] { reader->read_object(read); }, "object factory"}};
    for (auto const& [act, lacks] : rows) {
        EXPECT_EQ(failure_of(act), std::string("std::runtime_error: serializer has no ") + lacks);
    }
}

// Each holder leaves its name when it goes.
TEST(serializer, lets_go_in_its_order) {
    journal gone;
    auto const last_words = [&gone](char const* name) {
        return std::shared_ptr<void>(&gone, [name](void* to) { *static_cast<journal*>(to) += name; });
    };
    for (bool const writes : {true, false}) {
        recorded stream(new recording_stream);
        object_factory factory = new_factory();
        velum::iptr<node> written(new node);
        serializer_ptr s = writes ? writer_on(stream.get()) : reader_on(stream.get(), factory);
        factory->register_class(node::id, {}, {{"", last_words("factory ")}}, &node::rebuild, {});
        writer_on(stream.get())->write_object(written.get());
        serializable object = written.get();
        writes ? s->write_object(object) : void(s->read_object(object));
        as_node(object).last_words = last_words("object ");
        s->attributes()["a"] = last_words("attributes ");
        s->set_object_mapper([last = last_words("mapper ")](serializable const& o) { return o; });
        stream->last_words = last_words("stream ");
        stream = nullptr;
        factory = nullptr;
        written = nullptr;
        object = nullptr;
        gone.clear();
        s = nullptr;
        EXPECT_EQ(gone, writes ? "object mapper attributes stream " : "object mapper attributes factory stream ");
    }
}

}  // namespace
