// growth [MEBIBYTES [SHAPE]]: reads streams of every shape that a hostile writer could choose, each twice as long as
// the one before, from 4 MiB up to 64 MiB or as much as is given. Prints how the time grows, and fails where twice the
// input takes more than 2.3 times as long: from the first to the last, since a single step may be one out of a cache.

#include <velum/velum.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <malloc.h>
#include <pthread.h>

namespace {

using namespace velum;

constexpr std::size_t mebibyte = std::size_t{1} << 20U;
constexpr std::size_t smallest = 4 * mebibyte;  // what is made of it is more than caches hold
constexpr double most = 2.3;                    // times the time for twice the input
constexpr int rounds = 5;                       // or more, of which the quickest counts
constexpr double least_spent = 2;               // seconds
constexpr int tries = 3;                        // at most, since other work on the machine may take its caches

template <class Number>
void put(std::string& bytes, Number number) {
    bytes.append(reinterpret_cast<char const*>(&number), sizeof number);
}

void put_text(std::string& bytes, std::string const& text) {
    put(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
}

/// A count, and `element` again and again until there are `size` bytes.
std::string counted(std::string bytes, std::size_t size,
                    std::function<void(std::string&, std::uint32_t)> const& element) {
    std::size_t const place = bytes.size();
    put(bytes, std::uint32_t{0});
    std::uint32_t count = 0;
    while (bytes.size() < size) {
        element(bytes, count++);
    }
    bytes.replace(place, sizeof count, reinterpret_cast<char const*>(&count), sizeof count);
    return bytes;
}

/// The head of a new object.
std::string head(std::uint32_t number, guid_t const& clsid) {
    std::string bytes;
    put(bytes, std::uint32_t{2});
    put(bytes, number);
    bytes.append(reinterpret_cast<char const*>(clsid.data()), sizeof clsid);
    put(bytes, std::uint32_t{0x10000});
    return bytes;
}

guid_t const clsid_string("{43D4FF6A-038F-4d67-B193-8D21B14DA8BC}");
guid_t const clsid_object_map("{AD409247-FD65-4d5a-BC6B-90A224C55AEE}");

/// A map with one entry, "k", of which only the payload is missing.
std::string one_entry(std::uint32_t tag) {
    std::string bytes;
    put(bytes, std::uint32_t{1});
    put_text(bytes, "k");
    put(bytes, tag);
    return bytes;
}

// Maps within maps.
std::string deep(std::size_t size) {
    std::string const level = one_entry(40);
    std::string bytes;
    while (bytes.size() < size) {
        bytes += level;
    }
    put(bytes, std::uint32_t{0});
    return bytes;
}

std::string key_of(std::uint32_t number) {
    char key[16];
    std::snprintf(key, sizeof key, "%08x", number);
    return key;
}

// One map of numbers.
std::string wide(std::size_t size) {
    return counted({}, size, [](std::string& bytes, std::uint32_t i) {
        put_text(bytes, key_of(i));
        put(bytes, std::uint32_t{3});
        put(bytes, i);
    });
}

// One object under many names.
std::string shared(std::size_t size) {
    return counted(head(0, clsid_object_map), size, [](std::string& bytes, std::uint32_t i) {
        put_text(bytes, key_of(i));
        if (i == 0) {
            bytes += head(1, clsid_string);
            put_text(bytes, "shared");
        } else {
            put(bytes, std::uint32_t{1});
            put(bytes, std::uint32_t{1});
        }
    });
}

// Objects that hold the one that holds them.
std::string cyclic(std::size_t size) {
    return counted(head(0, clsid_object_map), size, [](std::string& bytes, std::uint32_t i) {
        put_text(bytes, key_of(i));
        bytes += head(i + 1, clsid_object_map);
        put(bytes, std::uint32_t{1});
        put_text(bytes, "up");
        put(bytes, std::uint32_t{1});
        put(bytes, std::uint32_t{0});
    });
}

std::string long_text(std::size_t size) {
    std::string bytes = one_entry(1);
    put_text(bytes, std::string(size, 'x'));
    return bytes;
}

std::string empty_elements(std::size_t size) {
    return counted(one_entry(41), size, [](std::string& bytes, std::uint32_t) { put(bytes, std::uint32_t{0}); });
}

// Objects with numbers that no writer gives them.
std::string many_identifiers(std::size_t size) {
    return counted(head(0, clsid_object_map), size, [](std::string& bytes, std::uint32_t i) {
        put_text(bytes, key_of(i));
        bytes += head(0xFFFFFFFFU - i * 2654435761U % 0x80000000U, clsid_string);
        put_text(bytes, "");
    });
}

/// The text with the number `i` of those that all have one hash in the GNU standard library, or an empty one where a
/// byte would be 0. Elsewhere they are texts like others.
std::string text_of_one_hash(std::uint64_t i) {
    constexpr std::uint64_t factor = 0xC6A4A7935BD1E995U;
    constexpr std::uint64_t inverse = [] {
        std::uint64_t guess = factor;
        for (int round = 0; round < 6; ++round) {
            guess *= 2 - factor * guess;
        }
        return guess;
    }();
    static_assert(factor * inverse == 1);
    auto const mix = [](std::uint64_t value) { return value ^ (value >> 47U); };
    std::uint64_t const first = i * 0x9E3779B97F4A7C15U | 0x0101010101010101U;
    std::uint64_t const start = std::uint64_t{0xC70F6907} ^ (16 * factor);
    std::uint64_t const half = (start ^ mix(first * factor) * factor) * factor;
    std::uint64_t const second = mix((half ^ 0x123456789ABCDEFU) * inverse) * inverse;
    std::string text;
    put(text, first);
    put(text, second);
    return text.find('\0') == std::string::npos ? text : std::string();
}

// Interned names that an index by hash can't tell apart.
std::string equal_hashes(std::size_t size) {
    std::string bytes;
    put(bytes, std::uint32_t{1});
    put_text(bytes, "k");
    put(bytes, std::uint32_t{43});
    return counted(bytes, size, [](std::string& to, std::uint32_t i) {
        put_text(to, text_of_one_hash(i + 1));
        put(to, std::uint32_t{2});
        put(to, std::uint32_t{1});
    });
}

void read_values(std::string const& bytes) {
    std::istringstream stream(bytes);
    any_map map;
    read(stream, map);
}

// The objects may hold one another, so the outermost map gives up what it has at the end.
void read_objects(std::string const& bytes) {
    iptr<i_object_factory_t> factory;
    basic_object_factory_t::create(nullptr, iid_object_factory, &factory);
    auto const reader_on = [&](std::string const& from) {
        iptr<i_istream_t> stream;
        iptr<i_serializer_t> reader;
        basic_istream_t::create(nullptr, boost::make_shared<std::istringstream>(from), iid_istream, &stream);
        basic_serializer_t::create(nullptr, stream, factory, 0, iid_serializer, &reader);
        return reader;
    };
    iptr<i_serializable_t> root;
    reader_on(bytes)->read_object(root);
    root->deserialize(reader_on({}));
}

struct family {
    char const* name;
    std::string (*make)(std::size_t);
    void (*read)(std::string const&);
};

constexpr family families[] = {
    {"deep", deep, read_values},
    {"wide", wide, read_values},
    {"shared", shared, read_objects},
    {"cyclic", cyclic, read_objects},
    {"long text", long_text, read_values},
    {"equal hashes", equal_hashes, read_values},
    {"empty elements", empty_elements, read_values},
    {"many identifiers", many_identifiers, read_objects},
};

double seconds_now() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double seconds_of(family const& each, std::string const& bytes) {
    double const start = seconds_now();
    each.read(bytes);
    return seconds_now() - start;
}

/// Rounds over all sizes: `best` has the least seconds of each.
void measure(family const& each, std::vector<std::string> const& inputs, std::vector<double>& best) {
    double spent = 0;
    for (int round = 0; round < rounds || spent < least_spent; ++round) {
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            double const seconds = seconds_of(each, inputs[i]);
            best[i] = std::min(best[i], seconds);
            spent += seconds;
        }
    }
}

double mean_ratio(std::vector<double> const& best) {
    return std::pow(best.back() / best.front(), 1 / static_cast<double>(best.size() - 1));
}

bool is_proportional(family const& each, std::size_t largest) {
    std::vector<std::string> inputs;
    for (std::size_t size = smallest; size <= largest; size *= 2) {
        inputs.push_back(each.make(size));
    }
    std::vector<double> best(inputs.size(), 1e9);
    for (int i = 0; i < tries && (i == 0 || mean_ratio(best) > most); ++i) {
        measure(each, inputs, best);
    }
    double worst = 1;
    for (std::size_t i = 1; i < best.size(); ++i) {
        worst = std::max(worst, best[i] / best[i - 1]);
    }
    std::printf("| %-16s | %8.1f | %8.1f | %4.2f | %4.2f |\n", each.name, 1000 * best.front(), 1000 * best.back(),
                mean_ratio(best), worst);
    std::fflush(stdout);
    return mean_ratio(best) <= most;
}

std::size_t largest = 64 * mebibyte;
std::string_view only;
bool all_proportional = true;

void* measure_all(void*) {
    std::printf("| shape | 4 MiB, ms | %zu MiB, ms | ratio for twice the input | worst step |\n|---|---|---|---|---|\n",
                largest / mebibyte);
    for (family const& each : families) {
        if (only.empty() || only == each.name) {
            all_proportional = is_proportional(each, largest) && all_proportional;
        }
    }
    return nullptr;
}

}  // namespace

// On a stack that has room for what is nested deepest.
int main(int argc, char** argv) {
    mallopt(M_MMAP_MAX, 0);  // memory that the system has given stays, so that its page faults aren't what is measured
    mallopt(M_TRIM_THRESHOLD, -1);
    mallopt(M_ARENA_MAX, 1);
    only = argc > 2 ? argv[2] : "";
    largest = argc > 1 ? std::strtoull(argv[1], nullptr, 10) * mebibyte : largest;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread{};
    if (pthread_attr_setstacksize(&attributes, largest * 64) != 0 ||
        pthread_create(&thread, &attributes, &measure_all, nullptr) != 0) {
        std::fprintf(stderr, "no room for the stack\n");
        return 2;
    }
    pthread_join(thread, nullptr);
    return all_proportional ? 0 : 1;
}
