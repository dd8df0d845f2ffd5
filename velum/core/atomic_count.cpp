#include <velum/core/atomic_count.hpp>

namespace velum {

// The library exports both, for those who look them up instead of compiling them in.
[[maybe_unused, gnu::used]] static std::int32_t (*const exported[])(std::int32_t volatile&) = {&atomic_increment,
                                                                                               &atomic_decrement};

}  // namespace velum
