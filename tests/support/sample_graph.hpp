#pragma once

#include "support/arrivals.hpp"

#include <vector>

namespace support {

/// A graph of all boxed classes and of nodes with both stages, in which objects are shared and lead to themselves.
struct sample_graph {
    /// In the order in which a writer comes to them; all are within the first.
    std::vector<serializable> objects;

    sample_graph() {
        velum::iptr<node> const root(new node("root")), leaf(new node("leaf"));
        object_map const own = new_object_map();
        own->set("self", identity_of(own));
        auto const values = velum::uany_map_obj_t::create({{"leaf", object_ptr(leaf.get())}});
        objects = {root.get(), boxed_text("text"), stored_form(own), stored_form(values), leaf.get()};
        root->origin = objects[1];
        root->links = {objects[2], root.get(), objects[3], objects[1], leaf.get()};
    }
    sample_graph(sample_graph const&) = delete;
    ~sample_graph() {
        for (serializable const& each : objects) {
            take_apart(each.get());
        }
    }
};

}  // namespace support
