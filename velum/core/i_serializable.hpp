#pragma once

#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

namespace velum {

class i_serializer_t;

/// What an object offers to be written to a stream and read back (`iid_serializable`).
///
/// An object is written in two stages, each of which must be read exactly as it was written. Only the state stage may
/// lead back to the object itself, since the object doesn't exist while its construction stage is read.
class VELUM_API i_serializable_t : public i_unknown_t {
public:
    /// The class identifier under which a factory rebuilds the object.
    virtual guid_t clsid() const = 0;

    /// Writes the construction stage: what the `deserialize_function` of the class reads to build the object.
    virtual void serialize_obj(iptr<i_serializer_t> const& s) const = 0;

    /// Writes the state stage: what `deserialize` reads.
    virtual void serialize(iptr<i_serializer_t> const& s) const = 0;

    /// Reads the state stage into an object that the `deserialize_function` built.
    virtual void deserialize(iptr<i_serializer_t> const& s) = 0;
};

template <>
inline constexpr guid_t iid_of<i_serializable_t>{"{E74D82CA-AEC9-456e-839F-04083BE78184}"};

}  // namespace velum
