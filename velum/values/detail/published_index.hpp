#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

namespace velum::detail {

/// An index over the entries of a table that only grows, read without a lock while another thread adds to it.
///
/// The table behind it owns the entries and is the authority: an entry may be missing here, when it was added a moment
/// ago or when too many hashes collide, and the caller then asks the table.
template <class Entry>
class published_index {
public:
    published_index() { grow(); }

    /// The entry of this hash that `matches`, or null. For any number of threads.
    template <class Matches>
    Entry const* find(std::size_t hash, Matches const& matches) const {
        slots const& current = *current_.load(std::memory_order_acquire);
        for (std::size_t i = 0; i < longest_probe; ++i) {
            slot const& s = current.at(hash, i);
            Entry const* const entry = s.entry.load(std::memory_order_acquire);
            if (entry == nullptr) {
                return nullptr;
            }
            if (s.hash.load(std::memory_order_relaxed) == hash && matches(*entry)) {
                return entry;
            }
        }
        return nullptr;
    }

    /// For one thread at a time. Throws `std::bad_alloc` and is unchanged then.
    void add(std::size_t hash, Entry const& entry) {
        if (2 * (entries_ + 1) > generations_.back()->size()) {
            grow();
        }
        place(*generations_.back(), hash, &entry);
        ++entries_;
    }

private:
    // Texts chosen to collide must not make every search long.
    static constexpr std::size_t longest_probe = 32;

    struct slot {
        std::atomic<std::size_t> hash = 0;
        std::atomic<Entry const*> entry = nullptr;
    };

    // Two to the power of `bits` slots. The high bits of a hash tell where its search begins, so that growing goes over
    // the old slots and the new ones in one order.
    struct slots {
        explicit slots(unsigned bits_of_size) : bits(bits_of_size), all(std::make_unique<slot[]>(size())) {}

        std::size_t size() const { return std::size_t{1} << bits; }
        slot& at(std::size_t hash, std::size_t step) const {
            return all[((hash >> (64 - bits)) + step) & (size() - 1)];
        }

        unsigned bits;
        std::unique_ptr<slot[]> all;
    };

    static void place(slots const& target, std::size_t hash, Entry const* entry) {
        for (std::size_t i = 0; i < longest_probe; ++i) {
            slot& s = target.at(hash, i);
            if (s.entry.load(std::memory_order_relaxed) == nullptr) {
                s.hash.store(hash, std::memory_order_relaxed);
                s.entry.store(entry, std::memory_order_release);
                return;
            }
        }
    }

    // A reader may still be in an older generation, so they all stay; together they are smaller than the newest.
    void grow() {
        auto next = std::make_unique<slots>(generations_.empty() ? 8 : generations_.back()->bits + 1);
        if (!generations_.empty()) {
            slots const& last = *generations_.back();
            for (std::size_t i = 0; i < last.size(); ++i) {
                slot const& s = last.all[i];
                if (Entry const* const entry = s.entry.load(std::memory_order_relaxed)) {
                    place(*next, s.hash.load(std::memory_order_relaxed), entry);
                }
            }
        }
        generations_.push_back(std::move(next));
        current_.store(generations_.back().get(), std::memory_order_release);
    }

    std::atomic<slots const*> current_ = nullptr;
    std::vector<std::unique_ptr<slots>> generations_;
    std::size_t entries_ = 0;
};

}  // namespace velum::detail
