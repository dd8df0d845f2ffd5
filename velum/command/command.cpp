#include <velum/command/command.hpp>

namespace velum {

command_t::command_t(iptr<i_event_handler_t> const& event_handler) : handler_(event_handler) {}

command_t::command_t(command_t const&) = default;
command_t& command_t::operator=(command_t const&) = default;
command_t::~command_t() = default;

}  // namespace velum
