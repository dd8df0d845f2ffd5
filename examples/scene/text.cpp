#include "text.hpp"

namespace scene {
namespace {

bool is_control(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

// Not within a character of UTF-8.
std::size_t place_to_cut(std::string const& text, std::size_t most) {
    while (most != 0 && (static_cast<unsigned char>(text[most]) & 0xc0U) == 0x80U) {
        --most;
    }
    return most;
}

}  // namespace

std::string printable(std::string const& text, std::size_t most) {
    static char const digits[] = "0123456789abcdef";
    bool const is_cut = text.size() > most;
    std::string result;
    for (char const c : text.substr(0, is_cut ? place_to_cut(text, most) : text.size())) {
        if (is_control(c)) {
            result +=
                {'\\', 'x', digits[static_cast<unsigned char>(c) >> 4U], digits[static_cast<unsigned char>(c) & 15U]};
        } else {
            result += c;
        }
    }
    return is_cut ? result + "..." : result;
}

}  // namespace scene
