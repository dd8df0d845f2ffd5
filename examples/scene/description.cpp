#include "description.hpp"

#include "document.hpp"
#include "lookup.hpp"

#include <velum/boxed/string.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace scene {
namespace {

using object = velum::iptr<velum::i_unknown_t>;  // what all interfaces of an object answer to `iid_unknown`
using links = std::vector<std::pair<std::string, object>>;

template <class Interface>
void add_link(links& to, std::string const& name, velum::iptr<Interface> const& target) {
    if (target) {
        to.emplace_back(name, target.template as<velum::i_unknown_t>());
    }
}

velum::any_map values_of(object const& of) {
    if (auto const node = of.try_as<i_node_t>()) {
        return values_of(*node);
    }
    if (auto const mesh = of.try_as<i_mesh_t>()) {
        return values_of(mesh->data());
    }
    velum::any_map values;
    if (auto const map = of.try_as<velum::i_uany_map_t>()) {
        values.insert(map->map().begin(), map->map().end());
    }
    if (auto const text = of.try_as<velum::i_string_t>()) {
        values["text"] = text->string();
    }
    return values;
}

class describer {
public:
    explicit describer(velum::iptr<velum::i_unknown_map_t> const& document)
        : parts_(document),
          document_(document.as<velum::i_unknown_t>()),
          materials_(parts_.materials.try_as<velum::i_unknown_t>()) {}

    description describe() {
        number_of(document_);
        while (!left_.empty()) {
            link const next = left_.back();
            left_.pop_back();
            int const number = number_of(next.target);
            lookup<std::vector<velum::any_map>>(objects_[next.owner], "links")[next.place]["object"] = number;
        }
        return std::move(objects_);
    }

private:
    struct link {
        std::size_t owner;
        std::size_t place;
        object target;
    };

    int number_of(object const& of) {
        auto const [entry, is_new] = numbers_.emplace(of, static_cast<int>(objects_.size()));
        if (is_new) {
            add(of);
        }
        return entry->second;
    }

    void add(object const& of) {
        links const targets = links_of(of);
        std::vector<velum::any_map> rows;
        for (auto const& [name, target] : targets) {
            rows.push_back({{"name", name}});
        }
        for (std::size_t i = targets.size(); i-- != 0;) {  // the first is to be the next
            left_.push_back({objects_.size(), i, targets[i].second});
        }
        velum::any_map& added = objects_.emplace_back();
        added["values"] = values_of(of);
        added["links"] = std::move(rows);
    }

    links links_of(object const& of) const {
        links found;
        if (of == document_) {
            add_link(found, "info", parts_.info);
            add_link(found, "materials", parts_.materials);
            add_link(found, "note", parts_.note);
            add_link(found, "root", parts_.root);
        } else if (of == materials_) {
            for (std::string const& name : parts_.material_names()) {
                add_link(found, name, parts_.material(name));
            }
        } else if (auto const mesh = of.try_as<i_mesh_t>()) {
            add_link(found, "material", mesh->material());
        } else if (auto const node = of.try_as<i_node_t>()) {
            add_link(found, "mesh", node->mesh());
            for (auto const& child : node->children()) {
                add_link(found, '[' + std::to_string(found.size() - (node->mesh() ? 1 : 0)) + ']', child);
            }
        }
        return found;
    }

    document_parts parts_;
    object document_;
    object materials_;
    description objects_;
    std::map<object, int> numbers_;
    std::vector<link> left_;
};

}  // namespace

description describe(velum::iptr<velum::i_unknown_map_t> const& document) {
    return describer(document).describe();
}

}  // namespace scene
