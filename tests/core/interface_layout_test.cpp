#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <cstring>

// Modules call interfaces by the places of their operations, so a place never changes.
//
// The Itanium ABI holds a pointer to a virtual member function as one more than the offset of its slot; the machines
// that need the lowest bit for something else are left out.
#if defined(__x86_64__) && !defined(_WIN32)

namespace {

using namespace velum;

template <class Function>
std::size_t place_of(Function function) {
    std::size_t words[2] = {};
    std::memcpy(words, &function, sizeof function);
    EXPECT_TRUE(words[0] % sizeof(void*) == 1 && words[1] == 0) << "not virtual, or not at the object's beginning";
    return words[0] / sizeof(void*);
}

/// The operations of an interface, in order, begin at `first`; ahead of `query_interface` lie two of the destructor.
template <class Interface, class... Functions>
void expect_places(std::size_t first, Functions... functions) {
    static_assert(sizeof(Interface) == sizeof(void*) && std::has_virtual_destructor_v<Interface>);
    for (std::size_t const place : {place_of(functions)...}) {
        EXPECT_EQ(place, first++) << typeid(Interface).name();
    }
}

TEST(interface_layout, operations_stand_in_their_places) {
    using s = i_serializer_t;
    using f = i_object_factory_t;
    expect_places<i_unknown_t>(2, &i_unknown_t::query_interface, &i_unknown_t::add_ref, &i_unknown_t::release);
    expect_places<i_serializable_t>(5, &i_serializable_t::clsid, &i_serializable_t::serialize_obj,
                                    &i_serializable_t::serialize, &i_serializable_t::deserialize);
    expect_places<s>(5, &s::version, static_cast<any_map& (s::*)()>(&s::attributes),
                     static_cast<any_map const& (s::*)() const>(&s::attributes), &s::write_object, &s::write_string,
                     &s::write, &s::read_object, &s::read_string, &s::read, &s::tell, &s::seek, &s::flush,
                     &s::write_object_header, &s::read_object_header, &s::set_object_mapper);
    expect_places<i_unknown_map_t>(5, &i_unknown_map_t::set, &i_unknown_map_t::get);
    expect_places<i_string_t>(5, static_cast<std::string& (i_string_t::*)()>(&i_string_t::string),
                              static_cast<std::string const& (i_string_t::*)() const>(&i_string_t::string));
    expect_places<i_uany_map_t>(5, &i_uany_map_t::map);
    expect_places<i_istream_t>(5, &i_istream_t::tellg, &i_istream_t::seekg, &i_istream_t::read);
    expect_places<i_ostream_t>(5, &i_ostream_t::tellp, &i_ostream_t::seekp, &i_ostream_t::write, &i_ostream_t::flush);
    expect_places<f>(
        5, static_cast<void (f::*)(any_map const&)>(&f::register_class),
        static_cast<void (f::*)(guid_t const&, create_function_t const&, any_map const&, deserialize_function_t const&,
                                init_function_t const&)>(&f::register_class),
        &f::create_object, &f::deserialize_object, &f::registered_classes, &f::class_info);
    expect_places<i_command_t>(5, &i_command_t::do_it, &i_command_t::undo_it);
}

}  // namespace

#endif
