#include "checks.hpp"
#include "targets.hpp"

#include <velum/core/guid.hpp>

#include <algorithm>
#include <stdexcept>

// A text is an identifier, whose own text is one way to write it, or is refused.
void fuzz::identifiers(std::string const& bytes) {
    velum::guid_t id;
    try {
        id = velum::guid_t(bytes);
    } catch (std::runtime_error const& failure) {
        require(std::string(failure.what()) == "invalid uuid string", failure.what());
        return;
    }
    std::string const text = id.string();
    std::string digits, lower;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char c) { return c != '-'; });
    std::transform(text.begin(), text.end(), std::back_inserter(lower),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    require(text.size() == 38, "the text of an identifier is no such text: " + text);
    for (std::string const& form : {text, lower, digits, digits.substr(1, 32), text.substr(1, 36)}) {
        require(velum::guid_t(form) == id && velum::guid_t(form).string() == text, "another identifier: " + form);
    }
    auto const same = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
    std::string given;
    std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(given), [](char c) { return c != '-'; });
    require(std::search(given.begin(), given.end(), digits.begin() + 1, digits.end() - 1, same) != given.end(),
            "an identifier with digits that nobody gave: " + text);
}
