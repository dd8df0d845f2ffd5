#pragma once

#include "input.hpp"

namespace inspect {

/// Says on the standard error how far reading is, where that is a terminal that shows nothing else and the input is
/// large. The line goes when this does.
class progress {
public:
    /// `output_is_at_end`: nothing is printed before all is read.
    progress(input& from, bool output_is_at_end);
    progress(progress const&) = delete;
    progress& operator=(progress const&) = delete;
    ~progress();

private:
    void show(input const& from);

    input& from_;
    std::uint64_t shown_ = 0;  // bytes
};

}  // namespace inspect
