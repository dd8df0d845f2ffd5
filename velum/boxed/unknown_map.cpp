#include <velum/boxed/detail/version_word.hpp>
#include <velum/boxed/unknown_map.hpp>
#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>
#include <velum/core/detail/words.hpp>
#include <velum/wire/detail/arrivals.hpp>
#include <velum/wire/detail/count.hpp>
#include <velum/wire/detail/sinks.hpp>
#include <velum/wire/detail/sources.hpp>

#include <utility>

namespace velum {
namespace {

clsid_initializer_t const class_ids;

// Out of the frame that each level of maps within maps takes.
template <class Map, class Key>
[[gnu::noinline]] void put(Map& map, Key&& key, iptr<i_unknown_t> const& value) {
    auto const [place, is_new] = map.try_emplace(std::forward<Key>(key));
    if (is_new) {
        place->second = value;
        return;
    }
    // The object that goes may come back to the map from its destructor, so its entry is out of the map meanwhile.
    auto entry = map.extract(place);
    entry.mapped() = value;
    auto const result = map.insert(std::move(entry));
    if (!result.inserted) {
        result.position->second = value;
    }
}

}  // namespace

basic_unknown_map_t::basic_unknown_map_t(i_unknown_t* outer) : imp(outer) {}

bool basic_unknown_map_t::create(iptr<i_unknown_t> const& outer, guid_t const& iid, void* out) {
    return create_object(outer, iid, out);
}

bool basic_unknown_map_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&,
                                          guid_t const& iid, void* out) {
    return create(outer, iid, out);
}

bool basic_unknown_map_t::deserialize_function(iptr<i_unknown_t> const& outer, iptr<i_serializer_t> const&,
                                               iptr<i_unknown_t>& out) {
    return rebuild_object(outer, out);
}

void basic_unknown_map_t::basic_unknown_map_imp_t::set(std::string const& key, iptr<i_unknown_t> const& value) {
    put(payload, key, value);
}

iptr<i_unknown_t> basic_unknown_map_t::basic_unknown_map_imp_t::get(std::string const& key) {
    auto const found = payload.find(key);
    return found != payload.end() ? found->second : nullptr;
}

guid_t basic_unknown_map_t::basic_unknown_map_imp_t::clsid() const {
    return detail::clsid_basic_unknown_map;
}

void basic_unknown_map_t::basic_unknown_map_imp_t::serialize_obj(iptr<i_serializer_t> const&) const {}

void basic_unknown_map_t::basic_unknown_map_imp_t::serialize(iptr<i_serializer_t> const& s) const {
    detail::write_version_word(s);
    detail::write_word(*s, detail::count_of(payload.size()));
    detail::serializer_sink sink(*s);
    for (auto const& [key, object] : payload) {
        s->write_string(key);
        sink.write_object(object);
    }
}

void basic_unknown_map_t::basic_unknown_map_imp_t::deserialize(iptr<i_serializer_t> const& s) {
    detail::read_version_word(s);
    std::uint32_t const count = detail::read_word(*s);
    object_map().swap(payload);  // a destructor that looks into the map finds it empty

    constexpr std::uint64_t entry_memory = 64;  // bytes, about what a node takes
    detail::serializer_source source(*s);
    detail::arrivals arrivals(source);
    arrivals.promise(count * entry_memory);
    for (std::uint32_t i = 0; i < count; ++i) {
        std::string key;
        s->read_string(key);
        iptr<i_unknown_t> object;
        source.read_object(object);
        if (key.empty() && !object && payload.count(key) != 0) {
            arrivals.doubt();
        }
        put(payload, std::move(key), object);  // a copy of a damaged key would be large
        arrivals.keep(entry_memory);
    }
}

}  // namespace velum
