#pragma once

#include <velum/core/any.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <functional>
#include <map>
#include <string>

namespace velum {

/// Puts one object in the place of another while a graph is written or read. Null may come in and go out.
using object_mapper_t = std::function<iptr<i_serializable_t>(iptr<i_serializable_t> const&)>;

/// Writes a graph of objects to a stream, or reads one from it (`iid_serializer`); `basic_serializer_t` is the one that
/// does. Used by one thread at a time.
///
/// Counts and lengths are bytes. Nobody looks at the state of the stream behind it: what a stream throws passes
/// through, and what a stream that doesn't throw could not deliver leaves the caller's data as it was.
class VELUM_API i_serializer_t : public i_unknown_t {
public:
    /// The number given to the serializer when it was made. It is in no stream.
    virtual int version() const = 0;

    /// A map for the use of whoever shares the serializer.
    virtual std::map<std::string, boost::any>& attributes() = 0;
    virtual std::map<std::string, boost::any> const& attributes() const = 0;  ///< the same

    /// Writes an object with its graph, an object met before as a reference to it, null as null.
    virtual void write_object(iptr<i_serializable_t> const& object) = 0;

    /// Writes the length as 4 bytes and then the text.
    virtual void write_string(std::string const& text) = 0;

    /// Writes `count` bytes as they are.
    virtual void write(char const* data, long long count) = 0;

    /// Reads what `write_object` wrote. False only if a referenced object isn't serializable.
    virtual bool read_object(iptr<i_serializable_t>& object) = 0;

    /// Reads what `write_string` wrote in the place of what `text` held.
    virtual void read_string(std::string& text) = 0;

    /// Reads `count` bytes; those that don't arrive leave `data` as it was.
    virtual void read(char* data, long long count) = 0;

    /// The position in the stream, or -1 where the stream has none.
    virtual long long tell() = 0;

    /// `way` is 0 to count from the beginning, 1 from the position, 2 from the end.
    virtual void seek(long long offset, int way) = 0;

    /// Flushes the stream of a writer; a reader has nothing to do.
    virtual void flush() = 0;

    /// Writes the head and the construction stage of an object, for a caller that writes the state stage itself. The
    /// mapper isn't asked, and an object met before gets a second head: it comes back as two.
    virtual void write_object_header(iptr<i_unknown_t> const& object) = 0;

    /// Reads what `write_object_header` wrote, which is no null and no reference, and builds the object under the
    /// controlling unknown `outer`.
    virtual bool read_object_header(iptr<i_unknown_t> const& outer, iptr<i_unknown_t>& object) = 0;

    /// Replaces the object mapper; an empty one removes it.
    virtual void set_object_mapper(object_mapper_t const& mapper) = 0;
};

template <>
inline constexpr guid_t iid_of<i_serializer_t>{"{F8FCB0EC-8623-47ff-9A87-44F6E0EB7678}"};

}  // namespace velum
