#pragma once

#include "support/serializers.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace support {

using object_ptr = velum::iptr<velum::i_unknown_t>;
using serializable = velum::iptr<velum::i_serializable_t>;
using object_map = velum::iptr<velum::i_unknown_map_t>;

/// A class as another module makes it, with both stages: the construction stage has a name and an object, the state
/// stage has objects up to a null.
class node : public velum::flat_t<node, velum::i_serializable_t> {
public:
    static inline velum::guid_t const id{"{9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3}"};

    explicit node(std::string const& text = {}) : name(text) {}

    std::string name;
    serializable origin;
    std::vector<serializable> links;
    std::shared_ptr<void> last_words;  ///< goes with the node

    velum::guid_t clsid() const override { return id; }

    void serialize_obj(serializer_ptr const& s) const override {
        s->write_string(name);
        s->write_object(origin);
    }

    static bool rebuild(object_ptr const&, serializer_ptr const& s, object_ptr& out) {
        velum::iptr<node> const made(new node);
        s->read_string(made->name);
        s->read_object(made->origin);
        return out = made.get(), true;
    }

    void serialize(serializer_ptr const& s) const override {
        for (serializable const& link : links) {
            s->write_object(link);
        }
        s->write_object(nullptr);
    }

    void deserialize(serializer_ptr const& s) override {
        links.clear();
        serializable link;
        while (s->read_object(link) && link) {
            links.push_back(link);
        }
    }

private:
    friend velum::object_access;

    std::int32_t ref_count = 0;
};

inline node& as_node(serializable const& node_side) {
    return dynamic_cast<node&>(*node_side);
}

/// A factory that knows nodes too.
inline object_factory node_factory() {
    object_factory const factory = new_factory();
    factory->register_class(node::id, {}, {}, &node::rebuild, {});
    return factory;
}

inline serializable boxed_text(std::string const& text) {
    return velum::make<velum::basic_string_t>(text).as<velum::i_serializable_t>();
}

inline std::string text_in(auto const& boxed) {
    return velum::iptr<velum::i_string_t>(boxed, velum::iid_string)->string();
}

inline object_map new_object_map() {
    return velum::make<velum::basic_unknown_map_t>().as<velum::i_unknown_map_t>();
}

inline object_ptr identity_of(auto const& of) {
    return {of, velum::iid_unknown};
}

inline serializable stored_form(auto const& of) {
    return {of, velum::iid_serializable};
}

}  // namespace support
