#include "../storing.hpp"

#include <velum/velum.hpp>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/map.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/binary.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include <map>
#include <string>
#include <vector>

// Sixteen buffers of 1 MiB under their names, written to a stream and read back.

namespace {

using contest::memory_input;
using contest::memory_output;

constexpr int count = 16;
constexpr int size = 1 << 20;
constexpr int room = count * size + (1 << 16);

/// The buffers as a map from names to values, which differ in their bytes.
template <class Map, class Buffer>
Map document() {
    Map map;
    for (int i = 0; i < count; ++i) {
        std::string const name = {'b', static_cast<char>('a' + i)};
        map[name.c_str()] = Buffer(size, static_cast<typename Buffer::value_type>(i));
    }
    return map;
}

/// A stream that lost its place, or a part of what was written, ends in another buffer.
template <class Buffer>
bool is_last(Buffer const& buffer) {
    return buffer.size() == size && buffer.back() == count - 1;
}

/// Enters who writes a document and reads it back.
template <class Sink = memory_output, class Source = memory_input, class Make, class Write, class Read>
bool enter_both(std::string const& name, Make make, Write write, Read read) {
    return contest::enter_storing<Sink, Source>({"buffers", count, room}, name, make, write, read);
}

namespace of_velum {

void write(std::ostream& out, velum::any_map const& map) {
    velum::write(out, map);
}

bool read(std::istream& in) {
    velum::any_map back;
    velum::read(in, back);
    return back.size() == count && is_last(boost::any_cast<velum::byte_vector const&>(back.rbegin()->second));
}

bool const entered = enter_both("velum", document<velum::any_map, velum::byte_vector>, write, read);

}  // namespace of_velum

using buffer = std::vector<std::uint8_t>;
using buffer_map = std::map<std::string, buffer>;

/// The bytes of the buffers and nothing else: a copy of each into the memory of the sink, or out of that of the source
/// into a buffer that was allocated and filled with zeros. A call on the stream for each is lost in that.
namespace of_floor {

void write(std::ostream& out, buffer_map const& map) {
    for (auto const& [name, bytes] : map) {
        out.write(reinterpret_cast<char const*>(bytes.data()), size);
    }
}

bool read(std::istream& in) {
    std::vector<buffer> back;
    back.reserve(count);
    for (int i = 0; i < count; ++i) {
        in.read(reinterpret_cast<char*>(back.emplace_back(size).data()), size);
    }
    return is_last(back.back());
}

bool const entered = enter_both("floor", document<buffer_map, buffer>, write, read);

}  // namespace of_floor

bool is_complete(buffer_map const& map) {
    return map.size() == count && is_last(map.rbegin()->second);
}

namespace of_cereal {

void write(std::ostream& out, buffer_map const& map) {
    cereal::BinaryOutputArchive archive(out);
    archive(map);
}

bool read(std::istream& in) {
    buffer_map back;
    cereal::BinaryInputArchive archive(in);
    archive(back);
    return is_complete(back);
}

bool const entered = enter_both("cereal", document<buffer_map, buffer>, write, read);

}  // namespace of_cereal

namespace of_boost {

constexpr auto flags = boost::archive::no_header | boost::archive::no_codecvt;

void write(std::ostream& out, buffer_map const& map) {
    boost::archive::binary_oarchive archive(out, flags);
    archive << map;
}

bool read(std::istream& in) {
    buffer_map back;
    boost::archive::binary_iarchive archive(in, flags);
    archive >> back;
    return is_complete(back);
}

bool const entered = enter_both("Boost.Serialization", document<buffer_map, buffer>, write, read);

}  // namespace of_boost

namespace of_qt {

using map = QMap<QString, QByteArray>;

using device = contest::qt_device;

void write(device& out, map const& from) {
    QDataStream stream(&out);
    stream << from;
}

bool read(device& in) {
    QDataStream stream(&in);
    map back;
    stream >> back;
    return back.size() == count && is_last(back.last());
}

bool const entered = enter_both<device, device>("QDataStream", document<map, QByteArray>, write, read);

}  // namespace of_qt

}  // namespace
