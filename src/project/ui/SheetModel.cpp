#include "project/ui/SheetModel.h"

#include <algorithm>

#include "sheet/CellEntry.h"
#include "sheet/TypeInCell.h"

namespace quorvex {
namespace {

constexpr std::size_t kFewestRows = 65'536;  // a file may hold more

std::size_t Row(const QModelIndex& index) { return static_cast<std::size_t>(index.row()) + 1; }
std::size_t Col(const QModelIndex& index) { return static_cast<std::size_t>(index.column()) + 1; }

}  // namespace

int SheetModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(std::max(kFewestRows, project_.Sheet.Cells.GridLastRow()));
}

int SheetModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(project_.Sheet.ColumnCount());
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
  const DataSheet& sheet = project_.Sheet;
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(ShownText(sheet, Row(index), Col(index), project_.Locale));
    case Qt::EditRole:
      return QString::fromStdString(EntryText(sheet.Cells, Row(index), Col(index), project_.Locale));
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter |
                      (GridCells::IsText(sheet.Cells.Cell(Row(index), Col(index))) ? Qt::AlignLeft : Qt::AlignRight));
    default:
      return {};
  }
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || section < 0) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const auto col = static_cast<std::size_t>(section);
  return col < project_.Sheet.Headers.size() ? QString::fromStdString(project_.Sheet.Headers[col]) : QString();
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

bool SheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  if (!TypeInCell(edit_, Row(index), Col(index), value.toString().toStdString())) return false;
  emit dataChanged(index, index);
  return true;
}

bool SheetModel::Accepts(const QString& text) const {
  return ReadCellEntry(text.toStdString(), project_.Locale).has_value();
}

void SheetModel::Reload() {
  beginResetModel();
  endResetModel();
}

}  // namespace quorvex
