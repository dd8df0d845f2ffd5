// What is done can be undone and redone: commands, a list of them that is one, and a history.

#include <velum/velum.hpp>

#include <cstddef>
#include <iomanip>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

using namespace velum;
using command = iptr<i_command_t>;

/// Appends to a text that outlives the command.
class append_t : public command_t {
public:
    append_t(std::string& text, std::string added) : command_t(nullptr), text_(text), added_(std::move(added)) {}

    void do_it() override { text_ += added_; }
    void undo_it() override { text_.resize(text_.size() - added_.size()); }

private:
    std::string& text_;
    std::string added_;
};

class history {
public:
    void apply(command const& what) {
        what->do_it();
        commands_.resize(done_);  // what was undone can't be redone any more
        commands_.push_back(what);
        ++done_;
    }
    bool undo() { return done_ > 0 && (commands_[--done_]->undo_it(), true); }
    bool redo() { return done_ < commands_.size() && (commands_[done_++]->do_it(), true); }

private:
    std::vector<command> commands_;
    std::size_t done_ = 0;
};

int main() {
    std::string text, expected[] = {"one", "one, two, three", "one", "", "one", "one!"};
    history done;
    auto const append = [&](char const* added) { return command(new append_t(text, added)); };
    bool is_right = true;
    auto show = [&, at = 0](char const* what) mutable {
        std::cout << what << ": " << std::quoted(text) << '\n';
        is_right = is_right && text == expected[at++];
    };

    done.apply(append("one"));
    show("done");
    done.apply(new multi_command_t({append(", two"), append(", three")}));
    show("both done");
    done.undo();
    show("both undone");
    done.undo();
    show("undone");
    done.redo();
    show("redone");
    done.apply(append("!"));
    show("done");
    return is_right && !done.redo() ? 0 : 1;
}

// It prints:
//
//     done: "one"
//     both done: "one, two, three"
//     both undone: "one"
//     undone: ""
//     redone: "one"
//     done: "one!"
