#include "results/ui/TableView.h"

#include <QAction>
#include <QClipboard>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>

#include "core/ui/BusyCursor.h"
#include "core/ui/NamesApart.h"
#include "core/ui/TableCells.h"
#include "results/TableForms.h"
#include "results/ui/WrappedText.h"

namespace quorvex {
namespace {

constexpr int kMargin = 16;                  // beside the text of a cell
constexpr int kIndent = 3;                   // of which this is before it
constexpr int kRowSpace = 6;                 // above and below it together
constexpr std::size_t kMostCharacters = 40;  // of texts in a column with a heading; a tooltip shows the others
constexpr std::size_t kSample = 400;         // rows that a column's width is made for

std::size_t Place(int index) { return static_cast<std::size_t>(index); }

bool IsHeading(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::ColumnHeadings; }

// Its first cell takes the whole width.
bool RunsOn(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::Line; }

// A text in lines that a tooltip has room for.
QString InLines(const QString& text) {
  constexpr qsizetype kLine = 100;
  QStringList lines;
  for (qsizetype at = 0; at < text.size(); at += kLine) lines.append(text.mid(at, kLine));
  return lines.join('\n');
}

// A label together with its value.
QString CellText(const TextTable& table, const QModelIndex& index) {
  const std::size_t row = Place(index.row()), column = Place(index.column());
  const bool line = column == 0 && table.Kind(row) == RowKind::Line;
  return QString::fromStdString(table.Cell(row, column) + (line ? table.Cell(row, 1) : ""));
}

// Draws the value of a label beside it, all values of a table below each other, on as many lines as it takes. The last
// column may be wider than its numbers, which stay beside those of the others.
class LineDelegate : public QStyledItemDelegate {
 public:
  LineDelegate(const TextTableModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

  int ValueAt = 0;     // where values begin, in pixels
  int ValueWidth = 0;  // and how wide they may be
  int LastWidth = 0;   // that the numbers of the last column need

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    {
      const QScopedValueRollback painting(painting_, true);
      QStyledItemDelegate::paint(painter, option, index);  // of what is drawn here the ground alone
    }
    if (!IsDrawnHere(index)) return;
    const std::size_t row = Place(index.row()), column = Place(index.column());
    QStyleOptionViewItem drawn = option;
    initStyleOption(&drawn, index);
    const bool selected = drawn.state.testFlag(QStyle::State_Selected);
    const auto group = drawn.state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
    painter->setFont(drawn.font);
    painter->setPen(drawn.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    const TextTable& table = *model_.Table();
    if (!IsLine(index)) {
      const QRect numbers(drawn.rect.left(), drawn.rect.top(), LastWidth - kIndent, drawn.rect.height());
      painter->drawText(numbers, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                        QString::fromStdString(table.Cell(row, column)));
      return;
    }
    const QRect line = drawn.rect.adjusted(kIndent, kRowSpace / 2, 0, 0);
    painter->drawText(line, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                      QString::fromStdString(table.Cell(row, 0)));
    WrappedText(table.Cell(row, 1), drawn.font, ValueWidth)
        .Draw(*painter, QPointF(drawn.rect.left() + ValueAt, line.top()));
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (IsDrawnHere(index))
      option->text.clear();
    else if (painting_ && model_.Table()->HasTexts(Place(index.column())))
      option->text = names_.Shown(index, option->fontMetrics, RoomForText(*option));
  }

 private:
  bool IsLine(const QModelIndex& index) const {
    return index.column() == 0 && model_.Table()->Kind(Place(index.row())) == RowKind::Line;
  }
  bool IsDrawnHere(const QModelIndex& index) const {
    return IsLine(index) || (LastWidth > 0 && index.column() > 0 && index.column() + 1 == model_.columnCount() &&
                             !IsRemark(*model_.Table(), Place(index.row()), Place(index.column())));
  }

  const TextTableModel& model_;
  NamesApart names_;
  mutable bool painting_ = false;
};

}  // namespace

void TextTableModel::SetTable(std::unique_ptr<TextTable> table, std::unique_ptr<TextTable> inFull) {
  beginResetModel();
  table_ = std::move(table);
  inFull_ = std::move(inFull);
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
    case Qt::AccessibleTextRole:
      return CellText(*table_, index);
    case Qt::AccessibleDescriptionRole:
      return PlaceOfCell(index);
    case Qt::ToolTipRole: {  // of a value that may be long, or has more digits
      if (table_->Kind(row) == RowKind::Line)
        return column == 0 ? InLines(QString::fromStdString(InFull()->Cell(row, 1))) : QVariant();
      if (column > 0 && table_->HasTexts(column)) return InLines(data(index, Qt::DisplayRole).toString());
      const std::string number = InFull()->Cell(row, column), shown = table_->Cell(row, column);
      return number == shown || number.size() < shown.size() ? QVariant() : QString::fromStdString(number);
    }
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter |
                      (table_->HasTexts(column) || RunsOn(table_->Kind(row)) || IsRemark(*table_, row, column)
                           ? Qt::AlignLeft
                           : Qt::AlignRight));
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
  OfferCopy("copyCsv", "Copy as Comma-Separated &Values", WriteCsv);
  OfferCopy("copyMarkdown", "Copy as &Markdown", WriteMarkdown);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  SetTableFont(font());
}

void TableView::SetTable(std::unique_ptr<TextTable> table, std::unique_ptr<TextTable> inFull) {
  // Spans are kept by row, and would lie over the rows of the new table.
  clearSpans();
  model_->SetTable(std::move(table), std::move(inFull));
  Arrange();
  if (model_->rowCount() > 0 && model_->columnCount() > 0) setCurrentIndex(model_->index(0, 0));
  scrollToTop();
}

void TableView::SetTableFont(const QFont& font) {
  model_->SetFont(font);
  horizontalHeader()->setFont(font);
  verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + kRowSpace);
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
  const int most = widthOf(plain, std::string(kMostCharacters, 'n'));
  bool headed = false;
  for (std::size_t c = 0; c < table->ColumnCount(); ++c) {
    const std::string heading = table->ColumnHeading(c);
    headed = headed || !heading.empty();
    int width = std::max(headed ? widthOf(plain, table->Widest(c)) : 0,
                         strong.size(0, QString::fromStdString(heading)).width() + kMargin);
    for (std::size_t r = 0; r < rows; ++r) {
      const RowKind kind = table->Kind(r);
      if (!RunsOn(kind) && !(kind == RowKind::Remarked && IsRemark(*table, r, c)))
        width = std::max(width, widthOf(IsHeading(kind) ? strong : plain, table->Cell(r, c)));
    }
    setColumnWidth(static_cast<int>(c), headed && table->HasTexts(c) ? std::min(width, most) : width);
  }
  horizontalHeader()->setVisible(headed);
  int valueAt = 0;
  for (std::size_t r = 0; r < table->RowCount() && !headed; ++r) {
    const RowKind kind = table->Kind(r);
    if (kind == RowKind::Line && !table->Cell(r, 1).empty())
      valueAt = std::max(valueAt, widthOf(plain, table->Cell(r, 0)));
    if (RunsOn(kind) && model_->columnCount() > 1) setSpan(static_cast<int>(r), 0, 1, model_->columnCount());
  }
  auto& delegate = static_cast<LineDelegate&>(*itemDelegate());
  delegate.ValueAt = valueAt;
  delegate.LastWidth = headed || model_->columnCount() == 0 ? 0 : columnWidth(model_->columnCount() - 1);
  MakeRoomForRemarks();
  FitLines();
}

