#include <velum/core/detail/required.hpp>
#include <velum/serial/stream.hpp>
#include <velum/wire/detail/blocks.hpp>

#include <ios>

namespace velum {
namespace {

template <class Stream>
Stream& required(boost::shared_ptr<Stream> const& stream) {
    return detail::required(stream, "stream object has no stream");
}

}  // namespace

basic_istream_t::basic_istream_t(i_unknown_t* outer, boost::shared_ptr<std::basic_istream<char>> const& stream)
    : imp(outer, stream) {}

bool basic_istream_t::create(iptr<i_unknown_t> const& outer, boost::shared_ptr<std::basic_istream<char>> const& stream,
                             guid_t const& iid, void* out) {
    return create_object(outer, iid, out, stream);
}

bool basic_istream_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&, guid_t const& iid,
                                      void* out) {
    return create(outer, nullptr, iid, out);
}

long long basic_istream_t::basic_istream_imp_t::tellg() {
    return required(payload).tellg();
}

void basic_istream_t::basic_istream_imp_t::seekg(long long offset, int way) {
    required(payload).seekg(offset, static_cast<std::ios_base::seekdir>(way));
}

void basic_istream_t::basic_istream_imp_t::read(char* data, long long count) {
    detail::read_block(required(payload), data, count);
}

basic_ostream_t::basic_ostream_t(i_unknown_t* outer, boost::shared_ptr<std::basic_ostream<char>> const& stream)
    : imp(outer, stream) {}

bool basic_ostream_t::create(iptr<i_unknown_t> const& outer, boost::shared_ptr<std::basic_ostream<char>> const& stream,
                             guid_t const& iid, void* out) {
    return create_object(outer, iid, out, stream);
}

bool basic_ostream_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&, guid_t const& iid,
                                      void* out) {
    return create(outer, nullptr, iid, out);
}

long long basic_ostream_t::basic_ostream_imp_t::tellp() {
    return required(payload).tellp();
}

void basic_ostream_t::basic_ostream_imp_t::seekp(long long offset, int way) {
    required(payload).seekp(offset, static_cast<std::ios_base::seekdir>(way));
}

void basic_ostream_t::basic_ostream_imp_t::write(char const* data, long long count) {
    detail::write_block(required(payload), data, count);
}

void basic_ostream_t::basic_ostream_imp_t::flush() {
    required(payload).flush();
}

}  // namespace velum
