#pragma once

#include <QTableView>

namespace quorvex {

class SheetModel;

// The grid of a project window. A cell is always current, so that keys and screen readers have a place to stand.
//
// An entry ends by Enter, which goes on to the row below, by Tab, or by going elsewhere. One that is refused stays open
// until it is corrected or taken back by Escape.
class SheetView : public QTableView {
  Q_OBJECT

 public:
  explicit SheetView(QWidget* parent);

  void SetSheet(SheetModel* sheet);

  // Ends an entry that is open, for a command that reads the sheet. False where it is refused and stays open.
  bool CommitEntry();

 signals:
  void CurrentCellChanged();

 protected:
  void reset() override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  friend class CellDelegate;
  bool Accepts(const QString& text) const;
  void GoBy(int rows, int columns);
  void StandAgain();  // in the cell that was current last

  int row_ = 0, column_ = 0;  // where the current cell was last
};

}  // namespace quorvex
