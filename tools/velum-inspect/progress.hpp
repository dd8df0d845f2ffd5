#pragma once

#include "input.hpp"

namespace inspect {

/// Says on the standard error how far reading is, where that is a terminal that shows nothing else, and no pager
/// may, and the input is large. The line goes when this does.
class progress {
public:
    /// `output_is_at_end`: nothing is printed before all is read.
    progress(input const& from, bool output_is_at_end);
    progress(progress const&) = delete;
    progress& operator=(progress const&) = delete;
    ~progress();

    /// To be called now and then.
    void show(input const& from);

private:
    bool is_shown_;
    std::uint64_t shown_ = 0;  // bytes
};

}  // namespace inspect
