#pragma once

#include <velum/command/i_command.hpp>
#include <velum/core/api.hpp>
#include <velum/core/counted.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <cstdint>

namespace velum {

/// The base of a command: it counts the references and keeps a handler, which it never calls. A command answers
/// `iid_command` alone, not `iid_unknown`. A derived class that has more overrides `query_interface`, and with another
/// interface among its bases also `add_ref` and `release`, where it calls those of `command_t`.
class VELUM_API command_t : public counted_t<command_t, i_command_t> {
public:
    /// Takes a reference on `handler`, which may be null.
    explicit command_t(iptr<i_event_handler_t> const& handler);

    /// Copies the count too, so only for commands that no `iptr` holds. A move is a copy.
    /// @{
    command_t(command_t const&);
    command_t& operator=(command_t const&);
    /// @}
    ~command_t() override;

protected:
    /// What the constructor was given.
    iptr<i_event_handler_t> const& event_handler() const { return handler_; }

private:
    friend object_access;

    std::int32_t ref_count = 0;
    iptr<i_event_handler_t> handler_;
};

}  // namespace velum
