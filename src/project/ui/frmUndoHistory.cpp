#include "project/ui/frmUndoHistory.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>

#include "project/ProjectEditor.h"

namespace quorvex {
namespace {

class frmUndoHistory : public QDialog {
 public:
  frmUndoHistory(QWidget* parent, const std::vector<std::string>& lines);

  std::size_t Chosen() const;

 private:
  QTreeWidget* lstUndo;
};

frmUndoHistory::frmUndoHistory(QWidget* parent, const std::vector<std::string>& lines)
    : QDialog(parent), lstUndo(new QTreeWidget(this)) {
  setObjectName("frmUndoHistory");
  setWindowTitle("Undo History");
  const QString title = kUndoHistoryHeading;
  auto* heading = new QLabel('&' + title, this);
  heading->setBuddy(lstUndo);
  lstUndo->setObjectName("lstUndo");
  lstUndo->setAccessibleName("Actions");
  lstUndo->setHeaderLabels({"Number", "Action"});
  lstUndo->setHeaderHidden(true);
  lstUndo->setRootIsDecorated(false);
  lstUndo->setUniformRowHeights(true);
  lstUndo->setAllColumnsShowFocus(true);
  lstUndo->setTabKeyNavigation(false);
  for (const std::string& line : lines) {
    QStringList parts = QString::fromStdString(line).split('\t');
    if (parts[1].startsWith('&')) parts[1].remove(0, 1);  // the mnemonic of the menu entry
    lstUndo->addTopLevelItem(new QTreeWidgetItem(parts));
  }
  // The actions stand below their word in the heading.
  const QString before = title.left(title.indexOf("Action"));
  lstUndo->setColumnWidth(0, heading->fontMetrics().horizontalAdvance(before));
  lstUndo->setCurrentItem(lstUndo->topLevelItem(0));
  auto* note = new QLabel("Undoes the chosen action and those above it.", this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* undo = buttons->addButton("&Undo", QDialogButtonBox::AcceptRole);
  undo->setObjectName("cmdUndo");
  undo->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(lstUndo, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);

  auto* column = new QVBoxLayout(this);
  column->addWidget(heading);
  column->addWidget(lstUndo);
  column->addWidget(note);
  column->addWidget(buttons);
  const int width = fontMetrics().averageCharWidth();
  resize(60 * width, 50 * width);
}

std::size_t frmUndoHistory::Chosen() const {
  return static_cast<std::size_t>(lstUndo->indexOfTopLevelItem(lstUndo->currentItem())) + 1;
}

}  // namespace

std::optional<std::size_t> ChooseUndo(QWidget* over, const std::vector<std::string>& lines) {
  frmUndoHistory form(over, lines);
  return form.exec() == QDialog::Accepted ? std::optional(form.Chosen()) : std::nullopt;
}

}  // namespace quorvex
