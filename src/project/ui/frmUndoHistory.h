#pragma once

#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace quorvex {

// Undo History: the operations that can be taken back, newest first, of which the user chooses the last to go. `lines`
// as ProjectEditor::UndoHistory gives them. The place of the chosen one, counted from the newest, which is 1; nothing
// where the user cancels.
std::optional<std::size_t> ChooseUndo(QWidget* over, const std::vector<std::string>& lines);

}  // namespace quorvex
