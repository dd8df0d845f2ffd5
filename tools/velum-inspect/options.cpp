#include "options.hpp"

#include "quoting.hpp"

#include <velum/core/build_info.hpp>
#include <velum/version.hpp>

#include <array>
#include <charconv>
#include <iostream>
#include <stdexcept>
#include <string_view>

#include <getopt.h>

#if defined(_WIN32)
#    include <io.h>
#else
#    include <unistd.h>
#endif

namespace inspect {
namespace {

constexpr char const* help =
    R"(Usage: velum-inspect [OPTION]... [FILE]

Prints a stored value map or stream of objects: names, types, values, nesting, and which object leads to which. Without a
FILE, or when it is -, reads the standard input.

What is printed:
  -j, --json           one JSON value
  -d, --dot            the objects as a graph for Graphviz
  -s, --summary        counts and bytes by type and by class
  -o, --offsets        also where each thing and its value begin, in bytes
  -f, --full           long texts, buffers and vectors whole

What is read:
      --as WHAT        map or objects; without it the first bytes tell
      --start BYTES    pass over so many bytes first
      --count NUMBER   so many maps or objects in a row; without it one map, or all objects
      --class TEXT     what objects of a class store, such as
                       "{9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3} note: text title, map values, object author"
      --classes FILE   the same for several, one on each line

  -h, --help           print this and exit
  -V, --version        print the version and how the library was built, and exit

The status is 0 when all could be read, 1 when the stream is damaged or has objects of a class that isn't described (the
message says where), and 2 when something else was in the way. The manual page describes the output and the words for classes.
)";

enum : int { as_option = 256, start_option, count_option, class_option, classes_option };

constexpr std::array long_options{
    option{"json", no_argument, nullptr, 'j'},
    option{"dot", no_argument, nullptr, 'd'},
    option{"summary", no_argument, nullptr, 's'},
    option{"offsets", no_argument, nullptr, 'o'},
    option{"full", no_argument, nullptr, 'f'},
    option{"as", required_argument, nullptr, as_option},
    option{"start", required_argument, nullptr, start_option},
    option{"count", required_argument, nullptr, count_option},
    option{"class", required_argument, nullptr, class_option},
    option{"classes", required_argument, nullptr, classes_option},
    option{"help", no_argument, nullptr, 'h'},
    option{"version", no_argument, nullptr, 'V'},
    option{nullptr, 0, nullptr, 0},
};

std::uint64_t natural(char const* name, std::string_view text) {
    std::uint64_t number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw usage_error(std::string(name) + " needs a number, not " + in_quotes(text));
    }
    return number;
}

bool is_objects(std::string_view text) {
    if (text != "map" && text != "objects") {
        throw usage_error(R"(--as needs "map" or "objects", not )" + in_quotes(text));
    }
    return text == "objects";
}

void choose(options& chosen, output as) {
    if (chosen.as != output::text && chosen.as != as) {
        throw usage_error("one of --json, --dot and --summary is enough");
    }
    chosen.as = as;
}

void describe_class(options& chosen, char const* text) {
    try {
        chosen.classes.add(text);
    } catch (std::runtime_error const& failure) {
        throw usage_error(std::string("--class: ") + failure.what());
    }
}

bool stdin_is_terminal() {
#if defined(_WIN32)
    return _isatty(_fileno(stdin)) != 0;
#else
    return isatty(STDIN_FILENO) != 0;
#endif
}

/// False when the program has nothing more to do.
bool apply(options& chosen, int found) {
    switch (found) {
        case 'j':
            choose(chosen, output::json);
            break;
        case 'd':
            choose(chosen, output::dot);
            break;
        case 's':
            choose(chosen, output::summary);
            break;
        case 'o':
            chosen.offsets = true;
            break;
        case 'f':
            chosen.full = true;
            break;
        case as_option:
            chosen.objects = is_objects(optarg);
            break;
        case start_option:
            chosen.start = natural("--start", optarg);
            break;
        case count_option:
            chosen.count = natural("--count", optarg);
            break;
        case class_option:
            describe_class(chosen, optarg);
            break;
        case classes_option:
            chosen.classes.add_file(optarg);
            break;
        case 'h':
            std::cout << help;
            return false;
        case 'V':
            std::cout << "velum-inspect " VELUM_VERSION "\n" << velum::build_info();
            return false;
        default:
            throw usage_error("");  // getopt has said what is wrong
    }
    return true;
}

}  // namespace

std::optional<options> parse(int count, char** arguments) {
    options chosen;
    for (int found = 0; (found = getopt_long(count, arguments, "jdsofhV", long_options.data(), nullptr)) != -1;) {
        if (!apply(chosen, found)) {
            return std::nullopt;
        }
    }
    if (count - optind > 1) {
        throw usage_error("one file at a time");
    }
    if (optind < count) {
        chosen.file = arguments[optind];
    } else if (stdin_is_terminal()) {
        throw usage_error("no file, and the standard input is a terminal");
    }
    return chosen;
}

}  // namespace inspect
