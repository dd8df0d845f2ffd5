#include "support/stack.hpp"

#include <stdexcept>
#include <vector>

#include <pthread.h>
#include <ucontext.h>

namespace support {
namespace {

using work_type = std::function<void()> const;

void* run(void* work) {
    (*static_cast<work_type*>(work))();
    return nullptr;
}

}  // namespace

void on_stack(std::size_t size, work_type& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread{};
    bool const runs =
        pthread_attr_setstacksize(&attributes, size) == 0 &&
        pthread_create(&thread, &attributes, &run, const_cast<void*>(static_cast<void const*>(&work))) == 0;
    pthread_attr_destroy(&attributes);
    if (!runs) {
        throw std::runtime_error("no thread with such a stack");
    }
    pthread_join(thread, nullptr);
}

std::uintptr_t end_of_own_stack() {
    pthread_attr_t attributes;
    void* end = nullptr;
    std::size_t size = 0;
    pthread_getattr_np(pthread_self(), &attributes);
    pthread_attr_getstack(&attributes, &end, &size);
    pthread_attr_destroy(&attributes);
    return reinterpret_cast<std::uintptr_t>(end);
}

void on_foreign_stack(std::size_t size, work_type& work) {
    static work_type* what;
    what = &work;
    std::vector<char> stack(size);
    ucontext_t here{}, there{};
    getcontext(&there);
    there.uc_stack.ss_sp = stack.data();
    there.uc_stack.ss_size = stack.size();
    there.uc_link = &here;
    makecontext(
        &there, [] { (*what)(); }, 0);
    swapcontext(&here, &there);
}

}  // namespace support
