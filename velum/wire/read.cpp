#include <velum/core/detail/required.hpp>
#include <velum/wire/detail/reader.hpp>
#include <velum/wire/detail/sources.hpp>
#include <velum/wire/read.hpp>

namespace velum {
namespace {

template <class Source, class Map>
void read_from(Source source, Map& map) {
    detail::reader<Source>(source).read_map(map);
}

}  // namespace

void read(std::basic_istream<char>& stream, any_map& map) {
    read_from(detail::stream_source(stream), map);
}

void read(std::basic_istream<char>& stream, uany_map& map) {
    read_from(detail::stream_source(stream), map);
}

void read(iptr<i_serializer_t> const& s, any_map& map) {
    read_from(detail::serializer_source(detail::required(s, "serializer is null")), map);
}

void read(iptr<i_serializer_t> const& s, uany_map& map) {
    read_from(detail::serializer_source(detail::required(s, "serializer is null")), map);
}

void deserialize(any_map& map, iptr<i_serializer_t> const& s) {
    read(s, map);
}

void deserialize(uany_map& map, iptr<i_serializer_t> const& s) {
    read(s, map);
}

}  // namespace velum
