#include "tree.hpp"

#include "lookup.hpp"
#include "value_tree.hpp"

#include <set>

namespace scene {
namespace {

class description_tree : public value_tree {
public:
    description_tree(std::ostream& out, description const& objects) : value_tree(out), objects_(objects) {}

    void put(std::size_t number) {
        indented([&] {
            put_map(lookup<velum::any_map>(objects_[number], "values"));
            auto const& links = lookup<std::vector<velum::any_map>>(objects_[number], "links");
            put_rows(links.size(), 12, [&](std::size_t i) { put_link(links[i]); });
        });
    }

private:
    // The content only where the object stands for the first time.
    void put_link(velum::any_map const& link) {
        int const number = lookup<int>(link, "object");
        bool const is_new = printed_.insert(number).second;
        start_line() << printable(lookup<std::string>(link, "name"), 60) << (is_new ? ": #" : ": see #") << number;
        if (is_new) {
            put(static_cast<std::size_t>(number));
        }
    }

    description const& objects_;
    std::set<int> printed_;
};

}  // namespace

void print_tree(std::ostream& out, std::string const& title, description const& document) {
    out << printable(title, 500);
    description_tree(out, document).put(0);
    out << '\n';
}

}  // namespace scene
