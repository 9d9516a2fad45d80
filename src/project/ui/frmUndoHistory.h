#pragma once

#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace quorvex {

// Undo History: the operations that can be taken back, newest first, of which the user chooses the last to go, and
// those that can be made again. `lines` as ProjectEditor::UndoHistory gives them. How many are to be taken back, below
// 0 how many are to be made again; nothing where the user cancels.
std::optional<int> ChooseUndo(QWidget* over, const std::vector<std::string>& lines);

}  // namespace quorvex
