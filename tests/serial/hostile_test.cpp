#include "support/bytes.hpp"
#include "support/failure.hpp"
#include "support/memory_limit.hpp"
#include "support/node.hpp"
#include "support/recording_stream.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>

namespace {

using namespace support;
using velum::iptr;

/// The stored form of one small graph of each kind.
std::vector<std::string> small_graphs() {
    auto const text = boxed_text("some text");
    object_map const own = new_object_map(), inner = new_object_map(), outer = new_object_map();
    own->set("self", own.get());
    inner->set("text", identity_of(text));
    outer->set("inner", inner.get());
    std::vector<boost::any> const vector{identity_of(inner), object_ptr(), std::string("s")};
    auto const values = velum::uany_map_obj_t::create({{"text", identity_of(text)}, {"vector", vector}});
    iptr<node> const first(new node("first")), second(new node("second"));
    first->origin = stored_form(values);
    first->links = {second.get(), text};
    second->links = {first.get()};
    std::vector<std::string> graphs;
    for (serializable const& root :
         {text, stored_form(own), stored_form(outer), stored_form(values), serializable(first.get())}) {
        std::ostringstream stream;
        auto const writer = writer_on(stream);
        writer->write_object(root);
        writer->write_object(root);
        graphs.push_back(stream.str());
    }
    own->set("self", nullptr);
    second->links.clear();
    return graphs;
}

/// A factory that keeps what it builds.
object_factory keeping_factory(std::vector<object_ptr>& built) {
    object_ptr made;
    velum::basic_object_factory_t::create(nullptr, velum::iid_unknown, &made);
    auto const own_classes = std::move(dynamic_cast<velum::basic_object_factory_t&>(*made));
    object_factory const factory(made, velum::iid_object_factory), known = node_factory();
    for (velum::guid_t const& id : known->registered_classes()) {
        auto const rebuild = [&built, known, id](auto const& outer, serializer_ptr const& s, object_ptr& out) {
            return known->deserialize_object(id, outer, s, out) && (built.push_back(out), true);
        };
        factory->register_class(id, {}, {}, rebuild, {});
    }
    return factory;
}

// Damaged graphs may lead back to themselves.
void take_apart(std::vector<object_ptr> const& built) {
    std::istringstream nothing;
    for (object_ptr const& each : built) {
        iptr<velum::i_uany_map_t> const values(each, velum::iid_uany_map);
        values ? const_cast<velum::uany_map&>(values->map()).clear()
               : stored_form(each)->deserialize(reader_on(nothing, nullptr));
    }
}

/// Reads two objects and gives what it failed with, or what is written again of them.
std::string outcome_of(std::string const& bytes, std::ios::iostate exceptions = std::ios::goodbit) {
    std::vector<object_ptr> built;
    std::istringstream stream(bytes);
    stream.exceptions(exceptions);
    std::ostringstream again;
    std::string const failure = failure_of([&] {
        auto const reader = reader_on(stream, keeping_factory(built)), writer = writer_on(again);
        for (serializable read : {nullptr, nullptr}) {
            reader->read_object(read);
            writer->write_object(read);
        }
    });
    take_apart(built);
    return failure.empty() ? "read: " + again.str() : failure;
}

// What doesn't arrive is zero, wherever the end falls, unless the stream speaks up.
TEST(hostile_graph, cut_short_reads_as_zeros_or_throws_what_the_stream_throws) {
    for (std::string const& bytes : small_graphs()) {
        EXPECT_EQ(outcome_of(bytes, std::ios::failbit), "read: " + bytes);
        for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
            std::string const arrived = bytes.substr(0, cut);
            EXPECT_EQ(outcome_of(arrived), outcome_of(arrived + std::string(4096, '\0'))) << cut << " of " << bytes;
            EXPECT_NE(outcome_of(arrived, std::ios::failbit).find("basic_ios::clear"), std::string::npos)
                << cut << " of " << bytes;
        }
    }
}

