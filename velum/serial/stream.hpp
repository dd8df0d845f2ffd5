#pragma once

#include <velum/core/aggregatable.hpp>
#include <velum/core/any.hpp>
#include <velum/core/api.hpp>
#include <velum/core/i_unknown_map.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>

#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstdint>
#include <istream>
#include <map>
#include <ostream>
#include <string>

namespace velum {

// A standard byte stream as an object, so that it can be held by reference. Each operation is one call of the function
// of its name on the standard stream, whose position and state all objects share that were made on it; nobody here
// looks at that state. A stream is used by one thread at a time.

/// A stream to read from (`iid_istream`).
class VELUM_API i_istream_t : public i_unknown_t {
public:
    /// The position, or -1 where the stream has none or has failed.
    virtual long long tellg() = 0;

    /// Moves it by `offset` bytes, from where `way` says: 0 the beginning, 1 the position, 2 the end.
    virtual void seekg(long long offset, int way) = 0;

    /// What doesn't arrive leaves the rest of `data` as it was.
    virtual void read(char* data, long long count) = 0;
};

template <>
inline constexpr guid_t iid_of<i_istream_t>{"{BD70DD7C-A817-4dc7-BBD9-F1B4FBCC302D}"};

/// A stream to write to (`iid_ostream`).
class VELUM_API i_ostream_t : public i_unknown_t {
public:
    /// The position, or -1 where the stream has none or has failed.
    virtual long long tellp() = 0;

    /// Moves it by `offset` bytes, from where `way` says: 0 the beginning, 1 the position, 2 the end.
    virtual void seekp(long long offset, int way) = 0;

    /// Writes `count` bytes.
    virtual void write(char const* data, long long count) = 0;

    /// Hands on what the stream still holds back.
    virtual void flush() = 0;
};

template <>
inline constexpr guid_t iid_of<i_ostream_t>{"{F78DE13D-0868-457b-852D-1C518A4BD020}"};

/// The input stream object. It answers `iid_unknown` and `iid_istream`, and can be aggregated. Without a stream every
/// operation throws `std::runtime_error` ("stream object has no stream"). A copy shares the stream; a move takes it.
class VELUM_API basic_istream_t : public aggregatable_t<basic_istream_t> {
public:
    /// For `create`; keeps `outer` as it is, without a reference.
    basic_istream_t(i_unknown_t* outer, boost::shared_ptr<std::basic_istream<char>> const& stream);

    /// Makes an object that shares `stream`, which may be null, under the controlling unknown `outer`, or null, and
    /// asks it for `iid` into the slot `out`. False when it doesn't have the interface; false, with the slot untouched,
    /// when `outer` isn't null and `iid` isn't `iid_unknown`.
    static bool create(iptr<i_unknown_t> const& outer, boost::shared_ptr<std::basic_istream<char>> const& stream,
                       guid_t const& iid, void* out);

    /// The same without a stream. Reads nothing from `params`.
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    class VELUM_API basic_istream_imp_t : public nested_t<boost::shared_ptr<std::basic_istream<char>>, i_istream_t> {
    public:
        using nested_t::nested_t;

        long long tellg() override;
        void seekg(long long offset, int way) override;
        void read(char* data, long long count) override;
    };

    basic_istream_imp_t imp;
    std::int32_t ref_count = 0;
};

/// The output stream object. It answers `iid_unknown` and `iid_ostream`; everything else is as in `basic_istream_t`.
class VELUM_API basic_ostream_t : public aggregatable_t<basic_ostream_t> {
public:
    /// As those of `basic_istream_t`.
    /// @{
    basic_ostream_t(i_unknown_t* outer, boost::shared_ptr<std::basic_ostream<char>> const& stream);
    static bool create(iptr<i_unknown_t> const& outer, boost::shared_ptr<std::basic_ostream<char>> const& stream,
                       guid_t const& iid, void* out);
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out);
    /// @}

    /// "class_name" and "supported_interfaces".
    static std::map<std::string, boost::any> const class_info;

private:
    friend object_access;

    class VELUM_API basic_ostream_imp_t : public nested_t<boost::shared_ptr<std::basic_ostream<char>>, i_ostream_t> {
    public:
        using nested_t::nested_t;

        long long tellp() override;
        void seekp(long long offset, int way) override;
        void write(char const* data, long long count) override;
        void flush() override;
    };

    basic_ostream_imp_t imp;
    std::int32_t ref_count = 0;
};

}  // namespace velum
