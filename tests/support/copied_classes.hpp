#pragma once

#include "support/bytes.hpp"
#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"
#include "support/recording_stream.hpp"

#include <sstream>
#include <string>

namespace support {

/// Opens what the boxed value map keeps for its heirs.
class open_map : public velum::uany_map_obj_t {
public:
    explicit open_map(velum::uany_map const& map) : uany_map_obj_t(map) {}
};

/// Calls `check(make, fill, content, moved)` for each class whose objects can be copied with their content:
/// `make(outer)` makes one, `fill` gives it more content, `content` tells what is there, which may change it, and
/// `moved` is what that tells of an object whose content was moved away. `object` is what they hold, if anything.
void for_each_copied_class(serializable const& object, auto check) {
    using namespace velum;
    static std::string const long_text = "a text which a string keeps on the heap";

    auto const string_in = [](auto& o) { return side_of<i_string_t>(o, iid_string); };
    check([](i_unknown_t* outer) { return basic_string_t(outer, ""); },
          [=](auto& o) { string_in(o)->string() = long_text; }, [=](auto& o) { return string_in(o)->string(); }, "");

    auto const map_in = [](auto& o) { return side_of<i_unknown_map_t>(o, iid_unknown_map); };
    check([](i_unknown_t* outer) { return basic_unknown_map_t(outer); },
          [=](auto& o) { map_in(o)->set("k", identity_of(object)); },
          [=](auto& o) { return std::string(map_in(o)->get("k") == identity_of(object) ? "full" : "empty"); }, "empty");

    check([](i_unknown_t*) { return open_map({}); },
          [](auto& o) {
              o = open_map({{"k", long_text}});
          },
          [](auto& o) { return o.map().empty() ? "" : boost::any_cast<std::string>(o.map().at("k")); }, "");

    // A null in a list of commands is told when it is its turn.
    check([](i_unknown_t*) { return multi_command_t({}); }, [](auto& o) { o = multi_command_t({nullptr}); },
          [](auto& o) { return failure_of([&] { o.do_it(); }); }, "");

    auto const classes_in = [](auto& o) { return side_of<i_object_factory_t>(o, iid_object_factory); };
    auto const add = [=](auto& o) { classes_in(o)->register_class(node::id, {}, {{long_text, long_text}}, {}, {}); };
    auto const known = [=, id = object->clsid()](auto& o) {
        auto const lacks = [&](guid_t const& clsid) {
            return !failure_of([&] { classes_in(o)->class_info(clsid); }).empty();
        };
        return std::to_string(classes_in(o)->registered_classes().size()) + (lacks(id) ? " no text" : " text") +
               (lacks(node::id) ? " no node" : " node");
    };
    check([](i_unknown_t* outer) { return basic_object_factory_t(outer); }, add, known, "0 no text no node");
    check([](i_unknown_t* outer) { return multi_object_factory_t(outer, {new_factory()}); }, add, known,
          "0 no text no node");

    static int mapped = 0;
    auto const in = [](auto& o) { return side_of<i_serializer_t>(o, iid_serializer); };
    auto const filled = [=](auto use) {
        return [=](auto& o) {
            in(o)->attributes()[long_text] = long_text;
            in(o)->set_object_mapper([](serializable const& met) { return ++mapped, met; });
            use(in(o));
        };
    };
    auto const passes = [=](auto use) {  // how many bytes an object takes: 8 one that is known
        return [=](auto& o) {
            mapped = 0;
            auto const before = in(o)->tell();
            std::string const failure = failure_of([&] { use(in(o)); });
            return std::to_string(in(o)->tell() - before) + " bytes " + std::to_string(mapped) + " mapped " +
                   std::to_string(in(o)->attributes().size() + static_cast<unsigned>(in(o)->version())) + failure;
        };
    };
    auto const write = [=](auto const& s) { s->write_object(object); };
    std::ostringstream record;
    writer_on(record)->write_object(object);
    check(
        [](i_unknown_t* outer) {
            iptr<i_ostream_t> stream(new recording_stream);
            return basic_serializer_t(outer, stream, 3);
        },
        filled(write), passes(write), std::to_string(record.str().size()) + " bytes 0 mapped 3");
    auto const read = [](auto const& s) {
        serializable back;
        s->read_object(back);
    };
    for (std::uint32_t const number : {0U, 5U}) {  // one that a writer gives, and one of another table
        std::string bytes = record.str().replace(4, 4, u32(number));
        for (int i = 0; i < 5; ++i) {
            bytes += u32(1) + u32(number);
        }
        check(
            [=](i_unknown_t* outer) {
                return basic_serializer_t(outer, new recording_stream(bytes), new_factory(), 3);
            },
            filled(read), passes(read), "8 bytes 0 mapped 3std::runtime_error: object not deserialized yet");
    }
}

}  // namespace support
