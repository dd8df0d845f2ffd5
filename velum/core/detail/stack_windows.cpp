#include <velum/core/detail/stack.hpp>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace velum::detail {
namespace {

// At the end of a stack there are a page that nobody may touch and those by which the system notices that it is full.
constexpr stack_place kept_by_system = stack_place{16} * 1024;  // bytes

}  // namespace

// The bounds are those of the fiber that runs, where one does, so they aren't kept.
stack_place end_of_stack(stack_place place) {
    ULONG_PTR lowest = 0, highest = 0;
    GetCurrentThreadStackLimits(&lowest, &highest);
    return place >= lowest && place <= highest ? lowest + kept_by_system : 0;
}

}  // namespace velum::detail
