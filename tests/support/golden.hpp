#pragma once

#include "support/node.hpp"
#include "support/samples.hpp"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// A stored form as it stands in a committed file.
struct golden {
    std::string name;
    std::string bytes;
    int tag = 0;      ///< of the one value, where there is one
    int objects = 0;  ///< how many records stand in a row; otherwise it is a map
};

inline golden golden_map(std::string const& name, velum::any_map const& map, int tag = 0) {
    std::ostringstream stream;
    velum::write(writer_on(stream), map);
    return {name, stream.str(), tag, 0};
}

inline golden golden_objects(std::string const& name, std::vector<serializable> const& objects) {
    std::ostringstream stream;
    auto const writer = writer_on(stream);
    for (serializable const& object : objects) {
        writer->write_object(object);
    }
    return {name, stream.str(), 0, static_cast<int>(objects.size())};
}

/// What the committed files hold: each tag, each kind of record, each class, and all of it mixed. Maps whose order
/// changes from run to run have one entry.
inline std::vector<golden> goldens() {
    using velum::any_map;
    using anys = std::vector<boost::any>;
    std::vector<golden> all;
    for (sample const& row : samples()) {
        if (!all.empty() && all.back().tag == row.tag) {
            all.pop_back();
        }
        all.push_back(golden_map("tag_" + std::to_string(row.tag), {{"key", row.value}}, row.tag));
    }

    serializable const text = boxed_text(std::string("some\0text", 9));
    object_map const self = new_object_map(), map = new_object_map();
    self->set("self", self.get());
    map->set("text", identity_of(text));
    auto const values = [](boost::any const& value) {
        return stored_form(velum::uany_map_obj_t::create({{"value", value}}));
    };
    serializable const shared = values(anys{identity_of(text), object_ptr(), identity_of(text)});
    velum::iptr<node> const first(new node("first")), second(new node("second"));
    first->origin = shared;
    first->links = {second.get(), text};
    second->links = {first.get(), stored_form(self)};
    all.push_back(golden_objects("null", {nullptr}));
    all.push_back(golden_objects("reference", {text, text}));
    all.push_back(golden_objects("boxed_string", {text}));
    all.push_back(golden_objects("boxed_object_map", {stored_form(map)}));
    all.push_back(golden_objects("boxed_value_map", {values(6)}));
    all.push_back(golden_objects("shared_object", {shared}));
    all.push_back(golden_objects("cycle", {stored_form(self)}));
    all.push_back(golden_objects("graph", {first.get(), nullptr, second.get()}));

    any_map plain;
    for (sample const& row : samples()) {
        plain.emplace(std::to_string(row.tag), row.value);
    }
    all.push_back(
        golden_map("mixed", {{"graph", anys{identity_of(first), identity_of(map), 1.5}},
                             {"plain", plain},
                             {"tree", std::vector<any_map>{{}, {{"in", any_map{{"deep", anys{boost::any(anys{7})}}}}}}},
                             {"value", identity_of(values(velum::ustring("name")))}}));
    second->links.clear();
    self->set("self", nullptr);
    return all;
}

}  // namespace support
