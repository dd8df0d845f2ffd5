#pragma once

#include "support/decode.hpp"

#include "inspect.hpp"
#include "walker.hpp"

#include <sstream>
#include <string>

namespace support {

// How far velum-inspect reads a stream, beside the library.

inline inspect::class_catalogue const& inspected_classes() {
    static inspect::class_catalogue const known = [] {
        inspect::class_catalogue made;
        made.add(node::id.string() + " node: text name, object origin, object links until null");
        return made;
    }();
    return known;
}

inline inspect::input input_of(std::istream& stream) {
    return inspect::input([&stream](char* data, std::size_t most) {
        stream.read(data, static_cast<std::streamsize>(most));
        return static_cast<std::size_t>(stream.gcount());
    });
}

/// Walks a map, or as many objects.
inline inspect::ending walk(int objects, std::string const& bytes, inspect::view& to,
                            inspect::content_limits limits = {}) {
    std::istringstream stream(bytes);
    inspect::input from = input_of(stream);
    inspect::walker walker(from, inspected_classes(), to, limits);
    inspect::ending end;
    to.begin(objects != 0 ? inspect::document::objects : inspect::document::map);
    try {
        for (int i = 0; i != objects; ++i) {
            walker.read_object(static_cast<std::uint64_t>(i));
        }
        if (objects == 0) {
            walker.read_map(std::nullopt);
        }
    } catch (inspect::damage const& broken) {
        end.broken = broken;
    }
    end.references = walker.references();
    end.offset = from.position();
    to.finish(end);
    return end;
}

/// The same by the library, which is told of every byte that is missing.
inline outcome read_strictly(int objects, std::string const& bytes) {
    std::istringstream stream(bytes);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    arrivals arrived;
    velum::any_map map;
    std::string const failure = failure_of([&] {
        if (objects != 0) {
            read_records(stream, arrived, objects);
        } else {
            read_values(route::serializer, stream, arrived, map);
        }
    });
    return {consumed_of(stream), failure};
}

// A reader takes any other number for that of a new object, and a reference to an object that is still being built is
// refused by its class and not by its form.
inline bool may_differ(outcome const& by_library, inspect::ending const& walked) {
    bool const is_object_tag = walked.broken && walked.broken->expected.starts_with("0 for null");
    return is_object_tag || by_library.failure == "std::runtime_error: object not deserialized yet";
}

/// How the two differ, or an empty text.
inline std::string difference(int objects, std::string const& bytes, inspect::view& to) {
    inspect::ending const walked = walk(objects, bytes, to);
    outcome const by_library = read_strictly(objects, bytes);
    bool const is_same = walked.broken ? !by_library.failure.empty() && walked.broken->offset <= bytes.size()
                                       : by_library.failure.empty() && walked.offset == by_library.consumed;
    if (is_same || may_differ(by_library, walked)) {
        return {};
    }
    return (walked.broken ? inspect::message(*walked.broken) : "whole up to " + std::to_string(walked.offset)) +
           ", but the library: " + by_library.failure + " at " + std::to_string(by_library.consumed);
}

}  // namespace support
