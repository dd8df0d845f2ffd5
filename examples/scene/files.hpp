#pragma once

#include <velum/values/any_map.hpp>

#include <filesystem>
#include <fstream>

namespace scene {

// Failures are a `std::runtime_error` that begins with the name of the file.

/// A regular file, open for reading, whatever it may contain.
std::ifstream open_to_read(std::filesystem::path const& file);

void save(std::filesystem::path const& file, velum::any_map const& document);

/// Reads a file that holds one document and nothing else. When that fails the message has the offset of the byte
/// where it did, and `document` what was read before.
void load(std::filesystem::path const& file, velum::any_map& document);

}  // namespace scene
