#pragma once

namespace velum::detail {

/// The operations of one kind that a thread has under way, so that one within another finds those around it.
///
/// `Operation` derives from this. Operations mostly end in the reverse of the order in which they began; those on
/// fibers need not.
template <class Operation>
class under_way {
public:
    under_way(under_way const&) = delete;
    under_way& operator=(under_way const&) = delete;

protected:
    under_way() : innermost_(innermost), around_(innermost_) { innermost_ = static_cast<Operation*>(this); }

    ~under_way() {
        for (Operation** link = &innermost_; *link != nullptr; link = &(*link)->under_way::around_) {
            if (*link == this) {
                *link = around_;
                return;
            }
        }
    }

    /// The nearest operation around the caller that `fits`, or null.
    template <class Fits>
    static Operation* find(Fits fits) {
        Operation* at = innermost;
        while (at != nullptr && !fits(*at)) {
            at = at->under_way::around_;
        }
        return at;
    }

private:
    inline static thread_local constinit Operation* innermost = nullptr;

    Operation*& innermost_;  // looked up once, since a library asks for its address
    Operation* around_;
};

}  // namespace velum::detail
