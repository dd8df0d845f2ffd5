#include "arrivals.hpp"

#include "require.hpp"

#include <velum/boxed/value_map.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/wire/write.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <sstream>

namespace scene {
namespace {

// Neither kind of map can be emptied but by reading. A boxed value map merges, so each of its values gets another one;
// an object map takes what it reads for all that it has. Without values the two read the same bytes.
void take_apart(velum::iptr<velum::i_unknown_t> const& object) {
    auto const stored = object.as<velum::i_serializable_t>();
    bool const is_value_map = stored->clsid() == velum::uany_map_obj_t::_clsid;  // others may have values too
    if (!is_value_map && !object.try_as<velum::i_unknown_map_t>()) {
        return;
    }
    velum::uany_map instead;
    if (is_value_map) {
        for (auto const& [key, value] : object.as<velum::i_uany_map_t>()->map()) {
            instead[key] = 0;
        }
    }
    auto const stream = boost::make_shared<std::stringstream>();
    stream->write("\0\0\1\0", 4);  // the version word
    velum::write(*stream, instead);
    auto const input = velum::make<velum::basic_istream_t>(stream).as<velum::i_istream_t>();
    stored->deserialize(velum::make<velum::basic_serializer_t>(input, nullptr, 0).as<velum::i_serializer_t>());
}

}  // namespace

arrivals::~arrivals() {
    for (auto const& object : objects_) {
        try {
            take_apart(object);
        } catch (std::exception const&) {  // out of memory, so what can't be taken apart stays
        }
    }
}

void arrivals::add(velum::iptr<velum::i_serializable_t> const& object) {
    bool const is_new = objects_.insert(object.try_as<velum::i_unknown_t>()).second;
    bool const is_map = static_cast<bool>(object.try_as<velum::i_unknown_map_t>());
    require(is_new || !is_map, "an object map stands in two places");
}

void arrivals::accept(std::size_t count) {
    require(objects_.size() == count, "there are objects that don't belong to it");
    objects_.clear();
}

}  // namespace scene
