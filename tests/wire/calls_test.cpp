#include "support/bytes.hpp"
#include "support/recording_stream.hpp"
#include "support/serializers.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

namespace {

using namespace support;
using velum::any_map;

/// Counts the calls that transfer blocks.
class counting_buffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;
    std::string blocks;

protected:
    std::streamsize xsputn(char const* data, std::streamsize size) override {
        return blocks += std::to_string(size) + " ", std::stringbuf::xsputn(data, size);
    }
    std::streamsize xsgetn(char* data, std::streamsize size) override {
        return blocks += std::to_string(size) + " ", std::stringbuf::xsgetn(data, size);
    }
};

void expect_calls(any_map const& map, std::vector<long long> const& sizes) {
    std::string expected;
    for (long long const size : sizes) {
        expected += std::to_string(size) + " ";
    }
    counting_buffer out;
    std::ostream output(&out);
    velum::write(output, map);
    EXPECT_EQ(out.blocks, expected);
    counting_buffer in(out.str());
    std::istream input(&in);
    any_map back;
    velum::read(input, back);
    EXPECT_EQ(in.blocks, expected);

    recorded const stream(new recording_stream);
    velum::write(writer_on(stream.get()), map);
    EXPECT_EQ(stream->calls, expected);
    stream->calls.clear();
    velum::read(reader_on(stream.get(), nullptr), back);
    EXPECT_EQ(stream->calls, expected) << "the position is for lengths beyond reason";
}

TEST(calls, one_field_is_one_call) {
    math::vec<float, 3, math::use_simd_tag> const v(1, 2, 3);
    velum::linear_space3 const space(v, v, v);
    expect_calls({{"a", std::string()},
                  {"b", std::string("xyz")},
                  {"c", true},
                  {"d", tessa::mat<double, 4, 4>()},
                  {"e", v},
                  {"f", velum::affine_space3(space, v)},
                  {"g", velum::guid_t()},
                  {"h", std::vector<any_map>{{}, {{"in", 1}}}},
                  {"i", velum::uany_map{{"", velum::ustring("name")}}},
                  {"j", velum::byte_vector()},
                  {"k", velum::byte_vector(300)},
                  {"l", std::vector<boost::any>{space, std::vector<boost::any>()}}},
                 {
                     4,                // the number of entries; then length and bytes of a key, tag, fields
                     4, 1, 4, 4,       // empty text
                     4, 1, 4, 4,   3,  // text
                     4, 1, 4, 4,       // truth
                     4, 1, 4, 128,     // matrix
                     4, 1, 4, 12,      // vector of three
                     4, 1, 4, 48,      // four of them
                     4, 1, 4, 16,      // identifier
                     4, 1, 4, 4,   4,   4,  4, 2, 4, 4,  // vector of an empty map and another
                     4, 1, 4, 4,   4,   4,  4, 4,        // map with the empty key and an interned text
                     4, 1, 4, 8,                         // empty buffer
                     4, 1, 4, 8,   300,                  // buffer
                     4, 1, 4, 4,   4,   36, 4, 4,        // vector of a linear space and an empty vector
                 });
}

TEST(calls, sixteen_mebibytes_are_one_call_wherever_they_stand) {
    constexpr long long most = 16LL << 20;
    std::string const text(most, 't');
    expect_calls({{"k", velum::byte_vector(most)}}, {4, 4, 1, 4, 8, most});
    expect_calls({{text, 1}}, {4, 4, most, 4, 4});
    expect_calls({{"k", std::vector<any_map>{{{"t", text}}}}}, {4, 4, 1, 4, 4, 4, 4, 1, 4, 4, most});
}

/// Says how much it has at hand, which needn't be true.
class telling_buffer : public std::streambuf {
public:
    telling_buffer(std::string const& bytes, std::streamsize at_hand) : bytes_(bytes), at_hand_(at_hand) {}

    int reads = 0;

private:
    std::streamsize showmanyc() override { return at_hand_ < -1 ? throw std::logic_error("nobody knows") : at_hand_; }
    std::streamsize xsgetn(char* data, std::streamsize size) override {
        ++reads;
        std::size_t const there = bytes_.copy(data, static_cast<std::size_t>(size), position_);
        position_ += there;
        return static_cast<std::streamsize>(there);
    }

    std::string const& bytes_;
    std::streamsize at_hand_;
    std::size_t position_ = 0;
};

TEST(calls, more_is_one_call_where_all_of_it_is_at_hand) {
    std::string const text(17 * (std::size_t{1} << 20U), 't'), bytes = body_of("k", 1, u32(text.size()) + text);
    auto const size = static_cast<std::streamsize>(text.size());
    constexpr int fields = 6;
    for (std::streamsize const at_hand :
         {size, size + 1, size - 1, std::streamsize{0}, std::streamsize{-1}, std::streamsize{-2}}) {
        telling_buffer buffer(bytes, at_hand);
        std::istream stream(&buffer);
        any_map map;
        velum::read(stream, map);
        EXPECT_EQ(buffer.reads == fields, at_hand >= size) << at_hand << " at hand, " << buffer.reads << " reads";
        EXPECT_EQ(velum::any_map_get<std::string>(map, "k"), text);
    }
}

}  // namespace
