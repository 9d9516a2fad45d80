#include "desktop/SheetView.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>

#include "core/ui/TableCells.h"
#include "desktop/SheetModel.h"
#include "sheet/BlockEdge.h"

namespace quorvex {

// The editor of a cell.
class CellDelegate : public QStyledItemDelegate {
 public:
  explicit CellDelegate(SheetView* view) : QStyledItemDelegate(view), view_(*view) {
    connect(this, &QAbstractItemDelegate::closeEditor, this, [this] { editor_ = nullptr; });
  }

  // Stores what stands in the open editor and closes it. False where it is refused; the editor then has the focus.
  bool Commit() {
    if (editor_ == nullptr) return true;
    if (committing_) return false;  // by whom this was called from a box over the sheet
    if (!view_.Accepts(editor_->text())) emit view_.EntryRefused();
    const bool stored = [this] {
      const QScopedValueRollback storing(committing_, true);
      return view_.model()->setData(index_, editor_->text(), Qt::EditRole);
    }();
    // A box that storing has shown runs the event loop, in which the editor may be closed.
    if (editor_ == nullptr) return stored;
    if (stored) {
      emit closeEditor(editor_, NoHint);
    } else {
      editor_->setFocus();
      editor_->selectAll();
    }
    return stored;
  }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const override {
    auto* editor = new QLineEdit(parent);
    editor->setObjectName("entry");
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    editor->setAlignment(Qt::AlignRight);
    editor->setAccessibleName(PlaceOfCell(index));
    editor_ = editor;
    index_ = index;
    return editor;
  }

  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
    model->setData(index, static_cast<QLineEdit*>(editor)->text(), Qt::EditRole);
  }

  // A cell of text has a corner in a colour of its own, which its letters have, too, where the column has none.
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    if (!view_.sheet_->IsText(index)) return;
    const int side = option.rect.height() / 3;
    const QPoint corner = option.rect.topLeft();
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    QPainterPath triangle(corner);
    triangle.lineTo(corner + QPoint(side, 0));
    triangle.lineTo(corner + QPoint(0, side));
    painter->fillPath(triangle, selected ? option.palette.color(QPalette::HighlightedText)
                                         : SheetView::TextMark(option.palette.color(QPalette::Base)));
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (view_.sheet_->IsText(index) && !index.data(Qt::ForegroundRole).isValid())
      option->palette.setColor(QPalette::Text, SheetView::TextMark(option->palette.color(QPalette::Base)));
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (object != editor_) return QStyledItemDelegate::eventFilter(object, event);
    // An entry that would be refused stays open while the focus is elsewhere, as in the box that says so. One that is
    // being stored is not stored again by the boxes of that.
    if (event->type() == QEvent::FocusOut && (committing_ || !view_.Accepts(editor_->text()))) return false;
    if (event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(object, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if (Commit()) view_.GoByEnter();
        return true;
      case Qt::Key_Down:
        if (Commit()) view_.GoBy(1);
        return true;
      case Qt::Key_Up:
        if (Commit()) view_.GoBy(-1);
        return true;
      case Qt::Key_Tab:
        if (Commit()) view_.GoByTab(SheetView::MoveNext);
        return true;
      case Qt::Key_Backtab:
        if (Commit()) view_.GoByTab(SheetView::MovePrevious);
        return true;
      default:
        return QStyledItemDelegate::eventFilter(object, event);
    }
  }

 private:
  SheetView& view_;
  mutable QPointer<QLineEdit> editor_;
  mutable QPersistentModelIndex index_;
  bool committing_ = false;
};

SheetView::SheetView(QWidget* parent) : QTableView(parent) {
  setObjectName("DataGrid");
  setAccessibleName("Data sheet");
  setItemDelegate(new CellDelegate(this));
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  setAlternatingRowColors(false);
  setShowGrid(false);
  // Rows of one height: none of the many has to be asked for its own.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  // As wide as a number with all the digits that are shown.
  horizontalHeader()->setDefaultSectionSize(fontMetrics().horizontalAdvance("-0.123456789012345") + 12);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, &SheetView::ShowHeaderMenu);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, &SheetView::ColumnResized);
  horizontalHeader()->setAccessibleName("Column headers");
  verticalHeader()->setAccessibleName("Row numbers");
}

