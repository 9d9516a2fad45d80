#include "desktop/SheetModel.h"

#include <QColor>
#include <QFont>
#include <algorithm>
#include <cmath>

#include "core/ui/TableCells.h"
#include "sheet/CellEntry.h"
#include "sheet/TypeInCell.h"

namespace quorvex {
namespace {

constexpr std::size_t kFewestRows = 65'536;  // a file may hold more

std::size_t Row(const QModelIndex& index) { return static_cast<std::size_t>(index.row()) + 1; }
std::size_t Col(const QModelIndex& index) { return static_cast<std::size_t>(index.column()) + 1; }

// The codes of ColumnFormat::AlignHorizontal that the view has an equal for; any other leaves texts to the left and
// numbers to the right.
constexpr struct {
  std::int32_t Code;
  Qt::Alignment Alignment;
} kAlignments[] = {{2, Qt::AlignLeft}, {3, Qt::AlignHCenter}, {4, Qt::AlignRight}};

// What a column's font has of its own. A face, size or colour that nobody chose is that of the user's desktop.
QFont OwnFont(const ColumnFormat& format) {
  const ColumnFormat fresh;
  QFont font;
  if (format.FontName != fresh.FontName) font.setFamily(QString::fromStdString(format.FontName));
  // Sizes are kept in twentieths of a point.
  if (format.FontSize != fresh.FontSize && format.FontSize > 0)
    font.setPointSizeF(std::min(format.FontSize, 2000) / 20.0);
  if (format.FontBold) font.setBold(true);
  if (format.FontItalic) font.setItalic(true);
  if (format.FontUnderline) font.setUnderline(true);
  if (format.FontStrikeout) font.setStrikeOut(true);
  return font;
}

QVariant OwnColor(std::int32_t rgb) {
  if (rgb == ColumnFormat().FontColor) return {};
  return QColor(rgb & 0xFF, rgb >> 8 & 0xFF, rgb >> 16 & 0xFF);
}

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
    case Qt::AccessibleDescriptionRole:
      return PlaceOfCell(index) + (IsText(index) ? ", text" : "");
    case Qt::EditRole:
      return QString::fromStdString(EntryText(sheet, Row(index), Col(index), project_.Locale));
    case Qt::TextAlignmentRole: {
      for (const auto& [code, alignment] : kAlignments)
        if (code == sheet.Formats[Col(index) - 1].AlignHorizontal) return QVariant(Qt::AlignVCenter | alignment);
      return QVariant(Qt::AlignVCenter | (IsText(index) ? Qt::AlignLeft : Qt::AlignRight));
    }
    case Qt::FontRole:
      return OwnFont(sheet.Formats[Col(index) - 1]);
    case Qt::ToolTipRole:
      return IsText(index) ? QString("A text, which is no value of the data.") : QVariant();
    case Qt::ForegroundRole:
      return OwnColor(sheet.Formats[Col(index) - 1].FontColor);
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
  emit headerDataChanged(Qt::Horizontal, index.column(), index.column());  // a date may widen its column
  emit Edited();
  return true;
}

bool SheetModel::IsText(const QModelIndex& index) const {
  return GridCells::IsText(project_.Sheet.Cells.Cell(Row(index), Col(index)));
}

bool SheetModel::Accepts(const QString& text) const {
  return ReadCellEntry(text.toStdString(), project_.Locale).has_value();
}

double SheetModel::RelativeWidth(int column) const {
  return static_cast<double>(project_.Sheet.Formats[static_cast<std::size_t>(column)].ColumnWidth) /
         ColumnFormat().ColumnWidth;
}

void SheetModel::SetRelativeWidth(int column, double width) {
  project_.Sheet.Formats[static_cast<std::size_t>(column)].ColumnWidth =
      static_cast<std::int32_t>(std::lround(width * ColumnFormat().ColumnWidth));
  project_.Changed = true;
  emit headerDataChanged(Qt::Horizontal, column, column);
  emit Edited();
}

// A reset would forget what is selected, so it is left to where there are rows or columns the view does not know.
void SheetModel::Reload() {
  if (rowCount() != rows_ || columnCount() != columns_) {
    beginResetModel();
    rows_ = rowCount();
    columns_ = columnCount();
    endResetModel();
  } else {
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  }
  emit Edited();
}

}  // namespace quorvex