// A remark goes over the columns behind it, and the last one is as wide as that takes.
void TableView::MakeRoomForRemarks() {
  const TextTable& table = *model_->Table();
  const QFontMetrics metrics(model_->Font());
  const int last = model_->columnCount() - 1;
  std::size_t longest = 0;
  for (std::size_t r = 0; r < table.RowCount(); ++r) {
    if (table.Kind(r) != RowKind::Remarked) continue;
    int column = last;
    while (column > 0 && table.Cell(r, Place(column)).empty()) --column;
    if (column < last) setSpan(static_cast<int>(r), column, 1, last - column + 1);
    const std::string text = table.Cell(r, Place(column));
    // Of many alike only those are measured that are longer than any before.
    if (text.size() <= longest) continue;
    longest = text.size();
    int room = 0;
    for (int c = column; c <= last; ++c) room += columnWidth(c);
    const int wanted = metrics.horizontalAdvance(QString::fromStdString(text)) + kMargin;
    if (wanted > room) setColumnWidth(last, columnWidth(last) + wanted - room);
  }
}

// Wraps the values of lines at the width of the window, which the last column fills.
void TableView::FitLines() {
  const TextTable* table = model_->Table();
  auto& delegate = static_cast<LineDelegate&>(*itemDelegate());
  if (table == nullptr || delegate.ValueAt == 0 || model_->columnCount() == 0) return;
  const int last = model_->columnCount() - 1;
  int before = 0;
  for (int c = 0; c < last; ++c) before += columnWidth(c);
  setColumnWidth(last, std::max(viewport()->width() - before, delegate.LastWidth));
  delegate.ValueWidth = std::max(viewport()->width() - delegate.ValueAt - kIndent, kMargin * 4);
  for (std::size_t r = 0; r < table->RowCount(); ++r) {  // all of them: a row keeps its height from table to table
    int height = verticalHeader()->defaultSectionSize();
    if (table->Kind(r) == RowKind::Line) {
      const WrappedText value(table->Cell(r, 1), model_->Font(), delegate.ValueWidth);
      height = std::max(height, static_cast<int>(std::ceil(value.Height())) + kRowSpace);
    }
    setRowHeight(static_cast<int>(r), height);
  }
}

