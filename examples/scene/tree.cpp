#include "tree.hpp"

#include "document.hpp"
#include "identity.hpp"
#include "value_tree.hpp"

namespace scene {
namespace {

class graph_tree : public value_tree {
public:
    using value_tree::value_tree;

    void put(velum::iptr<velum::i_unknown_map_t> const& document) {
        document_parts const parts(document);
        indented([&] {
            put("info", parts.info);
            start_line() << "materials";
            auto const names = parts.material_names();
            auto const put_material = [&](std::size_t i) { put(names[i], parts.material(names[i])); };
            indented([&] { put_rows(names.size(), 24, put_material); });
            put("root", parts.root);
        });
    }

private:
    // The content only where the object stands for the first time.
    template <class Interface>
    void put(std::string const& name, velum::iptr<Interface> const& object) {
        start_line() << printable(name, 60);
        if (!object) {
            out() << ": none";
            return;
        }
        auto const [number, is_new] = numbers_.emplace(identity(object), numbers_.size() + 1);
        out() << (is_new ? ": #" : ": see #") << number->second;
        if (is_new) {
            indented([&] { put_content(*object); });
        }
    }

    void put_content(velum::i_uany_map_t const& map) { put_map(map.map()); }

    void put_content(i_mesh_t const& mesh) {
        put_map(values_of(mesh.data()));
        put("material", mesh.material());
    }

    void put_content(i_node_t const& node) {
        put_map(values_of(node));
        put("mesh", node.mesh());
        auto const& children = node.children();
        put_rows(children.size(), 8, [&](std::size_t i) { put('[' + std::to_string(i) + ']', children[i]); });
    }

    std::map<velum::i_unknown_t const*, std::size_t> numbers_;
};

}  // namespace

void print_tree(std::ostream& out, std::string const& title, velum::iptr<velum::i_unknown_map_t> const& document) {
    out << printable(title, 500);
    graph_tree(out).put(document);
    out << '\n';
}

}  // namespace scene
