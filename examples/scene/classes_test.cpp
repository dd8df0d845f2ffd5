// classes_test MODULE: what the scene's classes and those of the module break of the object protocol.

#include "classes.hpp"
#include "mesh.hpp"
#include "node.hpp"

#include <velum/testing/conformance.hpp>

#include <iostream>

namespace {

velum::iptr<velum::i_unknown_t> sample() {
    scene::mesh_data data;
    data.name = "mesh";
    auto const material = velum::uany_map_obj_t::create({{"shininess", 1.0F}});
    auto const mesh = velum::make<scene::mesh_t>(data, material).as<scene::i_mesh_t>();
    auto const root = velum::make<scene::node_t>("root").as<scene::i_node_t>();
    root->add(velum::make<scene::node_t>("child", mesh).as<scene::i_node_t>());
    return root.as<velum::i_unknown_t>();
}

}  // namespace

int main(int /*argc*/, char** argv) {
    plugin::module const module(argv[1]);
    auto const factory = scene::make_factory(&module);
    velum::conformance::findings found;
    for (velum::guid_t const& clsid : factory->registered_classes()) {
        velum::conformance::add(found, velum::conformance::check_class(factory, clsid));
        velum::iptr<velum::i_unknown_t> made;
        factory->create_object(clsid, {}, {}, velum::iid_unknown, &made);
        velum::conformance::add(found, velum::conformance::check_round_trip(made, factory));
    }
    velum::conformance::add(found, velum::conformance::check_round_trip(sample(), factory));
    for (std::string const& finding : found) {
        std::cerr << finding << '\n';
    }
    return found.empty() ? 0 : 1;
}
