#include "document.hpp"

#include "lookup.hpp"
#include "require.hpp"

namespace scene {

document_parts::document_parts(velum::iptr<velum::i_unknown_map_t> const& document)
    : info(document->get("info").try_as<velum::i_uany_map_t>()),
      materials(document->get("materials").try_as<velum::i_unknown_map_t>()),
      note(document->get("note")),
      root(document->get("root").try_as<i_node_t>()) {}

velum::iptr<velum::i_uany_map_t> document_parts::material(std::string const& name) const {
    return materials ? materials->get(name).try_as<velum::i_uany_map_t>() : nullptr;
}

std::vector<std::string> document_parts::material_names() const {
    require(static_cast<bool>(info), "it has no info");
    std::vector<std::string> names;
    for (boost::any const& entry : lookup<std::vector<boost::any>>(info->map(), "materials")) {
        auto const* const name = boost::any_cast<std::string>(&entry);
        require(name != nullptr, "the name of a material is no string");
        names.push_back(*name);
    }
    return names;
}

}  // namespace scene
