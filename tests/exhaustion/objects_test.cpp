#include "exhaustion/scenario.hpp"
#include "support/panel.hpp"

#include <utility>

namespace {

using namespace support;
using namespace velum;

guid_t const clsid_text = boxed_text("")->clsid();

object_factory composite_of(object_factory const& member) {
    object_factory composite;
    multi_object_factory_t::create(nullptr, {member}, iid_object_factory, &composite);
    return composite;
}

/// Makes an object into a slot that holds another.
void run_out_making(object_ptr const& outer, auto make) {
    object_ptr const old = graph.objects[1].get();
    run_out([&] { return std::pair(old, false); }, [&](auto& slot) { slot.second = make(outer, slot.first); },
            [&](auto& slot, bool done) { return slot.second == done && (slot.first != old) == done; });
}

TEST(memory, that_runs_out_makes_no_object) {
    boost::shared_ptr<std::stringstream> const file(new std::stringstream);
    iptr<i_ostream_t> stream;
    basic_ostream_t::create(nullptr, file, iid_ostream, &stream);
    object_factory const factory = node_factory(), composite = composite_of(factory);
    for (object_ptr const& outer : {object_ptr(), identity_of(boxed_text("outer"))}) {
        auto const making = [&](auto make) { run_out_making(outer, make); };
        making([](auto& o, auto& out) { return basic_string_t::create(o, text, iid_unknown, &out); });
        making([](auto& o, auto& out) { return basic_unknown_map_t::create(o, iid_unknown, &out); });
        making([&](auto& o, auto& out) { return basic_istream_t::create(o, file, iid_unknown, &out); });
        making([&](auto& o, auto& out) { return basic_ostream_t::create(o, file, iid_unknown, &out); });
        making([&](auto& o, auto& out) { return basic_serializer_t::create(o, {}, factory, 1, iid_unknown, &out); });
        making([&](auto& o, auto& out) { return basic_serializer_t::create(o, stream, 1, iid_unknown, &out); });
        making([](auto& o, auto& out) { return basic_serializer_t::create(o, 1, iid_unknown, &out); });
        making([](auto& o, auto& out) { return basic_object_factory_t::create(o, iid_unknown, &out); });
        making([&](auto& o, auto& out) { return multi_object_factory_t::create(o, {factory}, iid_unknown, &out); });
        for (object_factory const& f : {factory, composite}) {
            making([&](auto& o, auto& out) { return f->create_object(clsid_text, o, nullptr, iid_unknown, &out); });
            making([&](auto& o, auto& out) { return f->deserialize_object(clsid_text, o, nullptr, out); });
        }
        for (auto* const f : {&basic_string_t::create_function, &basic_unknown_map_t::create_function,
                              &basic_istream_t::create_function, &basic_ostream_t::create_function,
                              &basic_serializer_t::create_function, &basic_object_factory_t::create_function,
                              &multi_object_factory_t::create_function}) {
            making([&](auto& o, auto& out) { return f(o, nullptr, iid_unknown, &out); });
        }
        for (auto* const f : {&basic_string_t::deserialize_function, &basic_unknown_map_t::deserialize_function}) {
            making([&](auto& o, auto& out) { return f(o, nullptr, out); });
        }
    }
}

TEST(memory, that_runs_out_makes_no_object_that_cannot_be_a_part) {
    uany_map const map{{"k", text}};
    auto const making = [&](auto make) { run_out_making(nullptr, make); };
    making([&](auto&, auto& out) { return out = identity_of(uany_map_obj_t::create(map)), true; });
    making([](auto& o, auto& out) { return uany_map_obj_t::create_function(o, nullptr, iid_unknown, &out); });
    making([](auto& o, auto& out) { return uany_map_obj_t::deserialize_function(o, nullptr, out); });
    making([](auto&, auto& out) { return out = panel_t::make(), panel_t::alive == 1; });
    making([](auto&, auto& out) { return out = identity_of(iptr<i_command_t>(new multi_command_t({nullptr}))), true; });
}

// A class whose registration failed can be registered again.
TEST(memory, that_runs_out_leaves_a_class_unregistered) {
    int inits = 0;
    create_function_t const create = &node::create_function;
    deserialize_function_t const rebuild = &node::rebuild;
    init_function_t const init = [&inits, name = text] { inits += name.empty() ? 0 : 1; };
    any_map const record{
        {"clsid", node::id}, {"create_function", create}, {"deserialize_function", rebuild}, {"init_function", init}};
    for (int const kind : {0, 1, 2, 3}) {
        bool const is_composite = kind / 2 != 0, by_record = kind % 2 != 0;
        auto const add = [&](object_factory& f) {
            by_record ? f->register_class(record) : f->register_class(node::id, create, record, rebuild, init);
        };
        auto const is_right = [&](object_factory& f, bool done) {
            bool const is_shown = f->registered_classes().contains(node::id);
            bool const is_new = failure_of([&] { f->register_class(node::id, create, {}, {}, {}); }).empty();
            object_ptr made;
            return std::exchange(inits, 0) == (done ? 1 : 0) && (is_shown == done || is_composite) && is_new != done &&
                   f->create_object(node::id, nullptr, nullptr, iid_unknown, &made);
        };
        run_out([=] { return is_composite ? composite_of(new_factory()) : new_factory(); }, add, is_right);
    }
}

TEST(memory, that_runs_out_leaves_an_object_map_without_a_new_key) {
    auto const make = [] {
        object_map const map = new_object_map();
        map->set("old", graph.objects[1].get());
        return map;
    };
    run_out(
        make, [](auto& map) { map->set(text, graph.objects[0].get()); },
        [](auto& map, bool done) { return static_cast<bool>(map->get(text)) == done && map->get("old"); });
}

}  // namespace
