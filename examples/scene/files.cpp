#include "files.hpp"

#include <velum/values/errors.hpp>
#include <velum/wire/read.hpp>
#include <velum/wire/write.hpp>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace scene {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(fs::path const& file, std::string const& reason) {
    throw std::runtime_error(file.string() + ": " + reason);
}

std::string last_error() {
    return std::generic_category().message(errno);
}

[[noreturn]] void fail_at(fs::path const& file, std::string const& reason, std::streamoff offset) {
    fail(file, "broken at byte " + std::to_string(offset) + ": " + reason);
}

// A stream that has failed gives no position before it is cleared, and one with exceptions may throw another meanwhile.
std::streamoff position(std::ifstream& stream) {
    stream.exceptions(std::ios::goodbit);
    stream.clear();
    return stream.tellg();
}

}  // namespace

std::ifstream open_to_read(fs::path const& file) {
    std::error_code error;
    fs::file_status const status = fs::status(file, error);
    if (!fs::exists(status)) {
        fail(file, error ? error.message() : "there is no such file");
    }
    if (!fs::is_regular_file(status)) {
        fail(file, fs::is_directory(status) ? "a folder, where a file is needed" : "not a regular file");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        fail(file, last_error());
    }
    return stream;
}

void save(fs::path const& file, velum::any_map const& document) {
    std::ofstream stream(file, std::ios::binary);
    if (!stream) {
        fail(file, last_error());
    }
    stream.exceptions(std::ios::badbit | std::ios::failbit);  // `write` looks at no state
    try {
        velum::write(stream, document);
        stream.close();
    } catch (std::ios_base::failure const&) {
        fail(file, "can't be written to its end");
    }
}

void load(fs::path const& file, velum::any_map& document) {
    std::ifstream stream = open_to_read(file);
    stream.exceptions(std::ios::badbit | std::ios::failbit);  // without them what is missing reads as zeros
    try {
        velum::read(stream, document);
    } catch (velum::unknown_type const& failure) {
        std::streamoff const size_of_tag = 4;  // what it was thrown for has been read by then
        fail_at(file, failure.what(), position(stream) - size_of_tag);
    } catch (std::exception const& failure) {
        std::string const reason = stream.eof() ? "the file ends in the midst of a value" : failure.what();
        fail_at(file, reason, position(stream));
    }
    if (stream.peek() != std::ifstream::traits_type::eof()) {
        fail_at(file, "something stands behind the document", position(stream));
    }
}

}  // namespace scene
