#include "support/counting_object.hpp"
#include "support/failure.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace {

using namespace velum;

template <class Interface, class Class>
iptr<Interface> on(auto const& stream, guid_t const& iid) {
    iptr<Interface> object;
    EXPECT_TRUE(Class::create(nullptr, stream, iid, &object));
    return object;
}
auto const input_on = [](auto const& stream) { return on<i_istream_t, basic_istream_t>(stream, iid_istream); };
auto const output_on = [](auto const& stream) { return on<i_ostream_t, basic_ostream_t>(stream, iid_ostream); };

struct flushed_buffer : std::stringbuf {
    int flushes = 0;
    int sync() override { return ++flushes, 0; }
};

TEST(stream_object, shares_position_and_state_of_its_stream) {
    flushed_buffer buffer;
    boost::shared_ptr<std::iostream> const stream(new std::iostream(&buffer));
    auto const out = output_on(stream), other_out = output_on(stream);
    auto const in = input_on(stream), other_in = input_on(stream);
    out->write("0123456789", 10);
    other_out->seekp(-3, 2);
    EXPECT_EQ(out->tellp(), 7);
    out->write("x", 1);
    other_out->seekp(-6, 1);
    out->write("y", 1);
    EXPECT_EQ(std::exchange(buffer.flushes, 0), 0);
    out->flush();
    EXPECT_TRUE(buffer.flushes == 1 && buffer.str() == "01y3456x89");
    std::string text = "....";
    in->read(text.data(), 3);
    EXPECT_TRUE(text == "01y." && other_in->tellg() == 3);
    other_in->seekg(2, 1);
    EXPECT_EQ(in->tellg(), 5);
    other_in->seekg(-2, 2);
    in->read(text.data(), 4);
    EXPECT_EQ(text, "89y.") << "what doesn't arrive stays as it was";
    other_in->seekg(0, 0);
    other_in->read(text.data(), 4);
    EXPECT_TRUE(text == "89y." && in->tellg() == -1 && out->tellp() == -1) << "a failed stream does nothing";
    stream->clear();
    stream->exceptions(std::ios::failbit);
    EXPECT_THROW(in->read(text.data(), 11), std::ios::failure);
}

TEST(stream_object, without_a_stream_refuses_every_operation) {
    iptr<i_istream_t> i;
    iptr<i_ostream_t> o;
    EXPECT_TRUE(basic_istream_t::create_function(nullptr, nullptr, iid_istream, &i));
    EXPECT_TRUE(basic_ostream_t::create_function(nullptr, nullptr, iid_ostream, &o));
    char byte = 'b';
    std::function<void()> const operations[] = {
        [&] { i->tellg(); },     [&] { i->seekg(0, 0); },     [&] { i->read(&byte, 1); }, [&] { o->tellp(); },
        [&] { o->seekp(0, 0); }, [&] { o->write(&byte, 1); }, [&] { o->flush(); }};
    for (auto const& operation : operations) {
        EXPECT_EQ(support::failure_of(operation), "std::runtime_error: stream object has no stream");
    }
}

// The objects lie on the stack, under a controlling unknown that doesn't die.
TEST(stream_object, shares_its_stream_with_a_copy_and_loses_it_to_a_move) {
    support::journal calls;
    support::counting_object control(calls, "");
    basic_istream_t source(&control, boost::shared_ptr<std::istream>(new std::istringstream("abcd")));
    basic_istream_t copy(source), target(std::move(copy));
    char byte = 'x';
    for (auto* const object : {&source, &copy, &target}) {
        auto const side = support::side_of<i_istream_t>(*object, iid_istream);
        EXPECT_EQ(support::failure_of([&] { side->read(&byte, 1); }).empty(), object != &copy);
    }
    EXPECT_EQ(byte, 'b');
}

}  // namespace
