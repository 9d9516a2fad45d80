#pragma once

#include <QTableView>
#include <optional>

#include "sheet/CellRange.h"

namespace quorvex {

class SheetModel;

// The grid of a project window. A cell is always current, so that keys and screen readers have a place to stand.
//
// An entry ends by Enter, which goes on to the row below, by Tab, or by going elsewhere. One that is refused stays open
// until it is corrected or taken back by Escape. Enter behind Tabs goes on below the cell where they began, so that
// rows are typed one after the other. Ctrl with an arrow goes by blocks of cells, Ctrl+End to the last that holds
// anything.
class SheetView : public QTableView {
  Q_OBJECT

 public:
  explicit SheetView(QWidget* parent);

  void SetSheet(SheetModel* sheet);

  CellPlace CurrentPlace() const;
  // Every cell, with the current one in view.
  void SelectAll();

  // What a cell of text is marked with on a ground of that colour: its corner and its letters. 4.5 : 1 or more.
  static QColor TextMark(const QColor& ground);

  // Ends an entry that is open, for a command that reads the sheet. False where it is refused and stays open.
  bool CommitEntry();

 signals:
  void CurrentCellChanged();
  void EntryRefused();  // before the user is told

 protected:
  void reset() override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void keyPressEvent(QKeyEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  friend class CellDelegate;
  bool Accepts(const QString& text) const;
  void GoTo(const QModelIndex& cell);
  void GoBy(int rows) { GoTo(currentIndex().siblingAtRow(currentIndex().row() + rows)); }
  void GoByTab(CursorAction action);
  void GoByEnter();
  QModelIndex BlockEdgeFrom(const QModelIndex& cell, int rows, int columns) const;
  void StandAgain();  // in the cell that was current last
  void ShowFormats();
  void ColumnResized(int column, int before, int width);
  void ShowHeaderMenu(const QPoint& place);

  SheetModel* sheet_ = nullptr;
  int row_ = 0, column_ = 0;       // where the current cell was last
  bool resizing_ = false;          // by what the sheet says, not by the user
  bool goesFar_ = false;           // the key that is pressed goes by blocks or to an end of the sheet
  std::optional<int> tabbedFrom_;  // the column where the Tabs began that led to the current cell
};

}  // namespace quorvex
