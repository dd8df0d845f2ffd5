#include <velum/core/detail/secret.hpp>
#include <velum/values/detail/interning_mutex.hpp>
#include <velum/values/detail/published_index.hpp>
#include <velum/values/ustring.hpp>

#include <mutex>
#include <string_view>

namespace velum {
namespace {

using text_index = detail::published_index<std::string>;

text_index& known_texts() {
    static text_index index;
    return index;
}

constinit detail::interning_mutex table_mutex;

}  // namespace

ustring::ustring() : ustring("") {}
ustring::ustring(char const* s) : text_(make_unique(s)) {}
ustring::ustring(std::string const& s) : ustring(s.c_str()) {}

bool ustring::empty() const {
    return *this == ustring();
}

char const* ustring::make_unique(char const* s) {
    std::string_view const text = s;
    std::size_t const hash = detail::secret_hash(text);
    text_index& index = known_texts();
    if (std::string const* known = index.find(hash, [text](std::string const& entry) { return entry == text; })) {
        return known->c_str();
    }
    std::lock_guard const lock(table_mutex);
    auto const [entry, inserted] = table().emplace(text);
    if (inserted) {
        try {
            index.add(hash, *entry);
        } catch (...) {
            table().erase(entry);
            throw;
        }
    }
    return entry->c_str();
}

// The set keeps its strings where they are, whatever is added to it, so that their texts can be pointed at.
std::set<std::string>& ustring::table() const {
    static std::set<std::string> texts;
    return texts;
}

}  // namespace velum
