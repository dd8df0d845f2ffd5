#pragma once

#include <velum/core/i_unknown_map.hpp>
#include <velum/core/iptr.hpp>

#include <filesystem>
#include <fstream>

namespace scene {

// Failures are a `std::runtime_error` that begins with the name of the file.

/// A regular file, open for reading, whatever it may contain.
std::ifstream open_to_read(std::filesystem::path const& file);

void save(std::filesystem::path const& file, velum::iptr<velum::i_unknown_map_t> const& document);

/// Reads a file that holds one scene and nothing else, and checks it. When reading fails the message has the offset of
/// the byte where it did.
velum::iptr<velum::i_unknown_map_t> load(std::filesystem::path const& file);

}  // namespace scene
