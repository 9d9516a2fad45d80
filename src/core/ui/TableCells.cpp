#include "core/ui/TableCells.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>
#include <algorithm>

namespace quorvex {

QString PlaceOfCell(const QModelIndex& cell) {
  const QString heading = cell.model()->headerData(cell.column(), Qt::Horizontal).toString().simplified();
  return QString("%1, row %2")
      .arg(heading.isEmpty() ? QString("Column %1").arg(cell.column() + 1) : heading)
      .arg(cell.row() + 1);
}

bool ResizesColumn(QTableView& table, const QKeyEvent& event) {
  const bool wider = event.key() == Qt::Key_Right;
  if ((!wider && event.key() != Qt::Key_Left) || (event.modifiers() & ~Qt::KeypadModifier) != Qt::AltModifier)
    return false;
  const int column = table.currentIndex().column(), step = table.fontMetrics().averageCharWidth();
  if (column < 0) return true;
  const int narrowest = std::max(table.horizontalHeader()->minimumSectionSize(), step);
  table.setColumnWidth(column, std::max(table.columnWidth(column) + (wider ? step : -step), narrowest));
  return true;
}

}  // namespace quorvex
