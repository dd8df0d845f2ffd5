#include "quoting.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <utility>

namespace inspect {
namespace {

unsigned value_of(char c) {
    return static_cast<unsigned char>(c);
}

std::size_t length_by_first_byte(unsigned first) {
    return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

// The second byte of some characters is bound closer, so that no number has two forms, none is a surrogate and none is
// beyond the last.
bool is_second_byte(unsigned first, unsigned second) {
    unsigned const lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    unsigned const highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

/// How many bytes the first character of `text` has; 0 where there is none.
std::size_t character(std::string_view text) {
    unsigned const first = value_of(text.front());
    std::size_t const length = length_by_first_byte(first);
    if (length == 0 || length > text.size() || (length > 1 && !is_second_byte(first, value_of(text[1])))) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if ((value_of(text[i]) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    return length;
}

/// The number of the character that `text` is.
std::uint32_t code_point(std::string_view text) {
    std::uint32_t code = value_of(text.front());
    if (text.size() > 1) {
        code &= 0x7FU >> text.size();
    }
    for (char const next : text.substr(1)) {
        code = code << 6U | (value_of(next) & 0x3FU);
    }
    return code;
}

// Neither controls nor what turns or hides other text, nor what is no character.
bool is_printable(std::uint32_t code) {
    constexpr std::pair<std::uint32_t, std::uint32_t> others[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x200B, 0x200F},
                                                                  {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFDD0, 0xFDEF},
                                                                  {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}};
    return (code & 0xFFFEU) != 0xFFFE && std::none_of(std::begin(others), std::end(others), [code](auto const& range) {
               return code >= range.first && code <= range.second;
           });
}

/// A quotation mark, a backslash or a control character that has a letter; null for others.
char const* named_escape(char c) {
    switch (c) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return nullptr;
    }
}

/// The first character of `text`, or one byte that is none.
std::string_view take_character(std::string_view& text) {
    std::string_view const taken = text.substr(0, std::max<std::size_t>(character(text), 1));
    text.remove_prefix(taken.size());
    return taken;
}

bool is_printable(std::string_view taken) {
    return character(taken) != 0 && is_printable(code_point(taken));
}

}  // namespace

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        std::size_t const length = character(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string_view whole_characters(std::string_view text) {
    for (std::size_t back = 1; back <= 3 && back <= text.size(); ++back) {
        unsigned const byte = value_of(text[text.size() - back]);
        if ((byte & 0xC0U) != 0x80) {
            return length_by_first_byte(byte) > back ? text.substr(0, text.size() - back) : text;
        }
    }
    return text;
}

std::string in_quotes(std::string_view text) {
    std::string out = "\"";
    while (!text.empty()) {
        std::string_view const taken = take_character(text);
        if (char const* const named = named_escape(taken.front())) {
            out += named;
        } else if (is_printable(taken)) {
            out += taken;
        } else {
            for (char const c : taken) {
                out += "\\x" + as_hex({&c, 1});
            }
        }
    }
    return out + '"';
}

std::string printable(std::string const& text) {
    std::string const quoted = in_quotes(text);
    return quoted.size() == text.size() + 2 ? text : quoted;
}

std::string name_for_people(std::string const& name) {
    auto const is_plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
    };
    return !name.empty() && std::all_of(name.begin(), name.end(), is_plain) ? name : in_quotes(name);
}

// JSON allows most of what isn't printable as it is, but terminals show JSON too.
std::string json_string(std::string_view text) {
    std::string out = "\"";
    while (!text.empty()) {
        std::string_view const taken = take_character(text);
        std::uint32_t const code = code_point(taken);
        if (char const* const named = named_escape(taken.front())) {
            out += named;
        } else if (is_printable(code) || code > 0xFFFF) {
            out += taken;
        } else {
            char const high = static_cast<char>(code >> 8U), low = static_cast<char>(code & 0xFFU);
            out += "\\u" + as_hex({&high, 1}) + as_hex({&low, 1});
        }
    }
    return out + '"';
}

std::string as_hex(std::string_view bytes) {
    constexpr char const* digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(2 * bytes.size());
    for (char const c : bytes) {
        text += digits[value_of(c) >> 4U];
        text += digits[value_of(c) & 15U];
    }
    return text;
}

std::string as_text(stored_number const& value) {
    std::array<char, 32> text{};
    auto const end = std::visit(
        [&text](auto held) { return std::to_chars(text.data(), text.data() + text.size(), held).ptr; }, value);
    return {text.data(), end};
}

}  // namespace inspect
