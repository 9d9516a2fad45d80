#include "results/ui/TableExportDialogs.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>

#include "core/ui/Controls.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

std::optional<TableChoice> AskTableType(QWidget* parent, const TableExport& equations) {
  SheetDialog dialog(parent, "frmTableType", "Table Type");
  auto* group = new QButtonGroup(&dialog);
  constexpr const char* kLetters[] = {"V", "X", "R"};
  for (const std::string& name : equations.TypeNames()) {
    const auto id = group->buttons().size();
    QString text = QString::fromStdString(name);
    text.insert(text.indexOf(kLetters[id]), '&');
    auto* option = Named(new QRadioButton(text, &dialog), qPrintable(QString("optnTableType%1").arg(id)));
    group->addButton(option, static_cast<int>(id));
    dialog.Rows()->addRow(option);
  }
  constexpr auto kRoots = static_cast<int>(TableType::RootAtY);
  QComboBox* variable = nullptr;
  if (equations.Variables() > 1) {
    QStringList names;
    for (const std::string& name : equations.VariableNames()) names << QString::fromStdString(name);
    variable = dialog.AddChoice("cmbVariable", "Roots &along:", names);
    variable->setEnabled(false);
    QObject::connect(group, &QButtonGroup::idToggled, variable, [variable](int id, bool on) {
      if (id == kRoots) variable->setEnabled(on);
    });
  }
  QStringList levels;
  for (const int level : kLimitLevels) levels << QString("%1%").arg(level);
  QComboBox* limits = dialog.AddChoice("cmbLimits", "&Limits of Y:", {"None", "Confidence", "Prediction", "Both"});
  QComboBox* level = dialog.AddChoice("cmbLevel", "L&evel of limits:", levels);
  level->setCurrentIndex(static_cast<int>(kBandLevel));
  level->setEnabled(false);
  QObject::connect(limits, &QComboBox::currentIndexChanged, level, [level](int kind) { level->setEnabled(kind != 0); });
  QObject::connect(group, &QButtonGroup::idToggled, limits, [limits, level](int id, bool on) {
    if (id != kRoots) return;
    limits->setEnabled(!on);
    level->setEnabled(!on && limits->currentIndex() != 0);
  });
  group->button(0)->setChecked(true);
  group->button(0)->setFocus();
  if (!dialog.Run([] { return true; })) return std::nullopt;
  return TableChoice{static_cast<TableType>(group->checkedId()),
                     variable != nullptr ? variable->currentIndex() + 1 : 1,
                     {.Confidence = (limits->currentIndex() & 1) != 0,
                      .Prediction = (limits->currentIndex() & 2) != 0,
                      .Level = static_cast<std::size_t>(level->currentIndex())}};
}

// The fields of one variable, in a row.
struct VariableRow {
  QLineEdit *txtVar, *txtInitialValue, *txtFinalValue, *txtNPoints;

  TableVariable Typed() const {
    return {txtVar->text().toStdString(), txtInitialValue->text().toStdString(), txtFinalValue->text().toStdString(),
            txtNPoints->text().toStdString()};
  }
};

VariableRow AddRow(QGridLayout& grid, QWidget* page, const TableVariable& variable) {
  const int row = grid.rowCount();
  const QString name = QString::fromStdString(variable.Name);
  int column = 0;
  const auto add = [&](const char* object, const QString& accessible, const std::string& text) {
    auto* edit = new QLineEdit(QString::fromStdString(text), page);
    edit->setObjectName(QString(object) + QString::number(row - 1));
    edit->setAccessibleName(accessible);
    edit->setCursorPosition(0);
    grid.addWidget(edit, row, column++);
    return edit;
  };
  VariableRow fields{add("txtVar", "Variable", variable.Name),
                     add("txtInitialValue", "Initial value of " + name, variable.InitialValue),
                     add("txtFinalValue", "Final value of " + name, variable.FinalValue),
                     add("txtNPoints", "Number of points of " + name, variable.NPoints)};
  // It tells which one it is.
  fields.txtVar->setReadOnly(true);
  fields.txtVar->setFocusPolicy(Qt::NoFocus);
  fields.txtVar->setFrame(false);
  QPalette plain = fields.txtVar->palette();
  plain.setColor(QPalette::Base, Qt::transparent);
  fields.txtVar->setPalette(plain);
  fields.txtVar->setMaximumWidth(8 * page->fontMetrics().averageCharWidth());
  fields.txtNPoints->setMaximumWidth(14 * page->fontMetrics().averageCharWidth());
  return fields;
}

std::optional<std::vector<TableAxis>> AskTableVars(QWidget* parent, const TableExport& equations,
                                                   const std::vector<TableVariable>& ranges, Prompter& user) {
  SheetDialog dialog(parent, "frmTableVars", "Table Variables");
  auto* page = new QWidget(&dialog);
  auto* grid = new QGridLayout(page);
  for (int column = 0; const char* heading : {"Variable", "Initial value", "Final value", "Number of points"})
    grid->addWidget(new QLabel(heading, page), 0, column++);
  std::vector<VariableRow> rows;
  for (const TableVariable& range : ranges) rows.push_back(AddRow(*grid, page, range));
  grid->setRowStretch(grid->rowCount(), 1);
  // Twenty variables do not fit on a small screen.
  auto* area = Named(new QScrollArea(&dialog), "variables");
  area->setAccessibleName("Variables of the table");
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(page);
  area->setFocusPolicy(Qt::NoFocus);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  const QSize wanted = page->sizeHint();
  area->setMinimumWidth(wanted.width() + 24);
  area->setMinimumHeight(std::min(wanted.height(), dialog.screen()->availableSize().height() / 2));
  dialog.Rows()->addRow(area);
  dialog.AddNote("To fix a variable to a single value, choose 1 as the number of points.");
  rows.front().txtInitialValue->setFocus();
  rows.front().txtInitialValue->selectAll();

  std::optional<std::vector<TableAxis>> axes;
  dialog.Run([&] {
    std::vector<TableVariable> typed;
    for (const VariableRow& row : rows) typed.push_back(row.Typed());
    Result<std::vector<TableAxis>> read = equations.ReadRanges(typed);
    if (read)
      axes = std::move(*read);
    else
      user.Refuse(read.error());
    return axes.has_value();
  });
  return axes;
}

}  // namespace

std::optional<ExportTable> AskExportTable(QWidget* parent, const TableExport& equations, Prompter& user) {
  const std::optional<TableChoice> choice = AskTableType(parent, equations);
  if (!choice) return std::nullopt;
  std::vector<TableAxis> axes;
  if (const std::vector<TableVariable> ranges = equations.Ranges(*choice); !ranges.empty()) {
    auto asked = AskTableVars(parent, equations, ranges, user);
    if (!asked) return std::nullopt;
    axes = std::move(*asked);
  }
  return equations.Make(*choice, axes, user);
}

}  // namespace quorvex
