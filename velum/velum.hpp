#pragma once

// Everything public but the kit of velum/testing/.

/// @namespace velum
/// The library: objects behind interfaces, values, and their stored form.

/// @namespace velum::value_shape
/// The forms that a value of the catalogue can have in a stream.

/// @namespace math
/// Vectors, quaternions and spaces, as values.

/// @namespace tessa
/// Matrices, as values.

/// @namespace sys
/// Memory.

#include <velum/boxed/string.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/boxed/value_map.hpp>
#include <velum/command/command.hpp>
#include <velum/command/i_command.hpp>
#include <velum/command/multi_command.hpp>
#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/atomic_count.hpp>
#include <velum/core/build_info.hpp>
#include <velum/core/class_record.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/counted.hpp>
#include <velum/core/destruction.hpp>
#include <velum/core/flat.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/iid_of.hpp>
#include <velum/core/implements.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>
#include <velum/factory/class_table.hpp>
#include <velum/factory/i_object_factory.hpp>
#include <velum/factory/multi_object_factory.hpp>
#include <velum/factory/object_factory.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/serial/stream.hpp>
#include <velum/values/any_map.hpp>
#include <velum/values/catalogue.hpp>
#include <velum/values/compare.hpp>
#include <velum/values/errors.hpp>
#include <velum/values/math/affine_space.hpp>
#include <velum/values/math/aligned_allocator.hpp>
#include <velum/values/math/elements.hpp>
#include <velum/values/math/linear_space.hpp>
#include <velum/values/math/mat.hpp>
#include <velum/values/math/quat.hpp>
#include <velum/values/math/vec.hpp>
#include <velum/values/type_key.hpp>
#include <velum/values/ustring.hpp>
#include <velum/version.hpp>
#include <velum/wire/errors.hpp>
#include <velum/wire/read.hpp>
#include <velum/wire/write.hpp>
