#pragma once

#include <velum/values/errors.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velum::detail {

/// The keys that lead to the value in work, outermost first.
///
/// Every map that an `unknown_type` passes through adds a layer to its message. They are all added at the end, so that
/// the message of a deeply nested failure costs its own length: an exception leaves the path as it was when it was
/// thrown.
template <class Key>
class key_path {
public:
    /// A map begins, whose keys come after one another as the innermost.
    void enter() { keys_.emplace_back(); }
    void leave() { keys_.pop_back(); }

    Key& innermost() { return keys_.back(); }

    /// Runs `work` and lets an `unknown_type` out with a layer for each key on the path; `clause` introduces a key.
    template <class Work>
    void explain(char const* clause, Work work) const {
        try {
            work();
        } catch (unknown_type const& failure) {
            if (keys_.empty()) {
                throw;
            }
            throw unknown_type(layers(failure.what(), clause));
        }
    }

private:
    std::string layers(std::string const& innermost, char const* clause) const {
        std::string const prefix = unknown_type("").what();
        std::string text;
        for (std::size_t i = 1; i < keys_.size(); ++i) {
            text += prefix;
        }
        text += innermost;
        for (std::size_t i = keys_.size(); i-- != 0;) {
            std::string_view const key = keys_[i];
            text += clause;
            text += key.substr(0, key.find('\0'));  // a message ends at its first NUL
        }
        return text;
    }

    std::vector<Key> keys_;
};

}  // namespace velum::detail
