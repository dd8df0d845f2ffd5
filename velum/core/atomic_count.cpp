#include <velum/core/atomic_count.hpp>

namespace velum {

// The compilers' own operations, since std::atomic_ref takes no volatile object.
std::int32_t atomic_increment(std::int32_t volatile& n) {
    return __atomic_add_fetch(&n, 1, __ATOMIC_SEQ_CST);
}

std::int32_t atomic_decrement(std::int32_t volatile& n) {
    return __atomic_sub_fetch(&n, 1, __ATOMIC_SEQ_CST);
}

}  // namespace velum
