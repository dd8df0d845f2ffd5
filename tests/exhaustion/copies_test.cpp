#include "exhaustion/scenario.hpp"
#include "support/recording_stream.hpp"

#include <optional>

namespace {

using namespace support;
using namespace velum;

/// The controlling unknown of objects that aren't on the heap.
class immortal : public i_unknown_t {
    bool query_interface(guid_t const&, void*) override { return false; }
    std::int32_t add_ref() override { return 2; }
    std::int32_t release() override { return 1; }
};
immortal control;

class open_map : public uany_map_obj_t {
public:
    explicit open_map(uany_map const& map) : uany_map_obj_t(map) {}
};

template <class Object>
struct copying {
    Object source, target;
    std::optional<Object> made = {};
};

/// A copy that fails leaves the source as it was, and the target too or, where it `drops`, without content.
void run_out_copying(auto make, auto fill, auto content, bool drops = false) {
    using object = decltype(make());
    auto const prepare = [=] {
        copying<object> c{make(), make()};
        fill(c.source);
        return c;
    };
    auto model = prepare();
    auto const full = content(model.source), other = content(model.target);
    run_out(
        prepare, [](auto& c) { c.made.emplace(object(c.source)); },
        [=](auto& c, bool done) { return content(c.source) == full && (done ? content(*c.made) == full : !c.made); });
    run_out(
        prepare, [](auto& c) { c.target = std::as_const(c.source); },
        [=](auto& c, bool done) {
            auto const now = content(c.target);
            return content(c.source) == full && (done ? now == full : now == other || (drops && now == 0));
        });
}

TEST(memory, that_runs_out_leaves_copies_as_they_were) {
    auto const string_in = [](auto& o) { return support::side_of<i_string_t>(o, iid_string); };
    auto const map_in = [](auto& o) { return support::side_of<i_unknown_map_t>(o, iid_unknown_map); };
    auto const classes_in = [](auto& o) { return support::side_of<i_object_factory_t>(o, iid_object_factory); };
    auto const count = [=](auto& o) { return classes_in(o)->registered_classes().size(); };
    auto const add = [=](auto& o) { classes_in(o)->register_class(node::id, {}, {{text, text}}, {}, {}); };
    run_out_copying([] { return basic_string_t(&control, ""); }, [=](auto& o) { string_in(o)->string() = text; },
                    [=](auto& o) { return string_in(o)->string().size(); });
    run_out_copying([] { return basic_unknown_map_t(&control); },
                    [=](auto& o) { map_in(o)->set("k", graph.objects[0].get()); },
                    [=](auto& o) { return map_in(o)->get("k") ? 1 : 0; });
    run_out_copying([] { return open_map({}); },
                    [](auto& o) {
                        o = open_map({{"k", text}});
                    },
                    [](auto& o) { return o.map().size(); });
    // A null in a list of commands is told when it is its turn.
    run_out_copying([] { return multi_command_t({}); }, [](auto& o) { o = multi_command_t({nullptr}); },
                    [](auto& o) { return failure_of([&] { o.do_it(); }).size(); });
    run_out_copying([] { return basic_object_factory_t(&control); }, add, count, true);
    run_out_copying([] { return multi_object_factory_t(&control, {}); }, add, count);
}

TEST(memory, that_runs_out_leaves_a_serializer_without_content_at_most) {
    auto const in = [](auto& o) { return support::side_of<i_serializer_t>(o, iid_serializer); };
    auto const copying_after = [=](auto make, auto use) {
        auto const fill = [=](auto& o) {
            in(o)->attributes()[text] = text;
            in(o)->set_object_mapper([](serializable const& object) { return object; });
            use(in(o));
        };
        run_out_copying(
            make, fill, [=](auto& o) { return in(o)->attributes().size(); }, true);
    };
    std::string const bytes = bytes_of([](destination& to) { to.writer->write_object(graph.objects[1]); });
    auto const reader = [=] { return basic_serializer_t(&control, new recording_stream(bytes), new_factory(), 0); };
    auto const writer = [] {
        iptr<i_ostream_t> stream(new recording_stream);
        return basic_serializer_t(&control, stream, 0);
    };
    copying_after(reader, [](auto const& s) {
        serializable object;
        s->read_object(object);
    });
    copying_after(writer, [](auto const& s) { s->write_object(graph.objects[1]); });
}

}  // namespace
