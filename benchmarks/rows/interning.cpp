#include "../contest.hpp"

#include <velum/velum.hpp>

#include <glib.h>
#include <boost/flyweight.hpp>
#include <boost/flyweight/no_tracking.hpp>

#include <algorithm>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

// The same class once more, from a build without locks.
namespace velum_unlocked {

class ustring {
public:
    ustring(std::string const& s);
    char const* c_str() const { return text_; }

private:
    char const* text_;
};

}  // namespace velum_unlocked

// Texts given to tables that keep them for good. Each contender has one table for all rows, since some have no more.

namespace {

using contest::enter;
using contest::work;

using texts = std::vector<std::string>;

struct of_floor {
    static constexpr char const* name = "floor";

    static std::set<std::string>& table() {
        static std::set<std::string> kept;
        return kept;
    }

    static char const* intern(std::string const& text) { return table().insert(text).first->c_str(); }
    static char const* find(std::string const& text) { return table().find(text)->c_str(); }
};

template <class Text>
struct interned {
    static char const* intern(std::string const& text) { return Text(text).c_str(); }
};

struct of_velum : interned<velum::ustring> {
    static constexpr char const* name = "velum";
};

struct of_velum_unlocked : interned<velum_unlocked::ustring> {
    static constexpr char const* name = "velum without locks";
};

struct of_boost {
    static constexpr char const* name = "boost::flyweight";

    using flyweight = boost::flyweight<std::string, boost::flyweights::no_tracking>;

    static char const* intern(std::string const& text) { return flyweight(text).get().c_str(); }
};

struct of_glib {
    static constexpr char const* name = "g_intern_string";

    static char const* intern(std::string const& text) { return g_intern_string(text.c_str()); }
};

/// What GLib has for tables that grow large: that of `g_intern_string` is copied with every 2048th text.
struct of_glib_counted {
    static constexpr char const* name = "g_ref_string_new_intern";

    static char const* intern(std::string const& text) { return g_ref_string_new_intern(text.c_str()); }
};

struct of_std {
    static constexpr char const* name = "std::unordered_set";

    static char const* intern(std::string const& text) {
        static std::mutex mutex;
        static std::unordered_set<std::string> kept;
        std::lock_guard const lock(mutex);
        return kept.insert(text).first->c_str();
    }
};

template <class Interner>
char const* find(std::string const& text) {
    if constexpr (requires { Interner::find(text); }) {
        return Interner::find(text);
    } else {
        return Interner::intern(text);
    }
}

texts numbered(int count) {
    texts made;
    for (int i = 0; i < count; ++i) {
        made.push_back("known text number " + std::to_string(i));
    }
    return made;
}

texts const& few() {
    static texts const made = numbered(64);
    return made;
}

texts const& a_million_shuffled() {
    static texts const made = [] {
        texts all = numbered(1'000'000);
        std::shuffle(all.begin(), all.end(), std::mt19937(1));
        return all;
    }();
    return made;
}

/// Makes `text` another one that wasn't there before. Its digits stand in front and the first counts fastest, so that
/// no text follows the one before it in the alphabet, and a tree has no gain that a hash table hasn't.
void make_new(std::string& text) {
    auto digit = text.begin();
    for (; *digit == '9'; ++digit) {
        *digit = '0';
    }
    ++*digit;
}

template <class Interner>
work find_known(texts const& known) {
    static std::mutex one_at_a_time;  // the floor has no lock
    std::lock_guard const lock(one_at_a_time);
    for (std::string const& text : known) {
        Interner::intern(text);
    }
    return [&known] {
        for (std::string const& text : known) {
            benchmark::DoNotOptimize(find<Interner>(text));
        }
    };
}

constexpr int new_texts = 100'000;

template <class Interner>
void intern_new() {
    static std::string text = "000000000 is a new text";
    for (int i = 0; i < new_texts; ++i) {
        make_new(text);
        benchmark::DoNotOptimize(Interner::intern(text));
    }
}

template <class... Interners>
bool enter_known(std::string const& row, texts const& (*known)(), double count, int threads = 1) {
    return (enter({row, Interners::name, count, [known] { return find_known<Interners>(known()); }, threads}) && ...);
}

template <class... Interners>
bool enter_new() {
    return (
        enter({"intern 100,000 new texts", Interners::name, new_texts, [] { return work(intern_new<Interners>); }}) &&
        ...);
}

// The rows whose tables stay small come first, and those where it is known how they grow come before the others.
bool const entered =
    enter_known<of_floor, of_velum, of_velum_unlocked, of_boost, of_glib, of_std>("intern 64 known texts", few, 64) &&
    enter_known<of_floor, of_velum, of_boost, of_glib, of_std>("intern 64 known texts, 2 threads", few, 64, 2) &&
    enter_known<of_floor, of_velum, of_velum_unlocked, of_boost, of_glib_counted, of_std>(
        "intern a million random known texts", a_million_shuffled, 1'000'000) &&
    enter_new<of_floor, of_velum, of_velum_unlocked, of_boost, of_glib_counted, of_std>();

}  // namespace
