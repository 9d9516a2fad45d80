#include "import/ui/PreviewModel.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

namespace quorvex {

void PreviewModel::Show(GridCells cells) {
  beginResetModel();
  cells_ = std::move(cells);
  endResetModel();
}

void PreviewModel::SetKept(double startRow, std::string marker) {
  startRow_ = startRow;
  marker_ = std::move(marker);
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::ForegroundRole});
}

void PreviewModel::ShowVariables(const ColumnAssignment& columns) {
  variables_.clear();
  for (std::size_t col = 1; col <= cells_.GridLastCol(); ++col) variables_.push_back(columns.VariableOf(col));
  emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

int PreviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(1, static_cast<int>(cells_.GridLastRow()));
}

int PreviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(1, static_cast<int>(cells_.GridLastCol()));
}

bool PreviewModel::Kept(std::size_t row, std::size_t col) const {
  return static_cast<double>(row) >= startRow_ && (marker_.empty() || cells_.GridCellText(row, col) != marker_);
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row()) + 1, col = static_cast<std::size_t>(index.column()) + 1;
  switch (role) {
    case Qt::DisplayRole: {
      const QString text = QString::fromStdString(cells_.GridCellText(row, col));
      return GridCells::IsText(cells_.Cell(row, col)) ? text : QString(text).replace('.', locale_.DecimalSeparator);
    }
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter | (GridCells::IsText(cells_.Cell(row, col)) ? Qt::AlignLeft : Qt::AlignRight));
    case Qt::ForegroundRole:
      if (Kept(row, col)) return {};
      return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    default:
      return {};
  }
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || section < 0) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const auto col = static_cast<std::size_t>(section);
  const std::string variable = col < variables_.size() ? variables_[col] : "";
  const std::string name = cells_.ColumnName(col + 1);
  const QString column = name.empty() ? QString("Column %1").arg(section + 1) : QString::fromStdString(name);
  return column + '\n' + QString::fromStdString(variable);
}

}  // namespace quorvex
