#pragma once

#include <velum/command/i_command.hpp>
#include <velum/core/iptr.hpp>

#include <cstddef>
#include <vector>

namespace scene {

/// The edits that were done, and those that were undone and can be done again.
///
/// It takes commands that change nothing when they are undone without having been done. A list that fails half way
/// leaves what came before done, and doesn't tell how far it came; thanks to this rule it is taken back by undoing all
/// of it. An undo that fails can be tried again, which goes on where it failed.
class edit_history {
public:
    /// Does `command` and drops what could be redone. When it throws, it is taken back, and nothing has changed.
    void edit(velum::iptr<velum::i_command_t> const& command);

    /// False when there is nothing to undo.
    bool undo();

    /// False when there is nothing to redo. When it throws, all is as if it hadn't been tried.
    bool redo();

private:
    std::vector<velum::iptr<velum::i_command_t>> commands_;
    std::size_t done_ = 0;  // how many of them; those behind can be redone
};

}  // namespace scene
