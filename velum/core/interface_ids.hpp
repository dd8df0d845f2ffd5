#pragma once

#include <velum/core/api.hpp>
#include <velum/core/guid.hpp>

namespace velum {

/// The identifiers of the interfaces. They have their values from the moment the library is loaded, so static
/// objects of other modules may use them.
/// @{
VELUM_API extern guid_t const iid_unknown;
VELUM_API extern guid_t const iid_unknown_map;
VELUM_API extern guid_t const iid_uany_map;
VELUM_API extern guid_t const iid_string;
VELUM_API extern guid_t const iid_serializer;
VELUM_API extern guid_t const iid_serializable;
VELUM_API extern guid_t const iid_ostream;
VELUM_API extern guid_t const iid_object_factory;
VELUM_API extern guid_t const iid_istream;
VELUM_API extern guid_t const iid_command;
/// @}

/// The library has an interface for it, without operations, and never asks for it.
VELUM_API extern guid_t const iid_event_handler;

/// Identifiers that the library only reserves: it declares no operations behind them and never asks for them.
/// @{
VELUM_API extern guid_t const iid_status;
VELUM_API extern guid_t const iid_event;
VELUM_API extern guid_t const iid_context;
VELUM_API extern guid_t const iid_command_manager;
/// @}

}  // namespace velum
