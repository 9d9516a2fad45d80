#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

class QTreeWidget;

namespace quorvex {

// Undo History: the operations that can be taken back, newest first, of which the user chooses the last to go.
class frmUndoHistory : public QDialog {
 public:
  // `lines` as ProjectEditor::UndoHistory gives them.
  frmUndoHistory(QWidget* parent, const std::vector<std::string>& lines);

  // The place of the chosen operation, counted from the newest, which is 1.
  std::size_t Chosen() const;

 private:
  QTreeWidget* lstUndo;
};

}  // namespace quorvex
