#include "project/ui/SheetView.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>
#include <algorithm>

#include "project/ui/SheetModel.h"

namespace quorvex {

// The editor of a cell.
class CellDelegate : public QStyledItemDelegate {
 public:
  explicit CellDelegate(SheetView* view) : QStyledItemDelegate(view), view_(*view) {
    connect(this, &QAbstractItemDelegate::closeEditor, this, [this] { editor_ = nullptr; });
  }

  // Stores what stands in the open editor and closes it. False where it is refused; the editor then has the focus.
  bool Commit() {
    if (editor_ == nullptr) return true;
    QLineEdit* editor = editor_;
    if (!view_.model()->setData(index_, editor->text(), Qt::EditRole)) {
      editor->setFocus();
      editor->selectAll();
      return false;
    }
    emit closeEditor(editor, NoHint);
    return true;
  }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const override {
    auto* editor = new QLineEdit(parent);
    editor->setObjectName("entry");
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    editor->setAlignment(Qt::AlignRight);
    editor->setAccessibleName(QString("%1, row %2")
                                  .arg(index.model()->headerData(index.column(), Qt::Horizontal).toString())
                                  .arg(index.row() + 1));
    editor_ = editor;
    index_ = index;
    return editor;
  }

  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
    model->setData(index, static_cast<QLineEdit*>(editor)->text(), Qt::EditRole);
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (object != editor_) return QStyledItemDelegate::eventFilter(object, event);
    // An entry that would be refused stays open while the focus is elsewhere, as in the box that says so.
    if (event->type() == QEvent::FocusOut && !view_.Accepts(editor_->text())) return false;
    if (event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(object, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_Down:
        if (Commit()) view_.GoBy(1, 0);
        return true;
      case Qt::Key_Up:
        if (Commit()) view_.GoBy(-1, 0);
        return true;
      case Qt::Key_Tab:
        if (Commit()) view_.GoBy(0, 1);
        return true;
      case Qt::Key_Backtab:
        if (Commit()) view_.GoBy(0, -1);
        return true;
      default:
        return QStyledItemDelegate::eventFilter(object, event);
    }
  }

 private:
  SheetView& view_;
  mutable QPointer<QLineEdit> editor_;
  mutable QPersistentModelIndex index_;
};

SheetView::SheetView(QWidget* parent) : QTableView(parent) {
  setObjectName("DataGrid");
  setAccessibleName("Data sheet");
  setItemDelegate(new CellDelegate(this));
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  setAlternatingRowColors(false);
  // Rows of one height: none of the many has to be asked for its own.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  // As wide as a number with all the digits that are shown.
  horizontalHeader()->setDefaultSectionSize(fontMetrics().horizontalAdvance("-0.123456789012345") + 12);
  horizontalHeader()->setAccessibleName("Column headers");
  verticalHeader()->setAccessibleName("Row numbers");
}

void SheetView::SetSheet(SheetModel* sheet) {
  setModel(sheet);
  // Behind the selection's own answer to the signal, which is to forget the current cell.
  connect(sheet, &SheetModel::modelReset, this, &SheetView::StandAgain);
  StandAgain();
}

bool SheetView::CommitEntry() { return static_cast<CellDelegate*>(itemDelegate())->Commit(); }

bool SheetView::Accepts(const QString& text) const { return static_cast<SheetModel*>(model())->Accepts(text); }

void SheetView::reset() {
  QTableView::reset();
  StandAgain();
}

void SheetView::StandAgain() {
  if (model() == nullptr || currentIndex().isValid()) return;
  setCurrentIndex(
      model()->index(std::min(row_, model()->rowCount() - 1), std::min(column_, model()->columnCount() - 1)));
}

void SheetView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (current.isValid()) {
    row_ = current.row();
    column_ = current.column();
  }
  emit CurrentCellChanged();
}

// The grid has the focus after that, even where another window is active.
void SheetView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, hint);
  if (window()->focusWidget() == editor) setFocus();
}

void SheetView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return GoBy(1, 0);
  QTableView::keyPressEvent(event);
}

void SheetView::mousePressEvent(QMouseEvent* event) {
  if (CommitEntry()) QTableView::mousePressEvent(event);
}

void SheetView::GoBy(int rows, int columns) {
  setFocus();
  const QModelIndex next = currentIndex().siblingAtRow(currentIndex().row() + rows);
  const QModelIndex beside = next.siblingAtColumn(next.column() + columns);
  if (beside.isValid()) setCurrentIndex(beside);
}

}  // namespace quorvex
