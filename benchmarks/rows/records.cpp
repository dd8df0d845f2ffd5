#include "../storing.hpp"

#include <velum/velum.hpp>

#include <QtCore/QDataStream>
#include <QtCore/QUuid>
#include <QtCore/QVariant>
#include <QtGui/QMatrix4x4>
#include <QtGui/QVector3D>
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/array.hpp>
#include <boost/serialization/map.hpp>
#include <boost/serialization/split_free.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/binary.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/variant.hpp>
#include <cereal/types/vector.hpp>
#include <msgpack.hpp>
#include <nlohmann/json.hpp>

#include <array>
#include <cstring>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

// A thousand records of twelve mixed values, one of them a map, written to a stream and read back.

namespace {

using contest::enter;
using contest::memory_input;
using contest::memory_output;
using contest::noting_buffer;
using contest::work;

constexpr int count = 1000;
constexpr int values = 15 * count;  // of which three lie in a map that is one
constexpr std::size_t room = std::size_t{4} << 20U;

using vec3 = std::array<float, 3>;
using mat4 = std::array<float, 16>;
using id16 = std::array<std::uint8_t, 16>;
using blob = std::vector<std::uint8_t>;

/// Gives `put` the name and the value of each field of a record; `nested` makes one value of named values.
template <class Put, class Nested>
void describe(int i, Put put, Nested nested) {
    auto const f = static_cast<float>(i);
    put("enabled", i % 3 != 0);
    put("extra", nested([&](auto put_inner) {
            put_inner("a", i);
            put_inner("b", std::string("inner"));
            put_inner("c", 0.5 * i);
        }));
    put("id", i);
    put("key", id16{1, 2, 3, 4, static_cast<std::uint8_t>(i)});
    put("name", "record " + std::to_string(i));
    put("note", "what somebody wrote about it, which is a little longer: " + std::to_string(i));
    put("position", vec3{f, f + 1, f + 2});
    put("size", f / 4);
    put("tag", std::string(i % 2 != 0 ? "odd" : "even"));
    put("thumb", blob(64, static_cast<std::uint8_t>(i)));
    put("transform", mat4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, f, f, f, 1});
    put("weight", 0.25 * i);
}

/// As many records as a document has.
template <class Record>
std::vector<Record> list_of(Record (*make)(int)) {
    std::vector<Record> records;
    for (int i = 0; i < count; ++i) {
        records.push_back(make(i));
    }
    return records;
}

/// Enters who writes a document and reads it back. `read` gives the number of records.
template <class Sink = memory_output, class Source = memory_input, class Make, class Write, class Read>
bool enter_both(std::string const& name, Make make, Write write, Read read) {
    return contest::enter_storing<Sink, Source>({"records", count, room, "a value of a record", values}, name, make,
                                                write, [read](Source& in) { return read(in) == count; });
}

namespace of_velum {

using namespace velum;

template <std::size_t Rows>
auto to_value(std::array<float, Rows> const& v) {
    if constexpr (Rows == 3) {
        return math::vec<float, 3, math::use_simd_tag>(v[0], v[1], v[2]);
    } else {
        tessa::mat<float, 4, 4> m;
        std::memcpy(static_cast<void*>(&m), v.data(), sizeof v);
        return m;
    }
}

guid_t to_value(id16 const& id) {
    guid_t value;
    std::memcpy(&value, id.data(), sizeof value);
    return value;
}

byte_vector to_value(blob const& bytes) {
    return {bytes.begin(), bytes.end()};
}

any_map to_value(any_map const& map) {
    return map;
}

template <class T>
T to_value(T const& value) {
    return value;
}

any_map record(int i) {
    any_map map;
    describe(
        i, [&map](char const* key, auto const& value) { map[key] = to_value(value); },
        [](auto fill) {
            any_map inner;
            fill([&inner](char const* key, auto const& value) { inner[key] = value; });
            return inner;
        });
    map["tag"] = ustring(any_map_get<std::string>(map, "tag"));
    return map;
}

any_map document() {
    return {{"records", list_of(record)}};
}

void write_document(std::ostream& out, any_map const& map) {
    write(out, map);
}

std::size_t read_document(std::istream& in) {
    any_map back;
    read(in, back);
    return boost::any_cast<std::vector<any_map> const&>(back.at("records")).size();
}

bool const entered = enter_both("velum", document, write_document, read_document);

}  // namespace of_velum

