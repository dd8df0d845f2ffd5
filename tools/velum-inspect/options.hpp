#pragma once

#include "classes.hpp"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace inspect {

enum class output { text, json, dot, summary };

/// What the command line asks for.
struct options {
    std::string file = "-";
    output as = output::text;
    bool offsets = false;
    bool full = false;
    std::optional<bool> objects;         // or a map; empty to look
    std::uint64_t start = 0;             // bytes that are passed over
    std::optional<std::uint64_t> count;  // of maps or objects
    class_catalogue classes;
};

/// The command line can't be understood; the text says why.
struct usage_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Empty when all was said that was asked for, as with --help. Throws `usage_error` and, for a file of classes,
/// `std::runtime_error`.
std::optional<options> parse(int count, char** arguments);

}  // namespace inspect
