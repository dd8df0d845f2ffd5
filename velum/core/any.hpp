#pragma once

// boost::any as all modules see it, a library that hides what it doesn't export included: types made with it, such as
// the maps of values, then have one `type_info` in the process, where a module hasn't included it before in another
// way.

#if defined(__GNUC__)
#    pragma GCC visibility push(default)
#endif
#include <boost/any.hpp>
#if defined(__GNUC__)
#    pragma GCC visibility pop
#endif
