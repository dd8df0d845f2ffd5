#pragma once

#include <velum/command/i_command.hpp>
#include <velum/core/api.hpp>
#include <velum/core/counted.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <cstdint>
#include <vector>

namespace velum {

/// A list of commands that is one command. The same command may stand in it twice, and another list too, but not the
/// list itself. It answers `iid_command` alone.
class VELUM_API multi_command_t : public counted_t<multi_command_t, i_command_t> {
public:
    /// Takes a reference on each of `commands`, which are done in this order.
    explicit multi_command_t(std::vector<iptr<i_command_t>> const& commands);

    /// These copy the count too, so they are only for commands that no `iptr` holds. A move leaves an empty list.
    /// @{
    multi_command_t(multi_command_t const&);
    multi_command_t(multi_command_t&&) noexcept;
    multi_command_t& operator=(multi_command_t const&);
    multi_command_t& operator=(multi_command_t&&) noexcept;
    /// @}

    /// Drops the references from the first command to the last.
    ~multi_command_t() override;

    /// Does the commands from the first to the last. What one throws passes through: those before it stay done, those
    /// behind it are left alone, and nobody is told how far it came. A null in the list throws `std::runtime_error`
    /// ("command is null") in its place, here and on undoing.
    void do_it() override;

    /// Undoes the commands from the last to the first, all of them, also those that a `do_it` that threw never reached.
    /// Everything else is as in `do_it`.
    void undo_it() override;

private:
    friend object_access;

    std::int32_t ref_count = 0;
    std::vector<iptr<i_command_t>> list_;
};

}  // namespace velum
