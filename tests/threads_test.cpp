#include "support/panel.hpp"
#include "support/recording_stream.hpp"
#include "support/samples.hpp"
#include "wire/route.hpp"

#include <barrier>
#include <thread>

namespace {

using namespace velum;
using support::same_map;

constexpr std::size_t thread_count = 8;

/// Runs `work` with the numbers 0 to 7, each on a thread of its own, all at once.
template <class Work>
void on_eight_threads(Work const& work) {
    std::barrier start(thread_count);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < thread_count; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

template <int>
struct known_to_threads {};

template <int... I>
std::vector<std::type_info const*> new_types(std::integer_sequence<int, I...>) {
    return {&typeid(known_to_threads<I>)...};
}

// All threads meet the same new texts and types at the same time, and between them texts that only they know.
TEST(threads, intern_texts_and_ask_for_type_keys) {
    auto const types = new_types(std::make_integer_sequence<int, 300>());
    auto const text = [](std::size_t i) { return "shared by the threads " + std::to_string(i); };
    std::array<std::vector<ustring>, thread_count> shared, keys;
    on_eight_threads([&](std::size_t t) {
        for (std::size_t i = 0; i < 3000; ++i) {
            shared[t].emplace_back(text(i));
            keys[t].push_back(type_key(*types[i % types.size()]));
            std::string const own = std::to_string(t) + " alone " + std::to_string(i);
            ASSERT_EQ(ustring(own).string(), own);
        }
    });
    for (std::size_t t = 0; t < thread_count; ++t) {
        for (std::size_t i = 0; i < 3000; ++i) {
            ASSERT_TRUE(shared[t][i].string() == text(i) && shared[t][i] == ustring(text(i)));
            std::string const name = "known_to_threads<" + std::to_string(i % types.size()) + ">";
            ASSERT_TRUE(keys[t][i].string().ends_with(name) && keys[t][i] == keys[0][i]) << keys[t][i].c_str();
        }
    }
}

// The threads have the only references, so the last of them to let go destroys an object.
TEST(threads, share_objects_that_die_once) {
    int const made = support::panel_t::made;
    std::array<std::vector<iptr<i_unknown_t>>, thread_count> held;
    for (int i = 0; i < 200; ++i) {
        held[0].push_back(support::panel_t::make());
    }
    held.fill(held[0]);
    on_eight_threads([&](std::size_t t) {
        for (auto& panel : held[t]) {
            for (int i = 0; i < 20; ++i) {
                iptr<i_string_t> const part(panel, iid_string), copy(part);
                EXPECT_TRUE(iptr<i_unknown_t>(copy, iid_unknown) == panel && copy->string() == "part");
            }
            panel = nullptr;
        }
    });
    EXPECT_TRUE(support::panel_t::made == made + 200 && support::panel_t::alive == 0);
}

// Keys and texts that all threads meet for the first time at once, others that only one knows, and every type.
TEST(threads, write_and_read_maps) {
    on_eight_threads([](std::size_t t) {
        for (std::size_t n = 0; n < 30; ++n) {
            std::string const shared = "met by all threads " + std::to_string(n), own = std::to_string(t) + shared;
            uany_map map{{shared, ustring(own)}, {own, std::vector<uany_map>{{{"in " + shared, own}}, {}}}};
            for (auto const& row : support::samples()) {
                if (row.tag != 47) {  // objects can't be in a stream
                    map[shared + std::to_string(map.size())] = row.value;
                }
            }
            uany_map back;
            any_map plain;
            auto const way = (t + n) % 2 == 0 ? support::route::stream : support::route::serializer;
            std::string const bytes = write_by(way, map).bytes;
            EXPECT_EQ(read_by(way, bytes, back).failure + read_by(way, bytes, plain).failure, "");
            EXPECT_TRUE(same_map(map, back) && plain.size() == map.size());
            EXPECT_TRUE(!any_compare(boost::any(map), boost::any(map)) && any_compare(1, 2));
            std::string const refused = ": " + type_key(typeid(n)).string() + " - while";
            EXPECT_NE(write_by(way, uany_map{{"k", n}}).failure.find(refused), std::string::npos);
        }
    });
}

// Each test is a process of its own where the whole suite is run, so nothing has been used before.
TEST(threads, use_every_table_for_the_first_time_at_once) {
    std::array<std::string, thread_count> outcomes;
    on_eight_threads([&](std::size_t t) {
        support::recorded const stream(new support::recording_stream);
        auto const text = [](std::string const& of) {
            iptr<i_serializable_t> boxed;
            basic_string_t::create(nullptr, of, iid_serializable, &boxed);
            return boxed;
        };
        support::writer_on(stream.get())->write_object(text("text"));
        stream->bytes[4] = 9;      // a number that no writer gives, kept by another table
        stream->can_tell = false;  // so that places are filled with secret bits
        iptr<i_serializable_t> object;
        support::reader_on(stream.get(), support::new_factory())->read_object(object);
        any_map map;
        outcomes[t] =
            iptr<i_string_t>(object, iid_string)->string() + type_key(typeid(outcomes)).string() +
            (any_compare(std::string("a"), std::string("b")) ? "<" : ">") + guid_t(iid_string.string()).string() +
            read_by(support::route::serializer, write_by(support::route::stream, any_map{{"k", 1.5}}).bytes, map)
                .failure;
    });
    for (std::string const& outcome : outcomes) {
        EXPECT_TRUE(outcome == outcomes[0] && outcome.starts_with("text") && outcome.ends_with("}")) << outcome;
    }
}

}  // namespace