void SheetView::SetSheet(SheetModel* sheet) {
  sheet_ = sheet;
  sheet->Reload();
  setModel(sheet);
  // Behind the selection's own answer to the signal, which is to forget the current cell.
  connect(sheet, &SheetModel::modelReset, this, &SheetView::StandAgain);
  connect(sheet, &SheetModel::modelReset, this, &SheetView::ShowFormats);
  connect(sheet, &SheetModel::headerDataChanged, this, &SheetView::ShowFormats);
  StandAgain();
  ShowFormats();
}

CellPlace SheetView::CurrentPlace() const {
  return {static_cast<std::size_t>(currentIndex().row()) + 1, static_cast<std::size_t>(currentIndex().column()) + 1};
}

void SheetView::SelectAll() {
  if (!CommitEntry()) return;
  setFocus();
  selectAll();
}

// Widths as the sheet keeps them, and rows as high as the largest font needs.
void SheetView::ShowFormats() {
  constexpr int kNarrowest = 10, kWidest = 2000;
  resizing_ = true;
  int height = fontMetrics().height();
  for (int column = 0; column < sheet_->columnCount(); ++column) {
    const double width = sheet_->RelativeWidth(column) * horizontalHeader()->defaultSectionSize();
    setColumnWidth(column, static_cast<int>(std::lround(std::clamp<double>(width, kNarrowest, kWidest))));
    const QVariant own = sheet_->data(sheet_->index(0, column), Qt::FontRole);
    height = std::max(height, QFontMetrics(own.value<QFont>().resolve(font())).height());
  }
  // Which looks at each of the many rows.
  if (verticalHeader()->defaultSectionSize() != height + 8) verticalHeader()->setDefaultSectionSize(height + 8);
  resizing_ = false;
}

void SheetView::ColumnResized(int column, int, int width) {
  if (resizing_ || sheet_ == nullptr) return;
  sheet_->SetRelativeWidth(column, static_cast<double>(width) / horizontalHeader()->defaultSectionSize());
}

// The menu of the sheet, for the column it was asked for.
void SheetView::ShowHeaderMenu(const QPoint& place) {
  const int column = horizontalHeader()->logicalIndexAt(place);
  if (column >= 0 && !selectionModel()->isColumnSelected(column)) selectColumn(column);
  QMenu::exec(actions(), horizontalHeader()->mapToGlobal(place), nullptr, this);
}

// The lines of the grid. The style's own are hardly to be seen on a dark ground.
void SheetView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  constexpr float kInk = 0.25f;  // of the text's colour in that of the lines
  const QColor ground = palette().color(QPalette::Base), text = palette().color(QPalette::Text);
  const auto mixed = [](float a, float b) { return a + kInk * (b - a); };
  const QColor line = QColor::fromRgbF(mixed(ground.redF(), text.redF()), mixed(ground.greenF(), text.greenF()),
                                       mixed(ground.blueF(), text.blueF()));
  QPainter painter(viewport());
  const int lastColumn = model()->columnCount() - 1;
  const int width = std::min(columnViewportPosition(lastColumn) + columnWidth(lastColumn), viewport()->width());
  const int bottom = rowAt(viewport()->height() - 1), lastRow = bottom >= 0 ? bottom : model()->rowCount() - 1;
  const int height = std::min(rowViewportPosition(lastRow) + rowHeight(lastRow), viewport()->height());
  for (int row = std::max(rowAt(0), 0); row <= lastRow; ++row)
    painter.fillRect(0, rowViewportPosition(row) + rowHeight(row) - 1, width, 1, line);
  for (int column = std::max(columnAt(0), 0); column <= lastColumn; ++column)
    painter.fillRect(columnViewportPosition(column) + columnWidth(column) - 1, 0, 1, height, line);
}

bool SheetView::CommitEntry() { return static_cast<CellDelegate*>(itemDelegate())->Commit(); }

bool SheetView::Accepts(const QString& text) const { return static_cast<SheetModel*>(model())->Accepts(text); }

