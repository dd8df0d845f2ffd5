#include <velum/core/detail/required.hpp>
#include <velum/core/detail/secret.hpp>
#include <velum/core/detail/stack_guard.hpp>
#include <velum/core/detail/words.hpp>
#include <velum/serial/detail/record.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/wire/detail/count.hpp>
#include <velum/wire/detail/fill.hpp>
#include <velum/wire/detail/sources.hpp>

#include <algorithm>
#include <utility>

namespace velum {

namespace record = detail::record;
using detail::read_word;
using detail::stack_guard;
using detail::write_word;

basic_serializer_t::basic_serializer_t(i_unknown_t* outer, iptr<i_istream_t> const& stream,
                                       iptr<i_object_factory_t> const& factory, int version)
    : imp(outer, state{.input = stream, .factory = factory, .version = version}) {}

basic_serializer_t::basic_serializer_t(i_unknown_t* outer, iptr<i_ostream_t>& stream, int version)
    : imp(outer, state{.output = stream, .version = version}) {}

basic_serializer_t::basic_serializer_t(i_unknown_t* outer) : imp(outer) {}

bool basic_serializer_t::create(iptr<i_unknown_t> const& outer, iptr<i_istream_t> const& stream,
                                iptr<i_object_factory_t> const& factory, int version, guid_t const& iid, void* out) {
    return create_object(outer, iid, out, stream, factory, version);
}

bool basic_serializer_t::create(iptr<i_unknown_t> const& outer, iptr<i_ostream_t>& stream, int version,
                                guid_t const& iid, void* out) {
    return create_object(outer, iid, out, stream, version);
}

bool basic_serializer_t::create(iptr<i_unknown_t> const& outer, int, guid_t const& iid, void* out) {
    return create_object(outer, iid, out);
}

bool basic_serializer_t::create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const&,
                                         guid_t const& iid, void* out) {
    return create(outer, 0, iid, out);
}

// Where the number is, or the free place where it would be. Nobody knows which numbers end in one place.
std::size_t basic_serializer_t::object_table::place_of(std::vector<entry> const& entries, std::uint32_t number) {
    std::size_t const last = entries.size() - 1;
    std::size_t place = (number * detail::secret_bits() >> 32U) & last;
    while (entries[place].object && entries[place].number != number) {
        place = (place + 1) & last;
    }
    return place;
}

void basic_serializer_t::object_table::grow_others() {
    std::vector<entry> larger(std::max<std::size_t>(16, 2 * others_.size()));
    for (entry& each : others_) {
        if (each.object) {
            larger[place_of(larger, each.number)] = each;
            each.object = nullptr;  // gives the reference up while it is at hand
        }
    }
    others_.swap(larger);
}

void basic_serializer_t::object_table::set(std::uint32_t number, iptr<i_unknown_t> const& object) {
    if (number < counted_.size()) {
        counted_[number] = object;
    } else if (number == counted_.size() && size_of_others_ == 0) {
        counted_.push_back(object);
    } else {
        if (2 * (size_of_others_ + 1) > others_.size()) {
            grow_others();
        }
        entry& place = others_[place_of(others_, number)];
        size_of_others_ += place.object ? 0 : 1;
        [[maybe_unused]] entry const before =
            std::exchange(place, entry{number, object});  // goes last: it may come back to the table
    }
}

i_unknown_t* basic_serializer_t::object_table::find(std::uint32_t number) const {
    if (number < counted_.size()) {
        return counted_[number].get();
    }
    return size_of_others_ != 0 ? others_[place_of(others_, number)].object.get() : nullptr;
}

void basic_serializer_t::object_table::clear() {
    size_of_others_ = 0;
    std::vector<entry>().swap(others_);
    counted_.clear();
}

int basic_serializer_t::basic_serializer_imp_t::version() const {
    return payload.version;
}

std::map<std::string, boost::any>& basic_serializer_t::basic_serializer_imp_t::attributes() {
    return payload.attributes;
}

std::map<std::string, boost::any> const& basic_serializer_t::basic_serializer_imp_t::attributes() const {
    return payload.attributes;
}

// What runs within an operation may drop the last reference that others hold on the serializer, so each takes one on
// itself.

void basic_serializer_t::basic_serializer_imp_t::write_object(iptr<i_serializable_t> const& object) {
    stack_guard const guard(stack_guard::reserve::for_writing);
    stack_guard::level_of_object const level(guard);
    auto const writer = self();
    iptr<i_serializable_t> const meant = mapped(object);
    if (!meant) {
        write_word(output(), record::null);
        return;
    }
    iptr<i_unknown_t> const identity(meant, iid_unknown);
    auto const known = payload.numbers_of_objects.find(identity);
    if (known != payload.numbers_of_objects.end()) {
        write_word(output(), record::reference);
        write_word(output(), static_cast<std::uint32_t>(known->second));
        return;
    }
    writer->write_object_header(identity);
    meant->serialize(writer);
}

