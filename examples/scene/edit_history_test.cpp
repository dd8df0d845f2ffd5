// Histories of edits, a letter a step: 'm' moves the node, 'r' and 's' rename it, 'l' does all that and renames it
// again with one command, 'f' fails in the midst of such a list, 'u' undoes, 'd' does again. A step that isn't possible
// or fails is written in capitals. Beside the steps stand the name and the place that the node has in the end.

#include "edit_history.hpp"
#include "edits.hpp"
#include "node.hpp"

#include <velum/command/command.hpp>

#include <cctype>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

struct failing : velum::command_t {
    failing() : command_t(nullptr) {}
    void do_it() override { throw std::runtime_error("fails"); }
    void undo_it() override {}
};

constexpr std::pair<char const*, char const*> rows[] = {
    {"U", "a0"},    {"D", "a0"},       {"m", "a1"},       {"r", "r0"},       {"rsu", "r0"},
    {"rsuu", "a0"}, {"rsuuUdd", "s0"}, {"rsuuddD", "s0"}, {"rsuudmD", "r1"}, {"rumuU", "a0"},
    {"l", "r1"},    {"lu", "a0"},      {"lud", "r1"},     {"sluduu", "a0"},  {"F", "a0"},
    {"sFu", "a0"},  {"suFd", "s0"},    {"sFmuuU", "a0"},  {"srFFuu", "a0"},
};

bool step(char letter, scene::edit_history& history, std::map<char, scene::command>& edits) try {
    if (letter == 'u' || letter == 'd') {
        return letter == 'u' ? history.undo() : history.redo();
    }
    history.edit(edits[letter]);
    return true;
} catch (std::runtime_error const&) {
    return false;
}

std::string result_of(std::string const& steps) {
    auto const node = velum::make<scene::node_t>("a").as<scene::i_node_t>();
    auto const move = scene::move_node(node, {node->transform().linear, {1, 0, 0}});
    auto const rename = scene::rename_node(node, "r");
    auto const other = scene::rename_node(node, "s");
    std::map<char, scene::command> edits{{'m', move}, {'r', rename}, {'s', other}};
    edits['l'] = scene::make_list({move, rename, other, scene::make_list({rename})});
    edits['f'] = scene::make_list({move, other, new failing, rename});
    scene::edit_history history;
    std::string taken;
    for (char const c : steps) {
        auto const letter = static_cast<char>(std::tolower(c));
        taken += step(letter, history, edits) ? letter : static_cast<char>(std::toupper(c));
    }
    return taken + ": " + node->name() + (node->transform().origin[0] == 0 ? "0" : "1");
}

}  // namespace

int main() {
    int mistakes = 0;
    for (auto const& [steps, end] : rows) {
        std::string const found = result_of(steps);
        if (found != std::string(steps) + ": " + end) {
            std::cerr << steps << " to " << end << ": " << found << '\n';
            ++mistakes;
        }
    }
    return mistakes == 0 ? 0 : 1;
}
