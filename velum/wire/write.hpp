#pragma once

#include <velum/core/api.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/iptr.hpp>
#include <velum/values/any_map.hpp>

#include <iosfwd>

namespace velum {

/// Writes a map in the tagged binary form, without anything before or behind it, so that several may stand in a row.
///
/// Throws
/// - `unknown_type` for a value of a type that has no tag; the message names the type and the keys that lead to it,
/// - `std::runtime_error` "i_unknown serialization not possible with this type of stream" for an object on a standard
///   stream, "object is not serializable" for one that a serializer can't write, "nesting too deep" for a map nested so
///   deep that it could not be read back on a stack like this,
/// - `std::length_error` for a text, map or vector of more than 4294967295 bytes or entries,
/// - what the stream throws.
/// What was written before stays in the stream. The state of the stream is the caller's affair: a stream that fails
/// without an exception goes unnoticed here.
///
/// Any number of threads may write at once, each to a stream of its own.
/// @{
VELUM_API void write(std::basic_ostream<char>& stream, std::map<std::string, boost::any> const& map);
VELUM_API void write(std::basic_ostream<char>& stream, std::map<ustring, boost::any> const& map);
/// @}

/// Through a serializer, which can carry objects too. Throws `std::runtime_error` ("serializer is null").
/// @{
VELUM_API void write(iptr<i_serializer_t> const& s, std::map<std::string, boost::any> const& map);
VELUM_API void write(iptr<i_serializer_t> const& s, std::map<ustring, boost::any> const& map);
/// @}

/// The same with the arguments in the other order.
/// @{
VELUM_API void serialize(std::map<std::string, boost::any> const& map, iptr<i_serializer_t> const& s);
VELUM_API void serialize(std::map<ustring, boost::any> const& map, iptr<i_serializer_t> const& s);
/// @}

}  // namespace velum
