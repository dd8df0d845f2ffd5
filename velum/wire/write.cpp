#include <velum/core/detail/required.hpp>
#include <velum/wire/detail/sinks.hpp>
#include <velum/wire/detail/writer.hpp>
#include <velum/wire/write.hpp>

namespace velum {
namespace {

template <class Sink, class Map>
void write_to(Sink sink, Map const& map) {
    detail::writer<Sink>(sink).write_map(map);
}

}  // namespace

void write(std::basic_ostream<char>& stream, any_map const& map) {
    write_to(detail::stream_sink(stream), map);
}

void write(std::basic_ostream<char>& stream, uany_map const& map) {
    write_to(detail::stream_sink(stream), map);
}

void write(iptr<i_serializer_t> const& s, any_map const& map) {
    write_to(detail::serializer_sink(detail::required(s, "serializer is null")), map);
}

void write(iptr<i_serializer_t> const& s, uany_map const& map) {
    write_to(detail::serializer_sink(detail::required(s, "serializer is null")), map);
}

void serialize(any_map const& map, iptr<i_serializer_t> const& s) {
    write(s, map);
}

void serialize(uany_map const& map, iptr<i_serializer_t> const& s) {
    write(s, map);
}

}  // namespace velum
