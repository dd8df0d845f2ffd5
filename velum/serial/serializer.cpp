#include <velum/core/detail/required.hpp>
#include <velum/core/detail/stack_guard.hpp>
#include <velum/core/detail/words.hpp>
#include <velum/serial/detail/record.hpp>
#include <velum/serial/serializer.hpp>
#include <velum/wire/detail/count.hpp>
#include <velum/wire/detail/fill.hpp>
#include <velum/wire/detail/sources.hpp>

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

int basic_serializer_t::basic_serializer_imp_t::version() const {
    return payload.version;
}

std::map<std::string, boost::any>& basic_serializer_t::basic_serializer_imp_t::attributes() {
    return payload.attributes;
}

std::map<std::string, boost::any> const& basic_serializer_t::basic_serializer_imp_t::attributes() const {
    return payload.attributes;
}

// What runs within an operation may drop the last reference that others hold on the serializer.
class basic_serializer_t::basic_serializer_imp_t::operation {
public:
    explicit operation(basic_serializer_imp_t& serializer) : self_(serializer.self_) {
        if (self_.holder == nullptr) {
            outermost_ = &serializer;
            self_.holder = &outermost_;
        }
    }
    operation(operation const&) = delete;
    operation& operator=(operation const&) = delete;
    ~operation() {
        if (outermost_) {
            self_.holder = nullptr;
        }
    }

    iptr<i_serializer_t> const& self() const { return *self_.holder; }

private:
    in_hand& self_;
    iptr<i_serializer_t> outermost_;
};

void basic_serializer_t::basic_serializer_imp_t::write_object(iptr<i_serializable_t> const& object) {
    operation const writing(*this);
    iptr<i_serializable_t> stand_in;
    i_serializable_t* const meant = map(object, stand_in) ? stand_in.get() : object.get();
    if (meant == nullptr) {
        write_word(output(), record::null);
        return;
    }
    iptr<i_unknown_t> identity;
    meant->query_interface(iid_unknown, &identity);
    if (std::uint64_t const* const known = payload.numbers_of_objects.find(identity.get())) {
        write_word(output(), record::reference);
        write_word(output(), static_cast<std::uint32_t>(*known));
        return;
    }
    stack_guard const stack(stack_guard::reserve::for_writing);
    stack_guard::level_of_object const level(stack);
    writing.self()->write_object_header(identity);  // which keeps the object, whatever becomes of the caller's holder
    meant->serialize(writing.self());
}

// The object is in the table before its stages are written, so that a reference from inside one is a reference.
void basic_serializer_t::basic_serializer_imp_t::write_object_header(iptr<i_unknown_t> const& object) {
    operation const writing(*this);
    stack_guard const stack(stack_guard::reserve::for_writing);
    stack_guard::level_of_object const level(stack);
    iptr<i_serializable_t> const serializable(object, iid_serializable);
    detail::required(serializable, "object not serializable");
    write_word(output(), record::new_object);
    std::uint64_t const number = payload.next_number++;
    write_word(output(), static_cast<std::uint32_t>(number));
    payload.numbers_of_objects.set(object.get(), number);
    guid_t const clsid = serializable->clsid();
    output().write(reinterpret_cast<char const*>(&clsid), sizeof clsid);
    serializable->serialize_obj(writing.self());
}

bool basic_serializer_t::basic_serializer_imp_t::read_object(iptr<i_serializable_t>& object) {
    operation const reading(*this);
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
        read_new_object(reading.self(), object);
    }
    iptr<i_serializable_t> stand_in;
    if (map(object, stand_in)) {
        object = stand_in;
    }
    return true;
}

bool basic_serializer_t::basic_serializer_imp_t::read_reference(iptr<i_serializable_t>& object) {
    i_unknown_t* const met = payload.objects_by_number.find(read_word(input()));
    return detail::required(met, "object not deserialized yet").query_interface(iid_serializable, &object);
}

void basic_serializer_t::basic_serializer_imp_t::read_new_object(iptr<i_serializer_t> const& reader,
                                                                 iptr<i_serializable_t>& object) {
    stack_guard const stack(stack_guard::reserve::for_reading);
    stack_guard::level const level(stack);
    // Keeps the object, whatever it does with the caller's holder while it reads.
    iptr<i_unknown_t> const built = build_object(reader, nullptr);
    built->query_interface(iid_serializable, &object);
    detail::required(object, "object is not deserializable").deserialize(reader);
}

bool basic_serializer_t::basic_serializer_imp_t::read_object_header(iptr<i_unknown_t> const& controlling,
                                                                    iptr<i_unknown_t>& object) {
    operation const reading(*this);
    stack_guard const stack(stack_guard::reserve::for_reading);
    stack_guard::level const level(stack);
    read_word(input());
    object = build_object(reading.self(), controlling);
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
    payload.objects_by_number.set(number, object.get());
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

bool basic_serializer_t::basic_serializer_imp_t::map(iptr<i_serializable_t> const& object,
                                                     iptr<i_serializable_t>& stand_in) const {
    if (payload.mapper.shared == nullptr) {
        return false;
    }
    auto const mapper = payload.mapper.shared;  // which it may replace
    stand_in = (*mapper)(object);
    return true;
}

}  // namespace velum
