#include "quoting.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

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

bool is_control(std::string_view text, std::size_t length) {
    unsigned const first = value_of(text.front());
    return first < 0x20 || first == 0x7F || (length == 2 && first == 0xC2 && value_of(text[1]) < 0xA0);
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

/// Calls `escape` with the bytes that can't stand for themselves, and takes all others as they are.
template <class Escape>
std::string quoted_by(std::string_view text, Escape escape) {
    std::string out = "\"";
    while (!text.empty()) {
        std::size_t const length = character(text);
        if (char const* const named = named_escape(text.front())) {
            out += named;
        } else if (length == 0 || is_control(text, length)) {
            out += escape(text.front());
            text.remove_prefix(1);
            continue;
        } else {
            out += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return out + '"';
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
    return quoted_by(text, [](char c) { return "\\x" + as_hex({&c, 1}); });
}

std::string name_for_people(std::string const& name) {
    auto const is_plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
    };
    return !name.empty() && std::all_of(name.begin(), name.end(), is_plain) ? name : in_quotes(name);
}

// Control characters beyond the first 32 and 127 come as two bytes, of which JSON has no word.
std::string json_string(std::string_view text) {
    std::string out = "\"";
    for (char const c : text) {
        if (char const* const named = named_escape(c)) {
            out += named;
        } else if (value_of(c) < 0x20) {
            out += "\\u00" + as_hex({&c, 1});
        } else {
            out += c;
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