namespace of_floor {

std::shared_ptr<noting_buffer> noted() {
    auto const buffer = std::make_shared<noting_buffer>();
    std::ostream stream(buffer.get());
    velum::write(stream, of_velum::document());
    return buffer;
}

bool const entered =
    enter({"write records", "floor", count,
           [] {
               auto const out = std::make_shared<memory_output>(room);
               return work([out, calls = noted()] {
                   out->rewind();
                   char const* from = calls->bytes.data();
                   for (std::streamsize const size : calls->sizes) {
                       out->write(from, size);
                       from += size;
                   }
               });
           }}) &&
    enter({"read records", "floor", count, [] {
               auto const calls = noted();
               auto const in = std::make_shared<memory_input>(calls->bytes);
               return work([in, calls, into = std::make_shared<std::string>(calls->bytes), map = of_velum::document()] {
                   in->rewind();
                   char* to = into->data();
                   for (std::streamsize const size : calls->sizes) {
                       in->read(to, size);
                       to += size;
                   }
                   velum::any_map const copy = map;
                   benchmark::DoNotOptimize(&copy);
               });
           }});

}  // namespace of_floor

/// Records as those have them who write down the types that may occur.
namespace plain {

struct value;
using record = std::map<std::string, value>;

struct value {
    std::variant<bool, int, float, double, std::string, vec3, mat4, id16, blob, record> held;

    template <class Archive>
    void serialize(Archive& archive) {
        archive(held);
    }
};

record make_record(int i) {
    record made;
    describe(
        i, [&made](char const* key, auto const& value) { made[key].held = value; },
        [](auto fill) {
            record inner;
            fill([&inner](char const* key, auto const& value) { inner[key].held = value; });
            return inner;
        });
    return made;
}

std::vector<record> document() {
    return list_of(make_record);
}

}  // namespace plain

namespace of_cereal {

void write(std::ostream& out, std::vector<plain::record> const& records) {
    cereal::BinaryOutputArchive archive(out);
    archive(records);
}

std::size_t read(std::istream& in) {
    std::vector<plain::record> back;
    cereal::BinaryInputArchive archive(in);
    archive(back);
    return back.size();
}

bool const entered = enter_both("cereal", plain::document, write, read);

}  // namespace of_cereal

}  // namespace

// Boost has no form for this variant.
namespace boost::serialization {

template <class Archive>
void save(Archive& archive, plain::value const& value, unsigned) {
    auto const kind = static_cast<std::uint8_t>(value.held.index());
    archive << kind;
    std::visit([&archive](auto const& held) { archive << held; }, value.held);
}

template <class Archive, std::size_t... I>
void load_one(Archive& archive, plain::value& value, std::size_t kind, std::index_sequence<I...>) {
    ((kind == I ? void(archive >> value.held.template emplace<I>()) : void()), ...);
}

template <class Archive>
void load(Archive& archive, plain::value& value, unsigned) {
    std::uint8_t kind = 0;
    archive >> kind;
    load_one(archive, value, kind, std::make_index_sequence<std::variant_size_v<decltype(value.held)>>());
}

template <class Archive>
void serialize(Archive& archive, plain::value& value, unsigned version) {
    split_free(archive, value, version);
}

}  // namespace boost::serialization

