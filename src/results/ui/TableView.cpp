#include "results/ui/TableView.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <algorithm>

namespace quorvex {
namespace {

constexpr int kMargin = 16;           // beside the text of a cell
constexpr std::size_t kSample = 400;  // rows that a column's width is made for

std::size_t Place(int index) { return static_cast<std::size_t>(index); }

bool IsHeading(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::ColumnHeadings; }

// Its last filled cell takes the width that is left.
bool RunsOn(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::Line; }

}  // namespace

void TextTableModel::SetTable(std::unique_ptr<TextTable> table) {
  beginResetModel();
  table_ = std::move(table);
  endResetModel();
}

int TextTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !table_ ? 0 : static_cast<int>(table_->RowCount());
}

int TextTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || !table_ ? 0 : static_cast<int>(table_->ColumnCount());
}

QVariant TextTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const std::size_t row = Place(index.row()), column = Place(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(table_->Cell(row, column));
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter | (column == 0 || RunsOn(table_->Kind(row)) ? Qt::AlignLeft : Qt::AlignRight));
    case Qt::FontRole: {
      QFont font = font_;
      font.setBold(font.bold() || IsHeading(table_->Kind(row)));
      return font;
    }
    default:
      return {};
  }
}

QVariant TextTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (!table_ || orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return QString::fromStdString(table_->ColumnHeading(Place(section)));
  return QAbstractTableModel::headerData(section, orientation, role);
}

TableView::TableView(const char* name, const QString& accessibleName, QWidget* parent)
    : QTableView(parent), model_(new TextTableModel(this)) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setModel(model_);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setAccessibleName("Column headings");
  SetTableFont(font());
}

void TableView::SetTable(std::unique_ptr<TextTable> table) {
  clearSpans();
  model_->SetTable(std::move(table));
  Arrange();
  if (model_->rowCount() > 0 && model_->columnCount() > 0) setCurrentIndex(model_->index(0, 0));
  scrollToTop();
}

void TableView::SetTableFont(const QFont& font) {
  model_->SetFont(font);
  horizontalHeader()->setFont(font);
  verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + 6);
  Arrange();
  viewport()->update();
}

void TableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) SetTableFont(font());
}

void TableView::Arrange() {
  const TextTable* table = model_->Table();
  if (table == nullptr) return;
  QFont bold = model_->data(model_->index(0, 0), Qt::FontRole).value<QFont>();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const auto widthOf = [&](const std::string& text) {
    return metrics.horizontalAdvance(QString::fromStdString(text)) + kMargin;
  };
  const std::size_t rows = std::min(table->RowCount(), kSample);
  const int number = widthOf("-0.123456789012345");  // in a long table, of which the sample is but the beginning
  bool headed = false;
  for (std::size_t c = 0; c < table->ColumnCount(); ++c) {
    const std::string heading = table->ColumnHeading(c);
    headed = headed || !heading.empty();
    int width = std::max(c > 0 && headed ? number : 0, widthOf(heading));
    for (std::size_t r = 0; r < rows; ++r) {
      const RowKind kind = table->Kind(r);
      if (kind != RowKind::Heading && (c == 0 || kind != RowKind::Line))
        width = std::max(width, widthOf(table->Cell(r, c)));
    }
    setColumnWidth(static_cast<int>(c), width);
  }
  horizontalHeader()->setVisible(headed);
  const int columns = model_->columnCount();
  for (std::size_t r = 0; r < table->RowCount() && !headed; ++r) {
    const RowKind kind = table->Kind(r);
    if (!RunsOn(kind)) continue;
    const int from = kind == RowKind::Heading || table->Cell(r, 1).empty() ? 0 : 1;
    if (columns - from > 1) setSpan(static_cast<int>(r), from, 1, columns - from);
  }
}

QMimeData* TableView::Copied() const {
  const TextTable& whole = *model_->Table();
  const auto copied = [](const TextTable& table) {
    auto* data = new QMimeData;
    data->setText(QString::fromStdString(TabSeparated(table)));
    data->setHtml(QString::fromStdString(Html(table)));
    return data;
  };
  if (!HasSeveralSelected()) return copied(whole);
  QRect area;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    area |= QRect(range.left(), range.top(), range.width(), range.height());
  return copied(TableExcerpt(whole, Place(area.top()), Place(area.left()), Place(area.height()), Place(area.width())));
}

bool TableView::HasSeveralSelected() const {
  const QItemSelection selection = selectionModel()->selection();
  return selection.size() > 1 || (selection.size() == 1 && (selection[0].width() > 1 || selection[0].height() > 1));
}

// The view itself copies one cell, whatever is selected.
void TableView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy) && HasSeveralSelected())
    QGuiApplication::clipboard()->setMimeData(Copied());
  else
    QTableView::keyPressEvent(event);
}

}  // namespace quorvex
