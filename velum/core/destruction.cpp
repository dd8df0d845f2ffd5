#include <velum/core/destruction.hpp>
#include <velum/core/detail/stack.hpp>
#include <velum/core/detail/under_way.hpp>

#include <algorithm>
#include <cstddef>
#include <new>
#include <vector>

namespace velum {
namespace {

using detail::stack_place;

/// The destruction of an object that doesn't die within another, and of those that die within it.
class outermost_destruction : public detail::under_way<outermost_destruction> {
public:
    explicit outermost_destruction(stack_place here) : place_(here) {}

    /// The one within which an object dies whose last reference is dropped at `here`, or null.
    static outermost_destruction* around(stack_place here) {
        return find([here](outermost_destruction const& at) { return at.is_above(here); });
    }

    bool has_room(stack_place here) const {
        if (place_ - here <= close_by) {
            return true;
        }
        stack_place const end = detail::end_of_stack(here);
        return end != 0 && here - end >= std::max((place_ - end) / 8, detail::least_stack);
    }

    /// False when memory has run out.
    bool put_off(i_unknown_t* object) {
        try {
            waiting_.push_back(object);
            return true;
        } catch (std::bad_alloc const&) {
            return false;
        }
    }

    void finish() {
        while (!waiting_.empty()) {
            i_unknown_t* const next = waiting_.back();
            waiting_.pop_back();
            delete next;
        }
    }

private:
    static constexpr std::size_t close_by = std::size_t{8} * 1024;  // bytes; no need to ask where the stack ends

    // On the same stack, that is.
    bool is_above(stack_place here) const {
        if (place_ - here <= close_by) {
            return true;
        }
        stack_place const end = detail::end_of_stack(here);
        return place_ > here && (end != 0 ? detail::end_of_stack(place_) != 0 : place_ - here <= detail::foreign_stack);
    }

    stack_place place_;
    std::vector<i_unknown_t*> waiting_;
};

}  // namespace

void destroy(i_unknown_t* object) noexcept {
    stack_place const here = detail::place_of_frame();
    if (auto* const outermost = outermost_destruction::around(here)) {
        if (outermost->has_room(here) || !outermost->put_off(object)) {
            delete object;
        }
        return;
    }
    outermost_destruction outermost(here);
    delete object;
    outermost.finish();
}

}  // namespace velum
