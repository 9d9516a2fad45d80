#include "desktop/SolvedListPanel.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "core/NumberText.h"
#include "core/ui/NamesApart.h"
#include "core/ui/TableCells.h"
#include "solve/SolveChoice.h"

namespace quorvex {
namespace {

class SolvedListView : public QTableView {
 public:
  using QTableView::QTableView;

 protected:
  // Marks stand behind the names, which begin below each other with and without one.
  void initViewItemOption(QStyleOptionViewItem* option) const override {
    QTableView::initViewItemOption(option);
    option->decorationPosition = QStyleOptionViewItem::Right;
  }

  // Enter is the user's double click, on every platform style.
  void keyPressEvent(QKeyEvent* event) override {
    if (ResizesColumn(*this, *event)) return;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) return QTableView::keyPressEvent(event);
    if (currentIndex().isValid()) emit doubleClicked(currentIndex());
  }
};

}  // namespace

void SolvedListModel::Show(const std::vector<SolvedItem>& items, int sortIndex, char decimalSeparator) {
  beginResetModel();
  keyName_ = QString::fromStdString(std::string(SortKeyName(sortIndex)));
  rows_.clear();
  marks_.clear();
  hasRanking_ = IsRankingKey(sortIndex);
  const std::vector<RankingText> rankings =
      hasRanking_ ? RankingTexts(items, decimalSeparator) : std::vector<RankingText>();
  for (const SolvedItem& item : items) {
    Mark& mark = marks_.emplace_back(MarkOf(item));
    constexpr int kDigits = 7;
    const std::size_t number = rows_.size();
    auto& row = rows_.emplace_back();
    if (item.Model != nullptr) row[0] = QString::number(number + 1);
    row[1] = QString::fromStdString(item.Name());
    row[2] = QString::fromStdString(SortKeyText(item, sortIndex, decimalSeparator, kDigits));
    if (number >= rankings.size()) continue;
    row[3] = QString::fromStdString(rankings[number].Weight);
    row[4] = QString::fromStdString(rankings[number].Group);
    if (!mark.Text.isEmpty()) mark.Text += '\n';
    mark.Text += QString::fromStdString(rankings[number].Told);
  }
  endResetModel();
}

// An unchanged merit function may well be the smallest there is.
SolvedListModel::Mark SolvedListModel::MarkOf(const SolvedItem& item) {
  QStringList lines;
  auto sign = QStyle::SP_MessageBoxInformation;
  if (const std::string by = item.FoundByText(); !by.empty()) {
    lines << "Found by trying harder: " + QString::fromStdString(by) + ".";
    sign = QStyle::SP_FileDialogContentsView;
  }
  if (item.Model != nullptr && item.Model->Loss != LossKind::Squares)
    lines << QString("Residuals count as %1, with a scale of %2.")
                 .arg(kLossTexts[static_cast<std::size_t>(item.Model->Loss)])
                 .arg(QString::fromStdString(GeneralNumber(item.Model->LossScale)));
  if (const std::string end(item.SearchEndText()); !end.empty()) {
    lines << "The search ended " + QString::fromStdString(end) + ".";
    if (item.Model->Ended != SearchEnd::Unchanged) sign = QStyle::SP_MessageBoxWarning;
  }
  return {lines.join('\n'), !lines.isEmpty(), sign};
}

int SolvedListModel::RowOf(const QString& name) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const auto& row) { return row[1] == name; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int SolvedListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SolvedListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : hasRanking_ ? 5 : 3; }

QVariant SolvedListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const QString& text = rows_[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
  const Mark& mark = marks_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return text;
    case Qt::ToolTipRole:
      return mark.Text.isEmpty() ? text : text + "\n" + mark.Text;
    case Qt::DecorationRole:
      if (index.column() != 1 || !mark.HasSign) return {};
      return QApplication::style()->standardIcon(mark.Sign);
    case Qt::AccessibleDescriptionRole:
      return mark.Text.isEmpty() ? PlaceOfCell(index) : PlaceOfCell(index) + ". " + mark.Text;
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter | (index.column() == 1 ? Qt::AlignLeft : Qt::AlignRight));
    default:
      return {};
  }
}

