#pragma once

#include <QModelIndex>

class QKeyEvent;
class QTableView;

namespace quorvex {

// Where a cell of a table is, for screen readers: "Height, row 3", and "Column 2, row 3" where nothing stands over it.
QString PlaceOfCell(const QModelIndex& cell);

// Alt with the arrow to the right makes the current column wider by a character, to the left narrower. Whether the key
// was one of these.
bool ResizesColumn(QTableView& table, const QKeyEvent& event);

}  // namespace quorvex
