#include "try_edits.hpp"

#include "document.hpp"
#include "edit_history.hpp"
#include "edits.hpp"
#include "files.hpp"
#include "require.hpp"
#include "text.hpp"

#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <ostream>
#include <sstream>

namespace scene {
namespace {

std::string saved_bytes(velum::iptr<velum::i_unknown_map_t> const& document) {
    auto const stream = boost::make_shared<std::ostringstream>();
    save(stream, document);
    return stream->str();
}

velum::iptr<i_node_t> first_with_mesh(velum::iptr<i_node_t> const& root) {
    velum::iptr<i_node_t> node = root;
    while (!node->mesh()) {
        require(!node->children().empty(), "there is nothing to edit");
        node = velum::iptr(node->children().front());
    }
    return node;
}

std::vector<command> make_edits(document_parts const& parts, velum::iptr<i_node_t> const& node) {
    velum::affine_space3 place = node->transform();
    place.origin = {place.origin[0], place.origin[1] + 1, place.origin[2]};
    std::vector<command> edits{move_node(node, place), rename_node(node, node->name() + " moved")};
    auto const names = parts.material_names();
    auto const other = std::ranges::find_if(
        names, [&](std::string const& name) { return parts.material(name) != node->mesh()->material(); });
    if (other != names.end()) {
        edits.push_back(give_material(node->mesh(), parts.material(*other)));
    }
    return edits;
}

}  // namespace

void try_edits(std::ostream& out, velum::iptr<velum::i_unknown_map_t> const& document, std::string const& saved) {
    document_parts const parts(document);
    auto const node = first_with_mesh(parts.root);
    auto const edits = make_edits(parts, node);
    edit_history history;

    out << "edit: " << edits.size() << " changes to \"" << printable(node->name(), 60) << "\", ";
    history.edit(make_list(edits));
    std::string const edited = saved_bytes(document);
    require(edited != saved, "an edit wasn't saved");
    out << edited.size() << " bytes, others than before\n";

    require(history.undo() && saved_bytes(document) == saved, "an edit wasn't undone");
    out << "undo: " << saved.size() << " bytes, those of the file\n";

    require(history.redo() && saved_bytes(document) == edited, "an edit wasn't redone");
    out << "redo: " << edited.size() << " bytes, those of the edit\n";
}

}  // namespace scene
