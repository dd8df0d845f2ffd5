#pragma once

#include "events.hpp"

#include <string>
#include <string_view>

namespace inspect {

/// Whether all of it is UTF-8.
bool is_utf8(std::string_view text);

/// As much of the front of `text` as has no character cut off at its end.
std::string_view whole_characters(std::string_view text);

/// In quotation marks, for people: what isn't a printable character of UTF-8 stands as \n, \x00 and the like.
std::string in_quotes(std::string_view text);

/// As it is where all of it is printable, or else in quotation marks.
std::string printable(std::string const& text);

/// A key or field as it is where nobody can take it for something else, or else in quotation marks.
std::string name_for_people(std::string const& name);

/// In quotation marks, as JSON has it. Of UTF-8 only.
std::string json_string(std::string_view text);

/// Two digits a byte.
std::string as_hex(std::string_view bytes);

/// The shortest text that gives the number again.
std::string as_text(stored_number const& value);

}  // namespace inspect