std::string const too_long = "velum::length_exceeds_stream: length exceeds the stream";

TEST(hostile_graph, damage_ends_in_a_documented_way_and_takes_little_memory) {
    std::set<std::string> const documented{
        "read: ",
        "std::__ios_failure: ",
        "velum::unknown_type: ",
        too_long,
        "velum::i_object_factory_t::class_not_registered: object not registered in this factory",
        "std::runtime_error: object not deserialized yet",
        "std::length_error: vector too long",
        "std::runtime_error: memory allocation failed"};
    auto const graphs = small_graphs();
    std::mt19937 random(20240607);
    auto const below = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    std::set<std::string> met;
    memory_limit const limit(128 * mebibyte);  // with what is written again
    for (int i = 0; i < 6000; ++i) {
        std::string bytes = graphs[below(graphs.size())];
        for (std::size_t n = 1 + below(3); n != 0; --n) {
            char const values[] = {'\0', '\1', '\2', '\x7F', '\xFF', static_cast<char>(random())};
            bytes[below(bytes.size())] = values[below(6)];
        }
        std::string const outcome = outcome_of(bytes, i % 2 == 0 ? std::ios::goodbit : std::ios::failbit);
        auto const begins = [&](std::string const& text) { return outcome.starts_with(text); };
        auto const found = std::find_if(documented.begin(), documented.end(), begins);
        ASSERT_NE(found, documented.end()) << outcome << " of " << testing::PrintToString(bytes);
        met.insert(*found);
    }
    EXPECT_GE(met.size(), 6U);
}

std::string head(std::uint32_t id, velum::guid_t const& clsid) {
    return u32(2) + u32(id) + stored(clsid);
}

std::string failure_of_reading(std::string const& bytes, bool can_tell, bool stands_still) {
    recorded const stream(new recording_stream(bytes));
    stream->can_tell = can_tell;
    stream->stands_still = stands_still;
    serializable read;
    std::string const failure = failure_of([&] { reader_on(stream.get(), node_factory())->read_object(read); });
    return failure;
}

// Also where nobody knows the position.
TEST(hostile_graph, promises_take_no_memory) {
    std::string const four_gib = u32(0xFFFFFFFF), version = u32(0x10000);
    velum::guid_t const text = boxed_text("")->clsid(), map = stored_form(new_object_map())->clsid();
    std::string nested, there;
    for (std::uint32_t id = 0; id < 1000; ++id) {
        nested += head(id, map) + version + u32(200000) + u32(1) + "k";
    }
    for (std::uint32_t i = 0; i < 300000; ++i) {
        there += u32(4) + u32(i) + u32(0);
    }
    std::string const a_map = head(0, map) + version;
    std::uint32_t const most = 16 * mebibyte / 64;  // entries may be missing, and one that is empty may be there
    std::pair<std::string, std::string> const rows[] = {
        {head(0, text) + version + four_gib + "abc", too_long},
        {head(0, node::id) + four_gib, too_long},
        {a_map + u32(1) + four_gib + "abc", too_long},
        {a_map + four_gib, too_long},
        {a_map + four_gib.substr(0, 3), too_long},
        {a_map + four_gib + there, too_long},
        {a_map + u32(most + 2), too_long},
        {a_map + u32(most), ""},
        {a_map + u32(300000) + there, ""},
        {nested, too_long},
        {a_map + u32(1) + u32(0) + head(1, velum::uany_map_obj_t::_clsid) + version + u32(1) + four_gib, too_long},
    };
    for (auto const& [bytes, failure] : rows) {
        memory_limit const limit(48 * mebibyte + bytes.size());
        for (auto const& [can_tell, stands_still] : {std::pair(true, false), {false, false}, {true, true}}) {
            EXPECT_EQ(failure_of_reading(bytes, can_tell, stands_still), failure)
                << testing::PrintToString(bytes.substr(0, 99));
        }
    }
}

}  // namespace