// The object is in the table before its stages are written, so that a reference from inside one is a reference.
void basic_serializer_t::basic_serializer_imp_t::write_object_header(iptr<i_unknown_t> const& object) {
    stack_guard const guard(stack_guard::reserve::for_writing);
    stack_guard::level_of_object const level(guard);
    auto const writer = self();
    iptr<i_serializable_t> const serializable(object, iid_serializable);
    detail::required(serializable, "object not serializable");
    write_word(output(), record::new_object);
    std::uint64_t const number = payload.next_number++;
    write_word(output(), static_cast<std::uint32_t>(number));
    payload.numbers_of_objects.insert_or_assign(object, number);
    guid_t const clsid = serializable->clsid();
    output().write(reinterpret_cast<char const*>(&clsid), sizeof clsid);
    serializable->serialize_obj(writer);
}

bool basic_serializer_t::basic_serializer_imp_t::read_object(iptr<i_serializable_t>& object) {
    stack_guard const guard(stack_guard::reserve::for_reading);
    stack_guard::level const level(guard);
    auto const reader = self();
    object = nullptr;
    std::uint32_t const tag = read_word(input());
    if (tag == record::null) {
        return true;
    }
    if (tag == record::reference) {
        if (!read_reference(object)) {
            return false;
        }
    } else {
        build_object(reader, nullptr)->query_interface(iid_serializable, &object);
        // A reference of its own: the object may reach the caller's holder while it reads.
        iptr<i_serializable_t> const built = object;
        detail::required(built, "object is not deserializable").deserialize(reader);
    }
    object = mapped(object);
    return true;
}

bool basic_serializer_t::basic_serializer_imp_t::read_reference(iptr<i_serializable_t>& object) {
    iptr<i_unknown_t> const met(payload.objects_by_number.find(read_word(input())));
    return detail::required(met, "object not deserialized yet").query_interface(iid_serializable, &object);
}

bool basic_serializer_t::basic_serializer_imp_t::read_object_header(iptr<i_unknown_t> const& controlling,
                                                                    iptr<i_unknown_t>& object) {
    stack_guard const guard(stack_guard::reserve::for_reading);
    stack_guard::level const level(guard);
    auto const reader = self();
    read_word(input());
    object = build_object(reader, controlling);
    return true;
}

// The object is in the table before its state stage is read, so that references from inside it find the object.
iptr<i_unknown_t> basic_serializer_t::basic_serializer_imp_t::build_object(iptr<i_serializer_t> const& reader,
                                                                           iptr<i_unknown_t> const& controlling) {
    std::uint32_t const number = read_word(input());
    guid_t clsid;
    input().read(reinterpret_cast<char*>(&clsid), sizeof clsid);
    iptr<i_unknown_t> object;
    detail::required(payload.factory, "serializer has no object factory")
        .deserialize_object(clsid, controlling, reader, object);
    detail::required(object, "object is not deserializable");
    payload.objects_by_number.set(number, object);
    return object;
}

void basic_serializer_t::basic_serializer_imp_t::write_string(std::string const& text) {
    write_word(output(), detail::count_of(text.size()));
    if (!text.empty()) {
        output().write(text.data(), static_cast<long long>(text.size()));
    }
}

void basic_serializer_t::basic_serializer_imp_t::read_string(std::string& text) {
    std::uint32_t const length = read_word(input());
    text.clear();
    detail::serializer_source source(*this);
    detail::fill(source, text, length);
}

void basic_serializer_t::basic_serializer_imp_t::write(char const* data, long long count) {
    output().write(data, count);
}

void basic_serializer_t::basic_serializer_imp_t::read(char* data, long long count) {
    input().read(data, count);
}

long long basic_serializer_t::basic_serializer_imp_t::tell() {
    return payload.input ? payload.input->tellg()
                         : detail::required(payload.output, "serializer has no stream").tellp();
}

void basic_serializer_t::basic_serializer_imp_t::seek(long long offset, int way) {
    if (payload.input) {
        payload.input->seekg(offset, way);
    } else {
        detail::required(payload.output, "serializer has no stream").seekp(offset, way);
    }
}

void basic_serializer_t::basic_serializer_imp_t::flush() {
    if (payload.output) {
        payload.output->flush();
    }
}

void basic_serializer_t::basic_serializer_imp_t::set_object_mapper(object_mapper_t const& mapper) {
    payload.mapper = mapper_holder(mapper);
}

i_istream_t& basic_serializer_t::basic_serializer_imp_t::input() const {
    return detail::required(payload.input, "serializer has no input stream");
}

i_ostream_t& basic_serializer_t::basic_serializer_imp_t::output() const {
    return detail::required(payload.output, "serializer has no output stream");
}

iptr<i_serializable_t> basic_serializer_t::basic_serializer_imp_t::mapped(iptr<i_serializable_t> const& object) const {
    auto const mapper = payload.mapper.shared;
    return mapper ? (*mapper)(object) : object;
}

}  // namespace velum
