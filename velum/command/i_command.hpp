#pragma once

#include <velum/core/api.hpp>
#include <velum/core/unknown.hpp>

namespace velum {

/// Something that can be done and undone (`iid_command`).
class VELUM_API i_command_t : public i_unknown_t {
public:
    /// Does it, also again after it was undone.
    virtual void do_it() = 0;

    /// Takes back what `do_it` did.
    virtual void undo_it() = 0;
};

template <>
inline constexpr guid_t iid_of<i_command_t>{"{46A018C7-A324-4bea-9BFC-BED277A851D4}"};

/// Whoever wants to hear of commands (`iid_event_handler`); what it hears is between a command and its handler.
class VELUM_API i_event_handler_t : public i_unknown_t {};

template <>
inline constexpr guid_t iid_of<i_event_handler_t>{"{FC5C9CA2-2CE4-466b-9B40-F887A093C179}"};

}  // namespace velum
