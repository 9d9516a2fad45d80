#include "sheet/ui/TransformDialogs.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <array>
#include <vector>

#include "sheet/CombineColumns.h"
#include "sheet/DataSweep.h"
#include "sheet/SortRows.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

// The page of one method of the Fill dialog: the texts it asks for, each with the field that takes it.
struct SweepText {
  const char *Name, *Label;
  std::string DataSweep::*Field;
};
struct SweepPage {
  const char* Method;
  std::vector<SweepText> Texts;
};

const std::array<SweepPage, 4>& SweepPages() {
  static const std::array<SweepPage, 4> pages{{
      {"Co&nstant", {{"ConstantText", "&Value:", &DataSweep::ConstantText}}},
      {"&Linear",
       {{"LinStart", "St&arting value:", &DataSweep::LinStart},
        {"LinIncrement", "&Increment:", &DataSweep::LinIncrement}}},
      {"&Function of a generated X",
       {{"FuncText", "E&quation in X:", &DataSweep::FuncText},
        {"FuncStart", "X st&arting value:", &DataSweep::FuncStart},
        {"FuncIncrement", "X &increment:", &DataSweep::FuncIncrement}}},
      {"F&unction of a column", {{"ColumnFunc", "E&quation in X:", &DataSweep::ColumnFunc}}},
  }};
  return pages;
}

// The number of the column that X is taken from, with the column's header beside it.
QSpinBox* AddColumnNumber(SheetDialog& dialog, QFormLayout* rows, const DataSheet& sheet) {
  const QStringList names = ColumnNames(sheet, 1, sheet.ColumnCount());
  auto* number = new QSpinBox(&dialog);
  auto* name = new QLabel(names.first(), &dialog);
  number->setObjectName("UpDnXCol");
  number->findChild<QLineEdit*>()->setObjectName("ColumnText");
  number->setRange(1, static_cast<int>(names.size()));
  number->setAccessibleName("Column number of X");
  name->setTextFormat(Qt::PlainText);
  QObject::connect(number, &QSpinBox::valueChanged, name, [=](int col) { name->setText(names[col - 1]); });
  auto* row = new QHBoxLayout;
  row->addWidget(number);
  row->addWidget(name, 1);
  auto* label = new QLabel("Column number of &X:", &dialog);
  label->setBuddy(number);
  rows->addRow(label, row);
  return number;
}

// The three keys of the Sort dialog; entry 0 of a key's list leaves it unused.
struct KeyRow {
  QComboBox* Column;
  QRadioButton* Descend;
};

KeyRow AddSortKey(SheetDialog& dialog, int number, const QStringList& columns) {
  constexpr struct {
    const char *Label, *Ascend, *Descend, *Name;
  } kTexts[] = {{"Sort &by:", "&Ascending", "&Descending", "First key"},
                {"&Then by:", "A&scending", "D&escending", "Second key"},
                {"T&hen by:", "Asce&nding", "Descend&ing", "Third key"}};
  const auto& texts = kTexts[number - 1];
  const QString digit = QString::number(number), name = texts.Name;
  QComboBox* column = dialog.AddChoice(qPrintable("SortKey" + digit), texts.Label, columns);
  column->setAccessibleName(name);
  auto* directions = new QWidget(&dialog);
  auto* ascend = new QRadioButton(texts.Ascend, directions);
  auto* descend = new QRadioButton(texts.Descend, directions);
  ascend->setObjectName("Ascend" + digit);
  ascend->setAccessibleName(name + " ascending");
  ascend->setChecked(true);
  descend->setObjectName("Descend" + digit);
  descend->setAccessibleName(name + " descending");
  auto* row = new QHBoxLayout(directions);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(ascend);
  row->addWidget(descend);
  row->addStretch();
  dialog.Rows()->addRow(QString(), directions);
  return {column, descend};
}

}  // namespace

bool ShowDataSweep(const SheetEdit& edit, QWidget* parent) {
  std::optional<DataSweep> sweep = EditFill(edit);
  if (!sweep) return false;
  const QString header = ColumnNames(edit.Sheet, sweep->SelCol, sweep->SelCol).first();
  SheetDialog dialog(parent, "DataSweep", "Fill Column " + header);
  QLineEdit* start = dialog.AddText("SelRow1", "&Start row:", QString::fromStdString(sweep->SelRow1));
  QLineEdit* end = dialog.AddText("SelRow2", "&End row:", QString::fromStdString(sweep->SelRow2));

  auto* methods = new QGroupBox("Fill with", &dialog);
  auto* choices = new QVBoxLayout(methods);
  auto* group = new QButtonGroup(methods);
  for (const SweepPage& page : SweepPages()) {
    auto* method = new QRadioButton(page.Method, methods);
    const int id = static_cast<int>(group->buttons().size());
    method->setObjectName("MethodOption" + QString::number(id));
    group->addButton(method, id);
    choices->addWidget(method);
  }
  group->button(0)->setChecked(true);

  auto* pages = new QStackedWidget(&dialog);
  std::vector<std::pair<QLineEdit*, std::string DataSweep::*>> texts;
  QFormLayout* rows = nullptr;
  for (const SweepPage& page : SweepPages()) {
    auto* sheet = new QWidget(pages);
    rows = new QFormLayout(sheet);
    rows->setContentsMargins(0, 0, 0, 0);
    for (const SweepText& text : page.Texts)
      texts.emplace_back(dialog.AddText(rows, text.Name, text.Label), text.Field);
    pages->addWidget(sheet);
  }
  QSpinBox* column = AddColumnNumber(dialog, rows, edit.Sheet);
  QObject::connect(group, &QButtonGroup::idClicked, pages, &QStackedWidget::setCurrentIndex);
  dialog.Rows()->addRow(methods);
  dialog.Rows()->addRow(pages);
  texts.front().first->setFocus();

  return dialog.Run([&] {
    sweep->SelRow1 = start->text().toStdString();
    sweep->SelRow2 = end->text().toStdString();
    sweep->MethodOption = static_cast<SweepMethod>(group->checkedId());
    for (const auto& [text, field] : texts) (*sweep).*field = text->text().toStdString();
    sweep->ColumnText = column->text().toStdString();
    return sweep->Apply(edit);
  });
}