namespace {

namespace of_boost {

constexpr auto flags = boost::archive::no_header | boost::archive::no_codecvt;

void write(std::ostream& out, std::vector<plain::record> const& records) {
    boost::archive::binary_oarchive archive(out, flags);
    archive << records;
}

std::size_t read(std::istream& in) {
    std::vector<plain::record> back;
    boost::archive::binary_iarchive archive(in, flags);
    archive >> back;
    return back.size();
}

bool const entered = enter_both("Boost.Serialization", plain::document, write, read);

}  // namespace of_boost

namespace of_nlohmann {

using nlohmann::json;

json to_value(id16 const& id) {
    return json::binary({id.begin(), id.end()});
}

json to_value(blob const& bytes) {
    return json::binary(bytes);
}

template <class T>
json to_value(T const& value) {
    return value;
}

json record(int i) {
    json made;
    describe(
        i, [&made](char const* key, auto const& value) { made[key] = to_value(value); },
        [](auto fill) {
            json inner;
            fill([&inner](char const* key, auto const& value) { inner[key] = value; });
            return inner;
        });
    return made;
}

json document() {
    return list_of(record);
}

void write(std::ostream& out, json const& records) {
    json::to_cbor(records, out);
}

std::size_t read(std::istream& in) {
    return json::from_cbor(in).size();
}

bool const entered = enter_both("nlohmann CBOR", document, write, read);

}  // namespace of_nlohmann

namespace of_msgpack {

using value = msgpack::type::variant;
using record = std::map<std::string, value>;

template <std::size_t N>
value to_value(std::array<float, N> const& numbers) {
    return std::vector<value>(numbers.begin(), numbers.end());
}

value to_value(id16 const& id) {
    return std::vector<char>(id.begin(), id.end());
}

value to_value(blob const& bytes) {
    return std::vector<char>(bytes.begin(), bytes.end());
}

template <class T>
value to_value(T const& each) {
    return each;
}

record make_record(int i) {
    record made;
    describe(
        i, [&made](char const* key, auto const& each) { made[key] = to_value(each); },
        [](auto fill) {
            std::multimap<value, value> inner;
            fill([&inner](char const* key, auto const& each) { inner.emplace(std::string(key), value(each)); });
            return inner;
        });
    return made;
}

std::vector<record> document() {
    return list_of(make_record);
}

void write(std::ostream& out, std::vector<record> const& records) {
    msgpack::pack(out, records);
}

std::size_t read(std::istream& in) {
    msgpack::unpacker unpacker;
    do {
        unpacker.reserve_buffer(std::size_t{64} << 10U);
        in.read(unpacker.buffer(), static_cast<std::streamsize>(unpacker.buffer_capacity()));
        unpacker.buffer_consumed(static_cast<std::size_t>(in.gcount()));
    } while (in);
    msgpack::object_handle handle;
    unpacker.next(handle);
    return handle->as<std::vector<record>>().size();
}

bool const entered = enter_both("msgpack", document, write, read);

}  // namespace of_msgpack

namespace of_qt {

QVariant to_value(vec3 const& v) {
    return QVector3D(v[0], v[1], v[2]);
}

QVariant to_value(mat4 const& m) {
    return QMatrix4x4(m.data());
}

QVariant to_value(id16 const& id) {
    return QUuid::fromRfc4122(QByteArray(reinterpret_cast<char const*>(id.data()), 16));
}

QVariant to_value(blob const& bytes) {
    return QByteArray(reinterpret_cast<char const*>(bytes.data()), static_cast<int>(bytes.size()));
}

QVariant to_value(std::string const& text) {
    return QString::fromStdString(text);
}

template <class T>
QVariant to_value(T const& value) {
    return value;
}

QVariant record(int i) {
    QVariantMap made;
    describe(
        i, [&made](char const* key, auto const& value) { made[key] = to_value(value); },
        [](auto fill) {
            QVariantMap inner;
            fill([&inner](char const* key, auto const& value) { inner[key] = to_value(value); });
            return inner;
        });
    return made;
}

QVariantList document() {
    QVariantList records;
    for (int i = 0; i < count; ++i) {
        records.push_back(record(i));
    }
    return records;
}

using device = contest::qt_device;

void write(device& out, QVariantList const& from) {
    QDataStream stream(&out);
    stream << from;
}

int read(device& in) {
    QDataStream stream(&in);
    QVariantList back;
    stream >> back;
    return back.size();
}

bool const entered = enter_both<device, device>("QDataStream", document, write, read);

}  // namespace of_qt

}  // namespace
