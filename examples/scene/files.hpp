#pragma once

#include <velum/core/i_unknown_map.hpp>
#include <velum/core/iptr.hpp>
#include <velum/factory/i_object_factory.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <filesystem>
#include <fstream>
#include <ostream>

namespace scene {

// Failures with files are a `std::runtime_error` that begins with the name of the file.

/// A regular file, open for reading, whatever it may contain.
std::ifstream open_to_read(std::filesystem::path const& file);

/// Writes to a stream, whose failures stay its own: exceptions, if it has been told to throw them.
void save(boost::shared_ptr<std::ostream> const& stream, velum::iptr<velum::i_unknown_map_t> const& document);

void save(std::filesystem::path const& file, velum::iptr<velum::i_unknown_map_t> const& document);

/// Reads a file that holds one scene and nothing else, and checks it. When reading fails the message has the offset of
/// the byte where it did. The objects are made by `factory`.
velum::iptr<velum::i_unknown_map_t> load(std::filesystem::path const& file,
                                         velum::iptr<velum::i_object_factory_t> const& factory);

}  // namespace scene
