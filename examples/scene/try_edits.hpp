#pragma once

#include <velum/core/i_unknown_map.hpp>

#include <iosfwd>
#include <string>

namespace scene {

/// Edits a document, undoes it and does it again, with a line for each. What is saved after the undo must be `saved`,
/// the bytes of the document as it came, and what is saved at the end the edited bytes; else throws
/// `std::runtime_error`. The document stays edited.
void try_edits(std::ostream& out, velum::iptr<velum::i_unknown_map_t> const& document, std::string const& saved);

}  // namespace scene
