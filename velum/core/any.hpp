#pragma once

// boost::any as all modules see it, a library that hides what it doesn't export included: types made with it, such as
// the maps of values, then have one `type_info` in the process, unless a module has included it before by itself.

#if defined(__GNUC__) && !defined(BOOST_ANY_INCLUDED)
namespace boost {
class [[gnu::visibility("default")]] any;
}
#endif

#include <boost/any.hpp>
