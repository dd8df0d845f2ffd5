#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>
#include <velum/core/detail/secret.hpp>
#include <velum/values/detail/published_index.hpp>
#include <velum/wire/detail/blocks.hpp>
#include <velum/wire/detail/count.hpp>
#include <velum/wire/detail/sources.hpp>

#include "support/failure.hpp"
#include "support/recording_stream.hpp"
#include "support/sanitized.hpp"
#include "support/serializers.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <iostream>
#include <set>
#include <streambuf>

#include <pthread.h>

namespace velum {
extern guid_t const multi_object_factory_id;
}

namespace {

using namespace velum;

// Whichever file's statics come first: behind an instance the identifiers are there.
clsid_initializer_t const instance;
guid_t const copied_at_load = detail::clsid_basic_string;

// A mark in the place of an identifier shows when the identifiers are set again: if the count of the instances came
// down to 0 while some are left.
TEST(class_ids, are_set_at_load_and_never_again) {
    auto& id = const_cast<guid_t&>(detail::clsid_1);
    guid_t const value = std::exchange(id, guid_t());
    for (int i = 0; i < 20; ++i) {
        clsid_initializer_t const copy(instance);
        clsid_initializer_t assigned;
        assigned = copy;
    }
    EXPECT_EQ(std::exchange(id, value), guid_t());
    std::pair<guid_t const&, char const*> const rows[] = {
        {detail::clsid_1, "{BFE2FAE0-7E57-4AD7-B8DB-2EC2147871C3}"},
        {detail::clsid_2, "{9D58181B-F68E-4F62-9879-725725E60D4B}"},
        {detail::clsid_3, "{1EF42B48-0596-488F-91DC-236D53BA5794}"},
        {detail::clsid_4, "{9697A053-DE50-417B-855F-6173B37051DA}"},
        {copied_at_load, "{43D4FF6A-038F-4D67-B193-8D21B14DA8BC}"},
        {detail::clsid_basic_unknown_map, "{AD409247-FD65-4D5A-BC6B-90A224C55AEE}"},
        {detail::clsid_uany_map_obj, "{2D4AF8B5-DD75-43FC-A053-411A316F2C99}"},
        {multi_object_factory_id, "{5107CBDF-4A51-41A4-B489-78E62F7BD2DC}"},
    };
    for (auto const& [constant, text] : rows) {
        EXPECT_EQ(constant.string(), text);
    }
}

// Ways to choose the hash of an entry, and how many of 5000 entries must be found again by it. Whatever is found is
// right; what hashes to one place too often may be missing.
TEST(published_index, finds_entries_through_collisions_and_growth) {
    std::pair<std::size_t (*)(std::size_t), int> const rows[] = {
        {[](std::size_t i) { return i * 0x9E3779B97F4A7C15U; }, 5000},
        {[](std::size_t i) { return i / 10 * 0x9E3779B97F4A7C15U; }, 3000},
        {[](std::size_t) { return std::size_t{7}; }, 16},
        {[](std::size_t) { return ~std::size_t{7}; }, 16},  // around the end of the table
    };
    for (auto const& [hash, least] : rows) {
        detail::published_index<std::size_t> tested;
        std::deque<std::size_t> entries;  // which stay where they are
        for (std::size_t i = 0; i < 5000; ++i) {
            EXPECT_EQ(tested.find(hash(i), [i](std::size_t entry) { return entry == i; }), nullptr);
            tested.add(hash(i), entries.emplace_back(i));
        }
        int found = 0;
        for (auto const& entry : entries) {
            auto const* const known = tested.find(hash(entry), [&](std::size_t other) { return other == entry; });
            EXPECT_TRUE(known == nullptr || known == &entry);
            found += known != nullptr ? 1 : 0;
        }
        EXPECT_GE(found, least);
    }
}

/// Reads 40 bytes from a serializer: whether they arrived, and what is there afterwards.
std::pair<bool, std::string> arriving(support::recorded const& stream) {
    auto const reader = support::reader_on(stream.get(), nullptr);
    detail::serializer_source source(*reader);
    std::string bytes(40, '\0');
    source.watch();
    bool const arrived = source.arrives(bytes.data(), bytes.size());
    return {arrived, bytes};
}

std::pair<bool, std::string> probed(std::string const& content) {
    support::recorded const stream(new support::recording_stream(content.empty() ? "" : content + "more"));
    stream->can_tell = false;
    auto const result = arriving(stream);
    EXPECT_EQ(stream->position, result.first ? content.size() : std::min<std::size_t>(content.size(), 16));
    return result;
}

// Where nothing arrives, what was put there before shows: only a stream of these very bytes could be taken for empty.
TEST(serializer_source, tells_bytes_from_none_without_a_position) {
    auto const [arrived, probe] = probed({});
    EXPECT_FALSE(arrived);
    for (std::size_t alike = 0; alike < 16; ++alike) {
        std::string content = probe;
        content[alike] = static_cast<char>(~content[alike]);
        content[39] = 'e';
        EXPECT_EQ(probed(content), std::pair(true, content)) << alike;
    }
    EXPECT_EQ(probed(probe), std::pair(false, probe));
    support::recorded const stream(new support::recording_stream(probe));
    EXPECT_EQ(arriving(stream), std::pair(true, probe));
    EXPECT_EQ(stream->calls, "tell 40 tell ") << "no probe where the position is known, 0 as it is";
}

// A zero may be what was there before: it is believed once, and not again from a stream whose position stands still.
TEST(serializer_source, does_not_trust_a_position_that_stands_still) {
    support::recorded const stream(new support::recording_stream);
    stream->stands_still = true;
    auto const reader = support::reader_on(stream.get(), nullptr);
    detail::serializer_source source(*reader);
    source.watch();
    for (bool const believed : {true, false, false}) {
        std::uint32_t number = 0;
        EXPECT_EQ(source.number_arrives(number), believed);
    }
}

/// A buffer of 8 bytes for either direction, which may be broken.
class small_buffer : public std::streambuf {
public:
    explicit small_buffer(bool broken) : broken_(broken) {}

