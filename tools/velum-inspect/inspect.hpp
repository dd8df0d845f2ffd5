#pragma once

#include "events.hpp"
#include "options.hpp"

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// Whether a stream that begins so holds objects and no map.
bool begins_with_object(std::string_view head, class_catalogue const& classes);

/// Reads what `chosen` names and prints it. Says how the stream is damaged, if it is. Throws `std::runtime_error` where
/// it can't be read, or what is printed can't be written.
std::optional<damage> inspect(options const& chosen, std::ostream& to);

/// What messages call the input.
std::string name_of(options const& chosen);

/// Throws `std::runtime_error` when something that was printed didn't get there.
void check_written(std::ostream& to);

/// "broken at byte 52, at paint.color: expected ..., found ..."
std::string message(damage const& broken);

}  // namespace inspect
