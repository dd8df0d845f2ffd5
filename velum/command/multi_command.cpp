#include <velum/command/multi_command.hpp>
#include <velum/core/detail/required.hpp>

#include <utility>

namespace velum {
namespace {

template <class Position>
void call_each(Position first, Position last, void (i_command_t::*operation)()) {
    for (; first != last; ++first) {
        (detail::required(*first, "command is null").*operation)();
    }
}

}  // namespace

multi_command_t::multi_command_t(std::vector<iptr<i_command_t>> const& commands) : list_(commands) {}

multi_command_t::multi_command_t(multi_command_t const&) = default;
multi_command_t::multi_command_t(multi_command_t&&) noexcept = default;
multi_command_t& multi_command_t::operator=(multi_command_t const&) = default;

// A list that is moved to itself would lose its commands.
multi_command_t& multi_command_t::operator=(multi_command_t&& other) noexcept {
    if (this != &other) {
        ref_count = other.ref_count;
        list_ = std::move(other.list_);
    }
    return *this;
}

multi_command_t::~multi_command_t() {
    for (iptr<i_command_t>& command : list_) {
        command = nullptr;
    }
}

void multi_command_t::do_it() {
    call_each(list_.begin(), list_.end(), &i_command_t::do_it);
}

void multi_command_t::undo_it() {
    call_each(list_.rbegin(), list_.rend(), &i_command_t::undo_it);
}

}  // namespace velum
