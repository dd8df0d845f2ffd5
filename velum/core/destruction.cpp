#include <velum/core/destruction.hpp>

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace velum {
namespace {

constexpr std::size_t most_stack = std::size_t{8} * 1024;  // bytes, for the objects that die within the outermost

struct outermost_destruction {
    std::uintptr_t place;  // on the stack
    std::vector<i_unknown_t*> waiting{};
};

thread_local constinit outermost_destruction* under_way = nullptr;

bool wait(outermost_destruction& outermost, i_unknown_t* object) {
    try {
        outermost.waiting.push_back(object);
        return true;
    } catch (std::bad_alloc const&) {
        return false;
    }
}

}  // namespace

void destroy(i_unknown_t* object) noexcept {
    auto const here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (under_way != nullptr) {
        if (under_way->place - here <= most_stack || !wait(*under_way, object)) {
            delete object;
        }
        return;
    }
    outermost_destruction outermost{here};
    under_way = &outermost;
    delete object;
    while (!outermost.waiting.empty()) {
        i_unknown_t* const next = outermost.waiting.back();
        outermost.waiting.pop_back();
        delete next;
    }
    under_way = nullptr;
}

}  // namespace velum
