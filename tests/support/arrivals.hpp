#pragma once

#include "support/node.hpp"

#include <set>
#include <sstream>
#include <vector>

namespace support {

/// Empties an object that may lead back to itself.
inline void take_apart(object_ptr const& object) {
    serializable const stored = stored_form(object);
    velum::iptr<velum::i_uany_map_t> const values(object, velum::iid_uany_map);
    if (values) {
        const_cast<velum::uany_map&>(values->map()).clear();
    } else if (auto* const one = dynamic_cast<node*>(stored.get())) {
        one->origin = nullptr;
        one->links.clear();
    } else if (stored) {
        std::istringstream nothing;
        stored->deserialize(reader_on(nothing, nullptr));
    }
}

/// The objects that readers bring, of which damage may tie knots. They are taken apart at the end.
class arrivals {
public:
    arrivals() { objects_.reserve(128); }  // so that few arrive only while there is memory
    explicit arrivals(serializer_ptr const& reader) : arrivals() { watch(reader); }
    arrivals(arrivals const&) = delete;
    arrivals& operator=(arrivals const&) = delete;
    ~arrivals() {
        for (object_ptr const& object : objects_) {
            take_apart(object);
        }
    }

    void add(object_ptr const& object) { objects_.push_back(identity_of(object)); }

    /// All, by their identities.
    std::set<object_ptr> objects() const { return {objects_.begin(), objects_.end()}; }

    void forget() { objects_.clear(); }

    /// The objects of `reader` arrive here from now on.
    void watch(serializer_ptr const& reader) {
        reader->set_object_mapper([this](serializable const& object) {
            if (object) {
                add(object.get());
            }
            return object;
        });
    }

    serializer_ptr reader(std::istream& stream, object_factory const& factory = node_factory()) {
        serializer_ptr const reader = reader_on(stream, factory);
        watch(reader);
        return reader;
    }

private:
    std::vector<object_ptr> objects_;
};

}  // namespace support