QVariant SolvedListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  return std::array{QString("Rank"), QString("Model"), keyName_, QString("Weight"),
                    QString("Group")}[static_cast<std::size_t>(section)];
}

SolvedListPanel::SolvedListPanel(QWidget* parent)
    : QGroupBox(parent),
      model_(new SolvedListModel(this)),
      SolvedList(new SolvedListView(this)),
      cmbSortBy(new QComboBox(this)),
      none_(new QLabel(kNothingSolvedHint, this)) {
  setObjectName("solutions");
  none_->setObjectName("none");
  none_->setWordWrap(true);
  none_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  SolvedList->setObjectName("SolvedList");
  SolvedList->setAccessibleName("Solutions");
  SolvedList->setModel(model_);
  SolvedList->setSelectionBehavior(QAbstractItemView::SelectRows);
  SolvedList->setEditTriggers(QAbstractItemView::NoEditTriggers);
  SolvedList->setTabKeyNavigation(false);
  SolvedList->setWordWrap(false);
  SolvedList->setItemDelegateForColumn(1, new NameDelegate(SolvedList));
  SolvedList->verticalHeader()->hide();
  SolvedList->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  SolvedList->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  SolvedList->horizontalHeader()->setAccessibleName("Column headers");
  SolvedList->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
  SolvedList->horizontalHeader()->setHighlightSections(false);
  const int character = fontMetrics().horizontalAdvance('0');
  SolvedList->setColumnWidth(0, fontMetrics().horizontalAdvance("Rank") + 2 * character);
  SolvedList->setColumnWidth(2, fontMetrics().horizontalAdvance("1.234567E+10") + 2 * character);

  cmbSortBy->setObjectName("cmbSortBy");
  cmbSortBy->setAccessibleName("Sort by");
  for (int key = 1; key <= static_cast<int>(kSortKeys.size()); ++key)
    cmbSortBy->addItem(QString::fromStdString(std::string(SortKeyName(key))), key);
  auto* label = new QLabel("Sort &by:", this);
  label->setBuddy(cmbSortBy);
  auto* choice = new QHBoxLayout;
  choice->addWidget(label);
  choice->addWidget(cmbSortBy);
  choice->addStretch();
  auto* column = new QVBoxLayout(this);
  column->addLayout(choice);
  column->addWidget(SolvedList, 1);
  column->addWidget(none_, 1);

  connect(SolvedList, &QTableView::doubleClicked, this, [this](const QModelIndex& at) { emit RowActivated(at.row()); });
  // Only what the user chooses: Show sets the box, too.
  connect(cmbSortBy, &QComboBox::activated, this, [this] { emit SortChosen(cmbSortBy->currentData().toInt()); });
  Show({}, kSortByRSS, '.');
}

void SolvedListPanel::Show(const std::vector<SolvedItem>& items, int sortIndex, char decimalSeparator) {
  const int row = SolvedList->currentIndex().row();
  const QString name = model_->index(row, 1).data().toString();
  setTitle(QString::fromStdString(SolutionsCaption(sortIndex)));
  cmbSortBy->setCurrentIndex(std::max(cmbSortBy->findData(sortIndex), 0));
  const int columns = model_->columnCount();
  model_->Show(items, sortIndex, decimalSeparator);
  // Columns that were not there have no width of the user's own.
  for (int column = columns; column < model_->columnCount(); ++column)
    SolvedList->setColumnWidth(column,
                               fontMetrics().horizontalAdvance("Weight") + 2 * fontMetrics().averageCharWidth());
  SolvedList->setVisible(!items.empty());
  none_->setVisible(items.empty());
  // The same solution as before, or what is in its place now.
  const int same = model_->RowOf(name);
  SetCurrentRow(same >= 0 ? same : std::clamp(row, 0, std::max(model_->rowCount() - 1, 0)));
}

std::vector<int> SolvedListPanel::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : SolvedList->selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void SolvedListPanel::SetCurrentRow(int row) {
  if (row < model_->rowCount()) SolvedList->setCurrentIndex(model_->index(row, 0));
}

}  // namespace quorvex
