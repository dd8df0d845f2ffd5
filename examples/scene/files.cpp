#include "files.hpp"

#include "arrivals.hpp"
#include "document.hpp"
#include "require.hpp"
#include "stages.hpp"

#include <velum/serial/serializer.hpp>
#include <velum/values/errors.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace scene {
namespace {

namespace fs = std::filesystem;
using object_map = velum::iptr<velum::i_unknown_map_t>;
using factory = velum::iptr<velum::i_object_factory_t>;

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

// What stands before the class of an object or the type of a value, and what has been read of these when they turn out
// to be unknown.
constexpr std::streamoff size_of_tag = 4;
constexpr std::streamoff size_of_number = 4;
constexpr std::streamoff size_of_identifier = sizeof(velum::guid_t);

// Where the identifier of an unknown class has just been read.
[[noreturn]] void fail_at_class(fs::path const& file, std::ifstream& stream) {
    std::streamoff const offset = position(stream) - size_of_identifier;
    velum::guid_t clsid;
    stream.seekg(offset);
    stream.read(reinterpret_cast<char*>(&clsid), sizeof clsid);
    bool const is_first = offset == size_of_tag + size_of_number;
    fail_at(file, is_first ? "it doesn't begin as a scene does" : "an object of the unknown class " + clsid.string(),
            offset);
}

object_map read_document(boost::shared_ptr<std::ifstream> const& stream, factory const& classes, arrivals& arrived) {
    auto const input = velum::make<velum::basic_istream_t>(stream).as<velum::i_istream_t>();
    auto const reader = velum::make<velum::basic_serializer_t>(input, classes, 0).as<velum::i_serializer_t>();
    reader->set_object_mapper([&arrived](auto const& object) {
        arrived.add(object);
        return object;
    });
    auto const document = read_reference<velum::i_unknown_map_t>(reader, "the document");
    require(static_cast<bool>(document), "null is in the place of the document");
    return document;
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

void save(boost::shared_ptr<std::ostream> const& stream, object_map const& document) {
    auto output = velum::make<velum::basic_ostream_t>(stream).as<velum::i_ostream_t>();
    auto const writer = velum::make<velum::basic_serializer_t>(output, 0).as<velum::i_serializer_t>();
    writer->write_object(document.as<velum::i_serializable_t>());
}

void save(fs::path const& file, object_map const& document) {
    auto const stream = boost::make_shared<std::ofstream>(file, std::ios::binary);
    if (!*stream) {
        fail(file, last_error());
    }
    stream->exceptions(std::ios::badbit | std::ios::failbit);  // the serializer looks at no state
    try {
        save(stream, document);
        stream->close();
    } catch (std::ios_base::failure const&) {
        fail(file, "can't be written to its end");
    }
}

object_map load(fs::path const& file, factory const& classes) {
    auto const stream = boost::make_shared<std::ifstream>(open_to_read(file));
    stream->exceptions(std::ios::badbit | std::ios::failbit);  // without them what is missing reads as zeros
    arrivals arrived;
    object_map document;
    try {
        document = read_document(stream, classes, arrived);
    } catch (velum::i_object_factory_t::class_not_registered const&) {
        fail_at_class(file, *stream);
    } catch (velum::unknown_type const& failure) {
        fail_at(file, failure.what(), position(*stream) - size_of_tag);
    } catch (std::exception const& failure) {
        std::string const reason = stream->eof() ? "the file ends in the midst" : failure.what();
        fail_at(file, reason, position(*stream));
    }
    if (stream->peek() != std::ifstream::traits_type::eof()) {
        fail_at(file, "something stands behind the document", position(*stream));
    }
    try {
        arrived.accept(check_document(document));
    } catch (std::runtime_error const& failure) {
        fail(file, std::string("no scene: ") + failure.what());
    }
    return document;
}

}  // namespace scene
