#include "comparison.hpp"

#include "document.hpp"
#include "identity.hpp"
#include "value_comparison.hpp"

#include <map>
#include <string>

namespace scene {
namespace {

class graph_comparison {
public:
    value_comparison values;

    bool same(velum::iptr<velum::i_unknown_map_t> const& a, velum::iptr<velum::i_unknown_map_t> const& b) {
        document_parts const left(a);
        document_parts const right(b);
        bool equal = meet(a, b) && same("info", left.info, right.info) && meet(left.materials, right.materials);
        for (std::string const& name : equal ? left.material_names() : std::vector<std::string>()) {
            equal = equal && values.inside("materials", same(name, left.material(name), right.material(name)));
        }
        return equal && same("root", left.root, right.root);
    }

    std::size_t objects() const { return met_.size(); }

private:
    template <class Interface>
    bool same(std::string const& name, velum::iptr<Interface> const& a, velum::iptr<Interface> const& b) {
        bool const is_new = a && met_.count(identity(a)) == 0;
        bool const equal = a && b ? meet(a, b) && (!is_new || same_content(*a, *b)) : a == b;
        return values.inside(name, equal);
    }

    // Two that have met neither each other nor anyone else are a pair from now on.
    template <class Interface>
    bool meet(velum::iptr<Interface> const& a, velum::iptr<Interface> const& b) {
        return met_.emplace(identity(a), identity(b)).first->second == identity(b) &&
               met_back_.emplace(identity(b), identity(a)).first->second == identity(a);
    }

    bool same_content(velum::i_uany_map_t const& a, velum::i_uany_map_t const& b) {
        return values.same(value_shape::map(), a.map(), b.map());
    }

    bool same_content(i_mesh_t const& a, i_mesh_t const& b) {
        return values.same(value_shape::map(), values_of(a.data()), values_of(b.data())) &&
               same("material", a.material(), b.material());
    }

    bool same_content(i_node_t const& a, i_node_t const& b) {
        // The number of children is among the values.
        bool equal = values.same(value_shape::map(), values_of(a), values_of(b)) && same("mesh", a.mesh(), b.mesh());
        for (std::size_t i = 0; equal && i < a.children().size(); ++i) {
            equal = a.children()[i]->parent() == &a && b.children()[i]->parent() == &b &&
                    same(std::to_string(i), a.children()[i], b.children()[i]);
        }
        return equal;
    }

    using object = velum::i_unknown_t const*;
    std::map<object, object> met_;
    std::map<object, object> met_back_;
};

}  // namespace

comparison compare(velum::iptr<velum::i_unknown_map_t> const& a, velum::iptr<velum::i_unknown_map_t> const& b) {
    graph_comparison both;
    bool const same = both.same(a, b);
    return {same, both.objects(), both.values.values, both.values.difference};
}

}  // namespace scene
