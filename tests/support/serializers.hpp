#pragma once

#include <velum/velum.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <istream>
#include <ostream>

namespace support {

using serializer_ptr = velum::iptr<velum::i_serializer_t>;
using object_factory = velum::iptr<velum::i_object_factory_t>;

/// A factory that knows all boxed classes.
inline object_factory new_factory() {
    auto const factory = velum::make<velum::basic_object_factory_t>().as<velum::i_object_factory_t>();
    factory->register_class(velum::uany_map_obj_t::_class_info);
    return factory;
}

inline serializer_ptr writer_on(velum::iptr<velum::i_ostream_t> stream, int version = 0) {
    serializer_ptr s;
    velum::basic_serializer_t::create(nullptr, stream, version, velum::iid_serializer, &s);
    return s;
}

inline serializer_ptr reader_on(velum::iptr<velum::i_istream_t> const& stream, object_factory const& factory,
                                int version = 0) {
    serializer_ptr s;
    velum::basic_serializer_t::create(nullptr, stream, factory, version, velum::iid_serializer, &s);
    return s;
}

// On a standard stream that the caller keeps.

inline serializer_ptr writer_on(std::ostream& stream) {
    velum::iptr<velum::i_ostream_t> object;
    velum::basic_ostream_t::create(nullptr, {&stream, [](auto*) {}}, velum::iid_ostream, &object);
    return writer_on(object);
}

inline serializer_ptr reader_on(std::istream& stream, object_factory const& factory = new_factory()) {
    velum::iptr<velum::i_istream_t> object;
    velum::basic_istream_t::create(nullptr, {&stream, [](auto*) {}}, velum::iid_istream, &object);
    return reader_on(object, factory);
}

}  // namespace support
