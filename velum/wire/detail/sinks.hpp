#pragma once

#include <velum/core/i_serializer.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/wire/detail/blocks.hpp>

#include <cstddef>
#include <ostream>
#include <stdexcept>

namespace velum::detail {

// Where a writer's bytes go: one for each route. They differ in what they do with an object.

class stream_sink {
public:
    explicit stream_sink(std::basic_ostream<char>& stream) : stream_(stream) {}

    void write(void const* data, std::size_t size) {
        write_block(stream_, static_cast<char const*>(data), static_cast<std::streamsize>(size));
    }

    [[noreturn]] static void write_object(iptr<i_unknown_t> const&) {
        throw std::runtime_error("i_unknown serialization not possible with this type of stream");
    }

private:
    std::basic_ostream<char>& stream_;
};

class serializer_sink {
public:
    explicit serializer_sink(i_serializer_t& serializer) : serializer_(serializer) {}

    void write(void const* data, std::size_t size) {
        serializer_.write(static_cast<char const*>(data), static_cast<long long>(size));
    }

    void write_object(iptr<i_unknown_t> const& object) {
        iptr<i_serializable_t> const serializable(object, iid_serializable);
        if (object && !serializable) {
            throw std::runtime_error("object is not serializable");
        }
        serializer_.write_object(serializable);
    }

private:
    i_serializer_t& serializer_;
};

}  // namespace velum::detail
