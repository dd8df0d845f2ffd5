#include "exhaustion/scenario.hpp"
#include "support/bytes.hpp"
#include "wire/route.hpp"

namespace {

using namespace support;
using namespace velum;

struct reading : origin {
    explicit reading(std::string const& bytes, serializable const& into = {}) : origin(bytes), object(into) {}
    serializable object;
    object_ptr identity = identity_of(object);
    std::string name = "old";
    arrivals arrived{reader};
};

std::string const word = u32(0x10000), stored_text = u32(text.size()) + text;

void run_out_deserializing(std::string const& bytes, auto make, auto is_right) {
    run_out([&] { return reading(word + bytes, make()); }, [](auto& r) { r.object->deserialize(r.reader); },
            [&](auto& r, bool done) { return is_right(r.object, done); });
}

TEST(memory, that_runs_out_in_the_state_stage_leaves_what_was_read) {
    run_out_deserializing(
        stored_text, [] { return boxed_text("old"); },
        [](auto& object, bool done) { return text_in(object) == (done ? text : ""); });

    std::string const text_record = stored(boxed_text("")->clsid()) + word + stored_text;
    run_out_deserializing(
        u32(3) + stored_text + u32(2) + u32(0) + text_record + u32(1) + "y" + u32(0) + u32(1) + "z" + u32(1) + u32(0),
        [] {
            object_map const map = new_object_map();
            return map->set("old", graph.objects[1].get()), stored_form(map);
        },
        [](auto& object, bool done) {
            object_map const map(object, iid_unknown_map);
            return !map->get("old") && (map->get("z") ? map->get(text) == map->get("z") : !done);
        });

    run_out_deserializing(
        write_by(route::stream, any_map{{"a", text}, {"k", 1}}).bytes,
        [] {
            return stored_form(uany_map_obj_t::create({{"k", text}, {"old", text}}));
        },
        [](auto& object, bool done) {
            auto const& map = iptr<i_uany_map_t>(object, iid_uany_map)->map();
            return (map.at("k").type() == typeid(int)) == done && map.size() == (map.contains("a") ? 3 : 2) &&
                   (map.contains("a") || !done);
        });
}

TEST(memory, that_runs_out_in_a_reader_brings_nothing_incomplete) {
    auto const write_graph = [](serializable const& first) {
        return bytes_of([&](destination& to) { to.writer->write_object(first); });
    };
    std::string const all = write_graph(graph.objects[0]);
    run_out([&] { return reading(all); }, [](auto& r) { r.reader->read_object(r.object); },
            [&](auto& r, bool done) { return !done || write_graph(r.object) == all; });
    run_out([&] { return reading(all, graph.objects[1]); },  // of which the head is the beginning
            [](auto& r) { r.reader->read_object_header(nullptr, r.identity); },
            [](auto& r, bool done) { return (r.identity != identity_of(r.object)) == done; });
    run_out([] { return reading(stored_text); }, [](auto& r) { r.reader->read_string(r.name); },
            [](auto& r, bool done) { return r.name == (done ? text : ""); });
}

TEST(memory, that_runs_out_in_a_writer_leaves_a_beginning) {
    run_out_writing([](destination& to) { to.writer->write_object(graph.objects[0]); });
    run_out_writing([](destination& to) { to.writer->write_object_header(identity_of(graph.objects[0])); });
    run_out_writing([](destination& to) { to.writer->write_string(text); });
}

TEST(memory, that_runs_out_leaves_attributes_and_mapper) {
    run_out([] { return destination(); }, [](auto& to) { to.writer->attributes().emplace(text, text); },
            [](auto& to, bool done) { return to.writer->attributes().size() == (done ? 1 : 0); });

    std::string asked;
    auto const mapper = [&](std::string const& name) {
        return object_mapper_t([&asked, name](serializable const& object) { return asked = name, object; });
    };
    auto const make = [&] {
        auto to = std::make_unique<destination>();
        to->writer->set_object_mapper(mapper("old"));
        return to;
    };
    auto const act = [new_one = mapper("new")](auto& to) { to->writer->set_object_mapper(new_one); };
    run_out(make, act, [&](auto& to, bool done) {
        to->writer->write_object(nullptr);
        return asked == (done ? "new" : "old");
    });
}

}  // namespace
