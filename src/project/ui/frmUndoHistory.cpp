#include "project/ui/frmUndoHistory.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>

#include "project/ProjectEditor.h"

namespace quorvex {
namespace {

constexpr QChar kRedoSign = '+';  // before the number of an action that can be made again

class frmUndoHistory : public QDialog {
 public:
  frmUndoHistory(QWidget* parent, const std::vector<std::string>& lines);

  int Chosen() const;

 private:
  void ShowChoice();

  QTreeWidget* lstUndo;
  QLabel* note_;
  QPushButton* cmdUndo;
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
  QTreeWidgetItem* newest = nullptr;
  for (const std::string& line : lines) {
    QStringList parts = QString::fromStdString(line).split('\t');
    if (parts[1].startsWith('&')) parts[1].remove(0, 1);  // the mnemonic of the menu entry
    auto* item = new QTreeWidgetItem(parts);
    lstUndo->addTopLevelItem(item);
    // The present lies between what can be made again and what can be taken back.
    if (newest == nullptr || newest->text(0).startsWith(kRedoSign)) newest = item;
  }
  // The actions stand below their word in the heading.
  const QString before = title.left(title.indexOf("Action"));
  lstUndo->setColumnWidth(0, heading->fontMetrics().horizontalAdvance(before));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  cmdUndo = buttons->addButton("&Undo", QDialogButtonBox::AcceptRole);
  cmdUndo->setObjectName("cmdUndo");
  cmdUndo->setDefault(true);
  note_ = new QLabel(this);
  connect(lstUndo, &QTreeWidget::currentItemChanged, this, &frmUndoHistory::ShowChoice);
  lstUndo->setCurrentItem(newest);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(lstUndo, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);

  auto* column = new QVBoxLayout(this);
  column->addWidget(heading);
  column->addWidget(lstUndo);
  column->addWidget(note_);
  column->addWidget(buttons);
  const int width = fontMetrics().averageCharWidth();
  resize(60 * width, 50 * width);
}

int frmUndoHistory::Chosen() const {
  const QString number = lstUndo->currentItem()->text(0);
  return number.startsWith(kRedoSign) ? -number.mid(1).toInt() : number.toInt();
}

void frmUndoHistory::ShowChoice() {
  const bool redo = Chosen() < 0;
  cmdUndo->setText(redo ? "&Redo" : "&Undo");
  note_->setText(redo ? "Makes the chosen action and the undone ones below it again."
                      : "Undoes the chosen action and those above it that were not undone.");
}

}  // namespace

std::optional<int> ChooseUndo(QWidget* over, const std::vector<std::string>& lines) {
  frmUndoHistory form(over, lines);
  return form.exec() == QDialog::Accepted ? std::optional(form.Chosen()) : std::nullopt;
}

}  // namespace quorvex
