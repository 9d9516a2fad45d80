#include "import/ui/PreviewModel.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>
#include <QSize>
#include <algorithm>
#include <cmath>

#include "import/TextCells.h"

namespace quorvex {
namespace {

// The ground of a cell with a text: the view's own, light or dark, with some orange in it.
QBrush MarkOfText() {
  const QColor ground = QGuiApplication::palette().color(QPalette::Base), orange(0xE6, 0x9F, 0x00);
  const auto mixed = [](int a, int b) { return (13 * a + 7 * b) / 20; };
  return QColor(mixed(ground.red(), orange.red()), mixed(ground.green(), orange.green()),
                mixed(ground.blue(), orange.blue()));
}

}  // namespace

void PreviewModel::Show(GridCells cells, std::vector<bool> comments) {
  beginResetModel();
  cells_ = std::move(cells);
  comments_ = std::move(comments);
  endResetModel();
}

void PreviewModel::SetKept(double startRow, std::string marker, bool textMissing, ColumnDates dates) {
  dates_ = std::move(dates);
  startRow_ = startRow;
  marker_ = std::move(marker);
  textMissing_ = textMissing;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void PreviewModel::ShowVariables(const ColumnAssignment& columns) {
  names_ = columns.lstColumns();
  variables_.clear();
  imported_.clear();
  for (std::size_t col = 1; col <= cells_.GridLastCol(); ++col) {
    variables_.push_back(columns.VariableOf(col));
    imported_.push_back(columns.MayBeImported(col));
  }
  emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int PreviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(1, static_cast<int>(cells_.GridLastRow()));
}

int PreviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(1, static_cast<int>(cells_.GridLastCol()));
}

bool PreviewModel::Kept(std::size_t row, std::size_t col) const {
  if (IsComment(row)) return false;
  return static_cast<double>(row) >= startRow_ && (marker_.empty() || cells_.GridCellText(row, col) != marker_) &&
         (!textMissing_ || !StaysText(row, col));
}

bool PreviewModel::StaysText(std::size_t row, std::size_t col) const {
  return col <= imported_.size() && imported_[col - 1] &&
         quorvex::StaysText(cells_, cells_.Cell(row, col), dates_.LocaleOf(col));
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row()) + 1, col = static_cast<std::size_t>(index.column()) + 1;
  switch (role) {
    case Qt::DisplayRole: {
      if (const std::string dates = cells_.DatePattern(col); !dates.empty() && !std::isnan(cells_.Cell(row, col)))
        return QString::fromStdString(FormatDate(cells_.Cell(row, col), dates, locale_.DecimalSeparator));
      const QString text = QString::fromStdString(cells_.GridCellText(row, col));
      return GridCells::IsText(cells_.Cell(row, col)) ? text : QString(text).replace('.', locale_.DecimalSeparator);
    }
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter | (GridCells::IsText(cells_.Cell(row, col)) ? Qt::AlignLeft : Qt::AlignRight));
    case Qt::SizeHintRole:  // a comment goes over all columns and widens none
      return IsComment(row) ? QVariant(QSize(0, 0)) : QVariant();
    case Qt::ForegroundRole:
      if (Kept(row, col)) return {};
      return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    case Qt::BackgroundRole:
      return Kept(row, col) && StaysText(row, col) ? QVariant(MarkOfText()) : QVariant();
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      if (IsComment(row)) return QVariant("This line is a comment and will be skipped.");
      return Kept(row, col) && StaysText(row, col) ? QVariant("This cell is text and no number.") : QVariant();
    default:
      return {};
  }
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || section < 0) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const auto col = static_cast<std::size_t>(section);
  const std::string variable = col < variables_.size() ? variables_[col] : "";
  const std::string name = col < names_.size() ? names_[col] : "Column " + std::to_string(col + 1);
  return QString::fromStdString(name) + '\n' + QString::fromStdString(variable);
}

}  // namespace quorvex
