#pragma once

#include <velum/core/flat.hpp>
#include <velum/core/i_serializable.hpp>
#include <velum/core/i_serializer.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/values/any_map.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// A serializer over a string: what is written goes to its end, what is read comes from `position` on.
///
/// A record of an object is a 32-bit number, 0 for null, and behind a number that is met for the first time the state
/// stage. The numbers count the places of `objects` from 1: writing enters objects there, reading fills those that it
/// finds there.
class memory_serializer : public velum::flat_t<memory_serializer, velum::i_serializer_t> {
public:
    explicit memory_serializer(std::string content = {}) : bytes(std::move(content)) {}

    std::string bytes;
    std::size_t position = 0;
    std::vector<velum::iptr<velum::i_serializable_t>> objects;

    std::map<std::string, int> calls;       ///< of each operation, by its name
    std::vector<long long> blocks;          ///< the sizes that `write` and `read` were called with
    bool can_seek = true;                   ///< without it `tell` always gives -1
    bool ended = false;                     ///< a read fell short, so `tell` gives -1, as that of a stream does
    std::map<std::string, long long> fail;  ///< operation to the number of the call, from 1, that throws
    velum::any_map attribute_map;

    /// Back to the beginning, as a new serializer over the same bytes and objects.
    void rewind() {
        position = met_ = 0;
        ended = false;
        calls.clear();
        blocks.clear();
    }

    int version() const override { return 7; }
    std::map<std::string, boost::any>& attributes() override { return attribute_map; }
    std::map<std::string, boost::any> const& attributes() const override { return attribute_map; }

    void write_object(velum::iptr<velum::i_serializable_t> const& object) override {
        count("write_object");
        if (!object) {
            put_number(0);
            return;
        }
        velum::iptr<velum::i_unknown_t> const identity(object, velum::iid_unknown);
        auto const [known, is_new] = numbers_.emplace(identity, objects.size() + 1);
        put_number(static_cast<std::uint32_t>(known->second));
        if (is_new) {
            objects.push_back(object);
            object->serialize(this);
        }
    }

    void write_string(std::string const& text) override {
        count("write_string");
        put_number(static_cast<std::uint32_t>(text.size()));
        bytes += text;
    }

    void write(char const* data, long long size) override {
        count("write");
        blocks.push_back(size);
        bytes.append(data, static_cast<std::size_t>(size));
    }

    bool read_object(velum::iptr<velum::i_serializable_t>& object) override {
        count("read_object");
        object = nullptr;
        std::size_t const number = get_number();
        if (number == 0) {
            return true;
        }
        if (number > objects.size()) {
            throw std::runtime_error("no such object");
        }
        object = objects[number - 1];
        if (number > met_) {
            met_ = number;
            object->deserialize(this);
        }
        return true;
    }

    void read_string(std::string& text) override {
        count("read_string");
        text.assign(get_number(), '\0');
        get(text.data(), text.size());
    }

    void read(char* data, long long size) override {
        count("read");
        blocks.push_back(size);
        get(data, static_cast<std::size_t>(size));
    }

    long long tell() override {
        count("tell");
        return can_seek && !ended ? static_cast<long long>(position) : -1;
    }

    // What values and the boxed classes never call.
    void seek(long long, int) override { count("seek"); }
    void flush() override { count("flush"); }
    void write_object_header(velum::iptr<velum::i_unknown_t> const&) override { count("write_object_header"); }
    bool read_object_header(velum::iptr<velum::i_unknown_t> const&, velum::iptr<velum::i_unknown_t>&) override {
        return count("read_object_header"), false;
    }
    void set_object_mapper(velum::object_mapper_t const&) override { count("set_object_mapper"); }

private:
    friend velum::object_access;

    std::array<velum::answer_t, 2> answers() {
        return {{{velum::iid_unknown, velum::side_of<velum::i_serializer_t>(*this)},
                 {velum::iid_serializer, velum::side_of<velum::i_serializer_t>(*this)}}};
    }

    void count(char const* operation) {
        int const call = ++calls[operation];
        if (auto const limit = fail.find(operation); limit != fail.end() && limit->second == call) {
            throw std::runtime_error(std::string(operation) + " failed");
        }
    }

    void put_number(std::uint32_t number) { bytes.append(reinterpret_cast<char const*>(&number), sizeof number); }

    std::uint32_t get_number() {
        std::uint32_t number = 0;
        get(reinterpret_cast<char*>(&number), sizeof number);
        return number;
    }

    // As a stream does: what is there is given, and what doesn't come is left alone.
    void get(char* data, std::size_t size) {
        std::size_t const there = ended ? 0 : std::min(size, bytes.size() - std::min(position, bytes.size()));
        std::copy_n(bytes.data() + std::min(position, bytes.size()), there, data);
        position += there;
        ended = ended || there != size;
    }

    std::map<velum::iptr<velum::i_unknown_t>, std::size_t> numbers_;
    std::size_t met_ = 0;  // objects whose state was read
    std::int32_t ref_count = 0;
};

}  // namespace support
