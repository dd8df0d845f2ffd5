#pragma once

#include <cstddef>
#include <string>

namespace scene {

/// `text` for a terminal: its control characters spelled out, and cut to some `most` bytes.
std::string printable(std::string const& text, std::size_t most);

}  // namespace scene