bool ShowFactor(const SheetEdit& edit, QWidget* parent, FactorMode mode) {
  const std::optional<CellRange> range = FactorRange(edit);
  if (!range) return false;
  SheetDialog dialog(parent, "Factor", mode == FactorMode::Scale ? "Scale" : "Translate");
  QLineEdit* ScaleText = dialog.AddText("ScaleText", '&' + QString::fromStdString(FactorPrompt(mode)));
  return dialog.Run([&] { return ApplyFactor(edit, *range, mode, ScaleText->text().toStdString()); });
}

bool ShowSort(const SheetEdit& edit, QWidget* parent) {
  const std::optional<CellRange> range = SortRange(edit);
  if (!range) return false;
  SheetDialog dialog(parent, "Sort", "Sort");
  const QStringList columns = QStringList("(none)") + ColumnNames(edit.Sheet, range->FirstCol, range->LastCol);
  std::array<KeyRow, 3> rows{};
  for (int i = 0; i < 3; ++i) rows[static_cast<std::size_t>(i)] = AddSortKey(dialog, i + 1, columns);
  rows[0].Column->setCurrentIndex(1);
  return dialog.Run([&] {
    SortKeys keys;
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const int entry = rows[i].Column->currentIndex();
      keys[i].Col = entry == 0 ? 0 : range->FirstCol + static_cast<std::size_t>(entry) - 1;
      keys[i].Ascend = !rows[i].Descend->isChecked();
    }
    return Sort(edit, *range, keys);
  });
}

bool ShowCombine(const SheetEdit& edit, QWidget* parent) {
  if (!CombineRows(edit)) return false;
  SheetDialog dialog(parent, "frmCombine", "Combine Columns");
  const QStringList columns = ColumnNames(edit.Sheet, 1, edit.Sheet.ColumnCount());
  QStringList operations;
  for (const CombineOperation& operation : CombineOperations())
    operations << QString::fromUtf8(operation.Text.data(), static_cast<qsizetype>(operation.Text.size()));
  QComboBox* cmbFirstCol = dialog.AddChoice("cmbFirstCol", "&First column:", columns);
  QComboBox* cmbOperation = dialog.AddChoice("cmbOperation", "Opera&tion:", operations);
  QComboBox* cmbSecondCol = dialog.AddChoice("cmbSecondCol", "&Second column:", columns);
  QComboBox* cmbResultCol = dialog.AddChoice("cmbResultCol", "&Result column:", columns);
  cmbSecondCol->setCurrentIndex(1);
  cmbResultCol->setCurrentIndex(static_cast<int>(edit.Selection.front().FirstCol) - 1);
  const auto place = [](const QComboBox* box) { return static_cast<std::size_t>(box->currentIndex()); };
  return dialog.Run([&] {
    const CombineColumns combine{place(cmbFirstCol) + 1, place(cmbSecondCol) + 1, place(cmbResultCol) + 1,
                                 place(cmbOperation)};
    return combine.Apply(edit);
  });
}

bool ShowZeroSelect(const SheetEdit& edit, QWidget* parent, ZeroSign sign) {
  SheetDialog dialog(parent, "frmZeroSelect", "Zero Data");
  dialog.AddNote(sign == ZeroSign::Negative ? "Set the negative values of these columns to 0:"
                                            : "Set the positive values of these columns to 0:");
  // All variables at a glance: 21 of them make three columns of boxes.
  constexpr int kRows = 8;
  auto* grid = new QGridLayout;
  std::vector<QCheckBox*> ckZero;
  for (const QString& name : ColumnNames(edit.Sheet, 1, edit.Sheet.IndependentVariables + 1)) {
    const int i = static_cast<int>(ckZero.size());
    // The first nine by their digit, the others by arrow keys and Tab as all.
    auto* check = new QCheckBox(
        (i < 9 ? QString("&%1  ") : QString("%1  ")).arg(i + 1) + QString(name).replace('&', "&&"), &dialog);
    check->setObjectName("ckZero" + QString::number(i + 1));
    grid->addWidget(check, i % kRows, i / kRows);
    ckZero.push_back(check);
  }
  dialog.Rows()->addRow(grid);
  return dialog.Run([&] {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < ckZero.size(); ++i)
      if (ckZero[i]->isChecked()) columns.push_back(i + 1);
    return ZeroData(edit, sign, columns);
  });
}

}  // namespace quorvex
