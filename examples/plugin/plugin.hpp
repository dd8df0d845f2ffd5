#pragma once

#include <velum/velum.hpp>

#include <boost/config.hpp>

/// What a module offers: it registers its classes in the factory of the program that loads it.
/// Objects of these classes may hold no other objects of a stream, or a damaged one could tie them into a knot.
extern "C" BOOST_SYMBOL_EXPORT void register_classes(velum::i_object_factory_t& factory);
