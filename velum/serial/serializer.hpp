#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/factory/i_object_factory.hpp>
#include <velum/serial/object_tables.hpp>
#include <velum/serial/stream.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace velum {

/// The serializer. It answers `iid_unknown` and `iid_serializer`, and can be aggregated.
///
/// It is a writer on an output stream, or a reader on an input stream and a factory, for the whole of its life; one of
/// each must go over the same calls in the same order. It numbers the objects that it meets from 0 and keeps a
/// reference on each until it is destroyed, so an object that is written twice, in whatever places, is written once and
/// comes back as one.
///
/// A failure undoes nothing: what was written or read before it stays. On top of what streams, factories and the
/// objects throw there are these, all `std::runtime_error`:
/// - "object not serializable": `write_object_header` got null or an object without `iid_serializable`,
/// - "object not deserialized yet": a reference to an object that the stream hasn't brought yet, be it that its
///   construction stage is still being read,
/// - "object is not deserializable": the factory built nothing, or for `read_object` something without
///   `iid_serializable`,
/// - "serializer has no input stream", "... no output stream", "... no stream", "... no object factory": the operation
///   needs what the serializer wasn't given,
/// - "nesting too deep": objects within objects have used up the stack. Whatever was written whole can be read where as
///   much of the stack is left.
///
/// Damaged lengths take no more than 16 MiB of memory ahead of what has arrived; see `length_exceeds_stream`.
///
/// A copy shares streams and factory and has attributes, mapper and objects met of its own. A move takes these, and
/// leaves streams and factory with the source too.
class VELUM_API basic_serializer_t : public aggregatable_t<basic_serializer_t> {
public:
    /// For `create`; they keep `outer` as it is, without a reference.
    /// @{
    basic_serializer_t(i_unknown_t* outer, iptr<i_istream_t> const& stream, iptr<i_object_factory_t> const& factory,
                       int version);
    basic_serializer_t(i_unknown_t* outer, iptr<i_ostream_t>& stream, int version);
    explicit basic_serializer_t(i_unknown_t* outer);
    /// @}

    // Each makes a serializer under the controlling unknown `outer`, or null, and asks it for `iid` into the slot
    // `out`. False when it doesn't have the interface; false, with the slot untouched, when `outer` isn't null and
    // `iid` isn't `iid_unknown`. `version` is a number for the classes that are read and written. It is in no stream.

    /// A reader.
    static bool create(iptr<i_unknown_t> const& outer, iptr<i_istream_t> const& stream,
                       iptr<i_object_factory_t> const& factory, int version, guid_t const& iid, void* out);

    /// A writer.
    static bool create(iptr<i_unknown_t> const& outer, iptr<i_ostream_t>& stream, int version, guid_t const& iid,
                       void* out);

    /// Neither: it has no stream, and 0 for its version whatever is given here.
    static bool create(iptr<i_unknown_t> const& outer, int version, guid_t const& iid, void* out);

    /// The same. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    /// An object mapper, of which each copy has one of its own, or none. It is shared for the time of a call, in which
    /// it may be replaced.
    class mapper_holder {
    public:
        mapper_holder() = default;
        explicit mapper_holder(object_mapper_t const& mapper)
            : shared(mapper ? std::make_shared<object_mapper_t const>(mapper) : nullptr) {}
        mapper_holder(mapper_holder const& other) : mapper_holder(other.shared ? *other.shared : object_mapper_t()) {}
        mapper_holder(mapper_holder&&) noexcept = default;
        mapper_holder& operator=(mapper_holder const&) = delete;
        mapper_holder& operator=(mapper_holder&&) noexcept = default;
        ~mapper_holder() = default;

        std::shared_ptr<object_mapper_t const> shared;
    };

    /// The serializer as its operations hand it to objects: the outermost holds a reference on it, and those within
    /// share that. It is none of the serializer's state: a copy or a move leaves both as they are.
    class in_hand {
    public:
        in_hand() = default;
        in_hand(in_hand const&) {}
        in_hand(in_hand&&) noexcept {}
        in_hand& operator=(in_hand const& other) {
            if (this != &other) {
                *this = in_hand();
            }
            return *this;
        }
        in_hand& operator=(in_hand&&) noexcept { return *this; }
        ~in_hand() = default;

        iptr<i_serializer_t> const* holder = nullptr;
    };

    struct state {
        iptr<i_istream_t> input{};
        iptr<i_ostream_t> output{};
        iptr<i_object_factory_t> factory{};
        int version = 0;
        std::map<std::string, boost::any> attributes{};
        mapper_holder mapper{};

        // A writer's.
        detail::identity_table numbers_of_objects{};
        std::uint64_t next_number = 0;

        // A reader's.
        detail::object_table objects_by_number{};

        void drop() {
            objects_by_number.clear();
            numbers_of_objects.clear();
            mapper = {};
            attributes.clear();
        }
    };

    class VELUM_API basic_serializer_imp_t : public nested_t<state, i_serializer_t> {
    public:
        using nested_t::nested_t;

        int version() const override;
        std::map<std::string, boost::any>& attributes() override;
        std::map<std::string, boost::any> const& attributes() const override;
        void write_object(iptr<i_serializable_t> const& object) override;
        void write_string(std::string const& text) override;
        void write(char const* data, long long count) override;
        bool read_object(iptr<i_serializable_t>& object) override;
        void read_string(std::string& text) override;
        void read(char* data, long long count) override;
        long long tell() override;
        void seek(long long offset, int way) override;
        void flush() override;
        void write_object_header(iptr<i_unknown_t> const& object) override;
        bool read_object_header(iptr<i_unknown_t> const& controlling, iptr<i_unknown_t>& object) override;
        void set_object_mapper(object_mapper_t const& mapper) override;

    private:
        i_istream_t& input() const;
        i_ostream_t& output() const;
        /// Whether there is a mapper, which then puts `stand_in` in the place of `object`.
        bool map(iptr<i_serializable_t> const& object, iptr<i_serializable_t>& stand_in) const;
        bool read_reference(iptr<i_serializable_t>& object);
        void read_new_object(iptr<i_serializer_t> const& reader, iptr<i_serializable_t>& object);
        iptr<i_unknown_t> build_object(iptr<i_serializer_t> const& reader, iptr<i_unknown_t> const& controlling);

        class operation;
        in_hand self_;
    };

    basic_serializer_imp_t imp;
    std::int32_t ref_count = 0;
};

}  // namespace velum