void TableView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  FitLines();
}

std::optional<QRect> TableView::SelectedArea() const {
  if (!HasSeveralSelected()) return std::nullopt;
  QRect area;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    area |= QRect(range.left(), range.top(), range.width(), range.height());
  return area;
}

void TableView::WithCopied(const std::function<void(const TextTable&)>& take) const {
  const TextTable& whole = *InFull();
  const auto area = SelectedArea();
  if (!area) return take(whole);
  take(TableExcerpt(whole, Place(area->top()), Place(area->left()), Place(area->height()), Place(area->width())));
}

QMimeData* TableView::Copied() const {
  auto* mime = new QMimeData;
  WithCopied([mime](const TextTable& table) {
    mime->setText(QString::fromStdString(TabSeparated(table)));
    mime->setHtml(QString::fromStdString(Html(table)));
  });
  return mime;
}

void TableView::OfferCopy(const char* name, const QString& text, TableWriter writeTable) {
  auto* action = new QAction(text, this);
  action->setObjectName(name);
  connect(action, &QAction::triggered, this, [this, writeTable] {
    if (Table() == nullptr) return;
    const BusyCursor busy;
    WithCopied([writeTable](const TextTable& table) {
      QGuiApplication::clipboard()->setText(QString::fromStdString(Gathered(writeTable, table)));
    });
  });
  addAction(action);
}

// A line is one, though it goes over all columns.
bool TableView::HasSeveralSelected() const {
  const QItemSelection selection = selectionModel()->selection();
  if (selection.size() != 1) return selection.size() > 1;
  const QItemSelectionRange& range = selection[0];
  return range.height() > 1 || range.width() > columnSpan(range.top(), range.left());
}

// The view itself copies one cell as it shows it, whatever is selected and without a label's value.
void TableView::keyPressEvent(QKeyEvent* event) {
  if (ResizesColumn(*this, *event)) return;
  if (!event->matches(QKeySequence::Copy)) return QTableView::keyPressEvent(event);
  if (HasSeveralSelected())
    QGuiApplication::clipboard()->setMimeData(Copied());
  else if (currentIndex().isValid())
    QGuiApplication::clipboard()->setText(CellText(*InFull(), currentIndex()));
}

}  // namespace quorvex