QColor SheetView::TextMark(const QColor& ground) {
  return ground.lightnessF() < 0.5f ? QColor(0xff, 0xb7, 0x4d) : QColor(0x9c, 0x3d, 0x00);
}

void SheetView::reset() {
  QTableView::reset();
  StandAgain();
}

void SheetView::StandAgain() {
  if (model() == nullptr || currentIndex().isValid()) return;
  setCurrentIndex(
      model()->index(std::min(row_, model()->rowCount() - 1), std::min(column_, model()->columnCount() - 1)));
}

void SheetView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (current.isValid()) {
    row_ = current.row();
    column_ = current.column();
    tabbedFrom_ = std::nullopt;
  }
  emit CurrentCellChanged();
}

// The grid has the focus after that, even where another window is active.
void SheetView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, hint);
  if (window()->focusWidget() == editor) setFocus();
}

void SheetView::keyPressEvent(QKeyEvent* event) {
  if (ResizesColumn(*this, *event)) return;
  const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return GoByEnter();
    case Qt::Key_Tab:
      return GoByTab(MoveNext);
    case Qt::Key_Backtab:
      return GoByTab(MovePrevious);
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
      // With Ctrl itself the table would move the current cell alone and leave the selection behind.
      const QScopedValueRollback far(goesFar_, ctrl);
      QKeyEvent plain(QEvent::KeyPress, event->key(), event->modifiers() & ~Qt::ControlModifier);
      return QTableView::keyPressEvent(&plain);
    }
    default:
      break;
  }
  // What is typed over a selection goes to its first cell.
  const QItemSelection selected = selectionModel()->selection();
  const bool types = !event->text().isEmpty() && event->text()[0].isPrint() && !ctrl;
  if (types && selected.size() == 1 && state() != EditingState) setCurrentIndex(selected[0].topLeft());
  QTableView::keyPressEvent(event);
}

QModelIndex SheetView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (!goesFar_) return QTableView::moveCursor(action, modifiers);
  const QModelIndex from = currentIndex();
  switch (action) {
    case MoveUp:
      return BlockEdgeFrom(from, -1, 0);
    case MoveDown:
      return BlockEdgeFrom(from, 1, 0);
    case MoveLeft:
      return BlockEdgeFrom(from, 0, -1);
    case MoveRight:
      return BlockEdgeFrom(from, 0, 1);
    case MoveHome:
      return model()->index(0, 0);
    case MoveEnd: {
      const GridCells& cells = sheet_->Cells();
      const int row = static_cast<int>(std::max<std::size_t>(cells.GridLastRow(), 1)) - 1;
      const int column = static_cast<int>(std::max<std::size_t>(cells.GridLastCol(), 1)) - 1;
      return model()->index(row, std::min(column, model()->columnCount() - 1));
    }
    default:
      return QTableView::moveCursor(action, modifiers);
  }
}

QModelIndex SheetView::BlockEdgeFrom(const QModelIndex& cell, int rows, int columns) const {
  const CellPlace last{static_cast<std::size_t>(model()->rowCount()), static_cast<std::size_t>(model()->columnCount())};
  const CellPlace edge = BlockEdge(
      sheet_->Cells(), {static_cast<std::size_t>(cell.row()) + 1, static_cast<std::size_t>(cell.column()) + 1}, rows,
      columns, last);
  return model()->index(static_cast<int>(edge.Row) - 1, static_cast<int>(edge.Col) - 1);
}

void SheetView::mousePressEvent(QMouseEvent* event) {
  // An entry that is refused keeps the cell, so the click leads nowhere.
  if (CommitEntry()) QTableView::mousePressEvent(event);
}

void SheetView::GoTo(const QModelIndex& cell) {
  setFocus();
  if (cell.isValid()) setCurrentIndex(cell);
}

void SheetView::GoByTab(CursorAction action) {
  const int from = tabbedFrom_.value_or(currentIndex().column());
  GoTo(QTableView::moveCursor(action, Qt::NoModifier));
  tabbedFrom_ = from;
}

void SheetView::GoByEnter() {
  const QModelIndex below = currentIndex().siblingAtRow(currentIndex().row() + 1);
  GoTo(below.siblingAtColumn(tabbedFrom_.value_or(below.column())));
}

}  // namespace quorvex