    std::string calls;

private:
    std::streamsize transfer(char const* name, std::streamsize size) {
        calls += name + std::to_string(size) + " ";
        return broken_ ? throw std::logic_error("broken") : std::exchange(left_, left_ - std::min(size, left_));
    }
    std::streamsize xsputn(char const*, std::streamsize size) override {
        return std::min(size, transfer("put ", size));
    }
    std::streamsize xsgetn(char* data, std::streamsize size) override {
        std::streamsize const there = std::min(size, transfer("get ", size));
        std::fill_n(data, there, 'd');
        return there;
    }
    int sync() override { return calls += "sync ", 0; }

    bool broken_;
    std::streamsize left_ = 8;
};

/// What is told of four transfers on a stream of the given kind, with which another is tied.
template <class Transfer>
std::string transfers(int mask, int state, bool broken, bool tied, bool unitbuf, Transfer transfer) {
    small_buffer buffer(broken), tied_buffer(false);
    std::ostream tied_stream(&tied_buffer);
    std::iostream stream(&buffer);
    stream.setstate(static_cast<std::ios::iostate>(state));
    stream.tie(tied ? &tied_stream : nullptr);
    unitbuf ? void(stream << std::unitbuf) : void();
    std::string told = support::failure_of([&] { stream.exceptions(static_cast<std::ios::iostate>(mask)); });
    for (int i = 0; i < 4; ++i) {
        std::string data = "....";
        told += support::failure_of([&] { transfer(stream, data); }) + data + std::to_string(stream.rdstate()) + " ";
    }
    return told + buffer.calls + tied_buffer.calls;
}

// The standard library's own operations say what is right.
TEST(blocks, pass_as_write_and_read_let_them_pass) {
    for (int bits = 0; bits < 8 * 8 * 8; ++bits) {
        bool const broken = (bits & 1) != 0, tied = (bits & 2) != 0, unitbuf = (bits & 4) != 0;
        auto const told = [&](auto transfer) {
            return transfers(bits >> 3 & 7, bits >> 6 & 7, broken, tied, unitbuf, transfer);
        };
        EXPECT_EQ(told([](auto& stream, auto& data) { detail::write_block(stream, data.data(), 3); }),
                  told([](auto& stream, auto& data) { stream.write(data.data(), 3); }))
            << bits;
        EXPECT_EQ(told([](auto& stream, auto& data) { detail::read_block(stream, data.data(), 3); }),
                  told([](auto& stream, auto& data) { stream.read(data.data(), 3); }))
            << bits;
    }
}

#if defined(__GLIBCXX__) && defined(__GLIBC__)
/// Ends the thread that uses it.
class last_buffer : public std::streambuf {
    std::streamsize xsputn(char const*, std::streamsize) override { return end(); }
    std::streamsize xsgetn(char*, std::streamsize) override { return end(); }
    static std::streamsize end() {
        pthread_cancel(pthread_self());
        pthread_testcancel();
        return 0;
    }
};

void* use_last_buffer(void* reads) {
    last_buffer buffer;
    std::iostream stream(&buffer);
    char data = 0;
    reads != nullptr ? void(detail::read_block(stream, &data, 1)) : detail::write_block(stream, &data, 1);
    return nullptr;
}

TEST(blocks, let_a_thread_end) {
    if (support::sanitized) {
        GTEST_SKIP() << "what ends a thread is no object, which the sanitizer doesn't know";
    }
    int reads = 0;
    for (int* const how : {&reads, static_cast<int*>(nullptr)}) {
        pthread_t thread{};
        ASSERT_EQ(pthread_create(&thread, nullptr, &use_last_buffer, how), 0);
        void* result = nullptr;
        pthread_join(thread, &result);
        EXPECT_EQ(result, PTHREAD_CANCELED);
    }
}
#endif

// Also bytes of zero and the last bytes of a text count.
TEST(secret_hash, tells_texts_apart) {
    std::set<std::uint64_t> hashes;
    std::size_t texts = 0;
    for (std::size_t size = 0; size < 40; ++size) {
        for (std::size_t place = 0; place <= size; ++place) {
            std::string text(size, '\0');
            text.replace(place, place < size ? 1 : 0, place < size ? "x" : "");
            hashes.insert(detail::secret_hash(text));
            ++texts;
        }
    }
    EXPECT_EQ(hashes.size(), texts);
}

TEST(count, ends_at_32_bits) {
    EXPECT_EQ(detail::count_of(0xFFFFFFFF), 0xFFFFFFFFU);
    EXPECT_THROW(detail::count_of(0x100000000), std::length_error);
}

}  // namespace
