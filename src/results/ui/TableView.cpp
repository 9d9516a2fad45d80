#include "results/ui/TableView.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

namespace quorvex {
namespace {

constexpr int kMargin = 16;           // beside the text of a cell
constexpr std::size_t kSample = 400;  // rows that a column's width is made for

std::size_t Place(int index) { return static_cast<std::size_t>(index); }

bool IsHeading(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::ColumnHeadings; }

// Its first cell takes the whole width.
bool RunsOn(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::Line; }

// Draws the value of a label beside it, all values of a table below each other.
class LineDelegate : public QStyledItemDelegate {
 public:
  LineDelegate(const TextTableModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

  int ValueAt = 0;  // where values begin, in pixels

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const std::size_t row = Place(index.row());
    if (index.column() > 0 || model_.Table()->Kind(row) != RowKind::Line) return;
    QStyleOptionViewItem drawn = option;
    initStyleOption(&drawn, index);
    const bool selected = drawn.state.testFlag(QStyle::State_Selected);
    const auto group = drawn.state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
    painter->setFont(drawn.font);
    painter->setPen(drawn.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(drawn.rect.adjusted(ValueAt, 0, 0, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                      QString::fromStdString(model_.Table()->Cell(row, 1)));
  }

 private:
  const TextTableModel& model_;
};

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
    case Qt::AccessibleTextRole:  // a label together with its value
      return column == 0 && table_->Kind(row) == RowKind::Line
                 ? QString::fromStdString(table_->Cell(row, 0) + table_->Cell(row, 1))
                 : data(index, Qt::DisplayRole);
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
  setItemDelegate(new LineDelegate(*model_, this));
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
  QFont bold = model_->Font();
  bold.setBold(true);
  const QFontMetrics plain(model_->Font()), strong(bold);
  const auto widthOf = [](const QFontMetrics& metrics, const std::string& text) {
    return metrics.horizontalAdvance(QString::fromStdString(text)) + kMargin;
  };
  const std::size_t rows = std::min(table->RowCount(), kSample);
  const int number = widthOf(plain, "-0.123456789012345");  // in a long table, of which the sample is the beginning
  bool headed = false;
  for (std::size_t c = 0; c < table->ColumnCount(); ++c) {
    const std::string heading = table->ColumnHeading(c);
    headed = headed || !heading.empty();
    int width = std::max(c > 0 && headed ? number : 0, widthOf(strong, heading));
    for (std::size_t r = 0; r < rows; ++r) {
      const RowKind kind = table->Kind(r);
      if (!RunsOn(kind)) width = std::max(width, widthOf(IsHeading(kind) ? strong : plain, table->Cell(r, c)));
    }
    setColumnWidth(static_cast<int>(c), width);
  }
  horizontalHeader()->setVisible(headed);
  int valueAt = 0;
  for (std::size_t r = 0; r < table->RowCount() && !headed; ++r) {
    const RowKind kind = table->Kind(r);
    if (kind == RowKind::Line && !table->Cell(r, 1).empty())
      valueAt = std::max(valueAt, widthOf(plain, table->Cell(r, 0)));
    if (RunsOn(kind) && model_->columnCount() > 1) setSpan(static_cast<int>(r), 0, 1, model_->columnCount());
  }
  static_cast<LineDelegate*>(itemDelegate())->ValueAt = valueAt;
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
