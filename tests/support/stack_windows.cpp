#include "support/stack.hpp"

#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace support {
namespace {

using work_type = std::function<void()> const;

struct errand {
    std::size_t size;
    work_type& work;
    void* back;
};

// A stack may be larger than was asked for: wine gives none below 1 MiB. What is too much is taken away first.
[[gnu::noinline]] void run_within(errand const& what) {
    std::size_t const left = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) - end_of_own_stack();
    [[maybe_unused]] void* const volatile surplus = left > what.size ? __builtin_alloca(left - what.size) : nullptr;
    what.work();
}

DWORD WINAPI run(void* what) {
    run_within(*static_cast<errand*>(what));
    return 0;
}

void WINAPI run_and_return(void* what) {
    run_within(*static_cast<errand*>(what));
    SwitchToFiber(static_cast<errand*>(what)->back);
}

}  // namespace

void on_stack(std::size_t size, work_type& work) {
    errand what{size, work, nullptr};
    HANDLE const thread = CreateThread(nullptr, size, &run, &what, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        throw std::runtime_error("no thread with such a stack");
    }
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

std::uintptr_t end_of_own_stack() {
    ULONG_PTR lowest = 0, highest = 0;
    GetCurrentThreadStackLimits(&lowest, &highest);
    constexpr ULONG_PTR kept_by_system = 16 * 1024;  // bytes
    return lowest + kept_by_system;
}

void on_foreign_stack(std::size_t size, work_type& work) {
    errand what{size, work, ConvertThreadToFiber(nullptr)};
    void* const fiber = CreateFiberEx(0, size, 0, &run_and_return, &what);
    if (fiber == nullptr) {
        throw std::runtime_error("no fiber with such a stack");
    }
    SwitchToFiber(fiber);
    DeleteFiber(fiber);
    ConvertFiberToThread();
}

}  // namespace support
