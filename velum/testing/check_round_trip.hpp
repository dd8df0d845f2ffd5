#pragma once

#include <velum/core/i_serializable.hpp>
#include <velum/factory/i_object_factory.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/serial/stream.hpp>
#include <velum/testing/probe.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <functional>
#include <sstream>
#include <string>

namespace velum::conformance {

/// A writer on a stream that the caller keeps.
inline iptr<i_serializer_t> writer_on(std::ostream& stream) {
    boost::shared_ptr<std::ostream> const shared(&stream, [](auto* /*kept*/) {});
    auto output = make<basic_ostream_t>(shared).as<i_ostream_t>();
    return make<basic_serializer_t>(output, 0).as<i_serializer_t>();
}

/// A reader on a stream that the caller keeps.
inline iptr<i_serializer_t> reader_on(std::istream& stream, iptr<i_object_factory_t> const& factory) {
    boost::shared_ptr<std::istream> const shared(&stream, [](auto* /*kept*/) {});
    return make<basic_serializer_t>(make<basic_istream_t>(shared).as<i_istream_t>(), factory, 0).as<i_serializer_t>();
}

/// The stored form of an object with its graph, and how often the graph leads back to the object.
struct stored_form {
    /// Writes `object` with its graph.
    explicit stored_form(iptr<i_serializable_t> const& object) {
        std::ostringstream stream;
        auto const writer = writer_on(stream);
        auto const identity = object.try_as<i_unknown_t>();
        writer->set_object_mapper([&](iptr<i_serializable_t> const& met) {
            ways_back += met.try_as<i_unknown_t>() == identity ? 1 : 0;
            return met;
        });
        writer->write_object(object);
        --ways_back;  // the way to it
        bytes = stream.str();
    }

    std::string bytes;  ///< all that was written
    int ways_back = 0;  ///< references to the object in it
};

/// Writes an object with its graph, reads it with `factory` and writes what came back: nothing may be left unread, both
/// stored forms must be the same, and what leads back to the object must lead back to its copy. `untie` is called with
/// each object that was read, for graphs with cycles, which nobody else will untie.
inline findings check_round_trip(iptr<i_unknown_t> const& object, iptr<i_object_factory_t> const& factory,
                                 std::function<void(iptr<i_unknown_t> const&)> const& untie = {}) {
    findings found;
    std::vector<iptr<i_unknown_t>> arrived;
    try {
        stored_form const before(object.as<i_serializable_t>());
        std::istringstream stream(before.bytes);
        stream.exceptions(std::ios::failbit | std::ios::badbit);
        auto const reader = reader_on(stream, factory);
        reader->set_object_mapper([&](iptr<i_serializable_t> const& met) {
            arrived.emplace_back(met.get());
            return met;
        });
        iptr<i_serializable_t> copy;
        reader->read_object(copy);
        auto const unread = before.bytes.size() - static_cast<std::size_t>(stream.tellg());
        require(found, unread == 0, "round trip: reading leaves " + std::to_string(unread) + " bytes unread");
        stored_form const after(copy);
        auto const same =
            std::mismatch(before.bytes.begin(), before.bytes.end(), after.bytes.begin(), after.bytes.end());
        require(found, before.bytes == after.bytes,
                "round trip: the state isn't kept: written again, it differs from byte " +
                    std::to_string(same.first - before.bytes.begin()) + " on");
        require(found, before.ways_back == after.ways_back,
                "round trip: cycles: " + std::to_string(before.ways_back) + " references lead back to the object, " +
                    std::to_string(after.ways_back) + " to its copy");
    } catch (std::ios_base::failure const& /*failure*/) {
        add(found, {"round trip: reading takes more bytes than were written"});
    } catch (std::exception const& failure) {
        bool const is_early = failure.what() == std::string("object not deserialized yet");
        add(found, {std::string("round trip: ") +
                    (is_early ? "cycles: a reference to the object is read before the object is made: " : "failed: ") +
                    failure.what()});
    }
    for (auto const& each : arrived) {
        if (each && untie) {
            untie(each);
        }
    }
    return found;
}

}  // namespace velum::conformance
