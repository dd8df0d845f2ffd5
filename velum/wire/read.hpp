#pragma once

#include <velum/core/api.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/iptr.hpp>
#include <velum/values/any_map.hpp>
#include <velum/wire/errors.hpp>

#include <iosfwd>

namespace velum {

/// Reads a map that `write` wrote and merges it into `map`: a stored entry takes the place of one under the same key,
/// and all others stay. A map written with keys of one type can be read with keys of the other.
///
/// Nothing in the stream is trusted. Memory and time follow the bytes that arrive, not what a length promises. A stream
/// that ends early reads as zeros from there on, without an error where that makes a value: an empty text or container,
/// zeros for up to 16 MiB of a text or buffer cut short. So a file that could not be opened, or is empty, reads as a
/// map without entries: look at the stream before and after, or enable exceptions on it to learn of every short read.
///
/// Throws
/// - `unknown_type` for a tag that no type has, 0 included; the message has the tag and the keys that lead to it,
///   innermost first, as long as they are and with the bytes that the stream has,
/// - `length_exceeds_stream` (a `std::bad_alloc`) for more than 16 MiB that are promised and don't come,
/// - `std::runtime_error` "i_unknown serialization not possible with this type of stream" for an object on a standard
///   stream, "nesting too deep" before nested maps use the stack up, "memory allocation failed" for a buffer,
/// - `std::length_error` "vector too long" for a buffer above 9223372036854775807 bytes,
/// - `std::bad_alloc`, and what the stream or an object throws.
/// The entries read before a failure are in the map then, and the stream stands behind what was read last, such as the
/// unknown tag. What stands behind a map that was read whole is the caller's to look at. A stream that has failed gives
/// no position before it is cleared. Its state tells of short reads, its `gcount` doesn't.
///
/// Any number of threads may read at once, each from a stream of its own into a map of its own.
/// @{
VELUM_API void read(std::basic_istream<char>& stream, std::map<std::string, boost::any>& map);
VELUM_API void read(std::basic_istream<char>& stream, std::map<ustring, boost::any>& map);
/// @}

/// Through a serializer, which can carry objects too. Throws `std::runtime_error` ("serializer is null").
/// @{
VELUM_API void read(iptr<i_serializer_t> const& s, std::map<std::string, boost::any>& map);
VELUM_API void read(iptr<i_serializer_t> const& s, std::map<ustring, boost::any>& map);
/// @}

/// The same with the arguments in the other order.
/// @{
VELUM_API void deserialize(std::map<std::string, boost::any>& map, iptr<i_serializer_t> const& s);
VELUM_API void deserialize(std::map<ustring, boost::any>& map, iptr<i_serializer_t> const& s);
/// @}

}  // namespace velum
