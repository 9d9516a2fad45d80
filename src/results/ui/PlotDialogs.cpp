#include "results/ui/PlotDialogs.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QStackedWidget>

#include "core/ui/Controls.h"
#include "results/AvailableGraphs.h"
#include "results/ColumnsPlot.h"
#include "results/EquationPlot.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

// A list over the whole width, or a part of it, with its label above.
QListWidget* AddList(QBoxLayout* place, const char* name, const QString& label, const QStringList& entries,
                     QAbstractItemView::SelectionMode mode) {
  auto* list = Named(new QListWidget, name);
  list->addItems(entries);
  list->setSelectionMode(mode);
  list->setAccessibleName(QString(label).remove('&').remove(':'));
  auto* rows = new QVBoxLayout;
  rows->addWidget(LabelFor(list, label));
  rows->addWidget(list);
  place->addLayout(rows);
  return list;
}

std::vector<std::size_t> SelectedRows(const QListWidget& list) {
  std::vector<std::size_t> rows;
  for (int row = 0; row < list.count(); ++row)
    if (list.item(row)->isSelected()) rows.push_back(static_cast<std::size_t>(row));
  return rows;
}

// Options beside each other, named NAME0, NAME1 and so on, of which the first is chosen.
QButtonGroup* AddOptions(SheetDialog& dialog, const QString& name, const QString& label, const QStringList& options) {
  auto* group = new QButtonGroup(&dialog);
  auto* row = new QHBoxLayout;
  for (const QString& text : options) {
    const int id = static_cast<int>(group->buttons().size());
    auto* option = new QRadioButton(text, &dialog);
    option->setObjectName(name + QString::number(id));
    group->addButton(option, id);
    row->addWidget(option);
  }
  row->addStretch();
  group->button(0)->setChecked(true);
  dialog.Rows()->addRow(label, row);
  return group;
}

// Keeps what is there; refused where that is a failure.
template <typename T, typename To>
bool Keep(Result<T> result, To& to, Prompter& user) {
  if (!result) {
    user.Refuse(result.error());
    return false;
  }
  to = std::move(*result);
  return true;
}

// The fields of a range, as the dialog of equations has them for each variable.
struct RangeFields {
  QLineEdit *Min, *Max, *Divisions;

  EquationPlot::Range Texts() const {
    return {Min->text().toStdString(), Max->text().toStdString(), Divisions->text().toStdString()};
  }
};

RangeFields AddRange(SheetDialog& dialog, QFormLayout* rows, const QString& variable, const QString& points,
                     const std::array<const char*, 3>& letters) {
  const auto add = [&](const char* name, const QString& what, const char* letter, const QString& text) {
    QString label = variable + ' ' + what + ':';
    label.insert(label.indexOf(letter), '&');
    return dialog.AddText(rows, qPrintable("txt" + variable + name), label, text);
  };
  return {add("Min", "Min", letters[0], "0"), add("Max", "Max", letters[1], "1"),
          add("Divisions", "Divisions", letters[2], points)};
}

}  // namespace

std::unique_ptr<PlotPage> ShowPlotSelect(QWidget* parent, const DataSheet& sheet, const Settings& settings,
                                         const LocaleText& locale, Prompter& user) {
  SheetDialog dialog(parent, "frmPlotSelect", "Plot Columns");
  const QStringList columns = ColumnNames(sheet, 1, sheet.ColumnCount());
  auto* lists = new QHBoxLayout;
  // The list of the horizontal axis begins with the rows, as columns count from 1.
  QListWidget* lstX = AddList(lists, "lstX", "&Horizontal axis (one or more):", QStringList("Row") + columns,
                              QAbstractItemView::ExtendedSelection);
  QListWidget* lstY = AddList(lists, "lstY", "&Vertical axis:", columns, QAbstractItemView::SingleSelection);
  lstX->setCurrentRow(1);
  lstY->setCurrentRow(static_cast<int>(sheet.IndependentVariables));
  dialog.Rows()->addRow(lists);
  const QButtonGroup* type =
      AddOptions(dialog, "optnPlotType", "Shown as:", {"&Markers", "&Lines", "Lines &and markers"});

  std::unique_ptr<PlotPage> plot;
  dialog.Run([&] {
    ColumnsPlot chosen;
    if (const auto rows = SelectedRows(*lstY); !rows.empty()) chosen.Vertical = rows.front() + 1;
    chosen.Horizontal = SelectedRows(*lstX);
    chosen.Type = static_cast<PlotType>(type->checkedId());
    return Keep(PageOf(chosen.Make(sheet, settings, locale)), plot, user);
  });
  return plot;
}

std::unique_ptr<PlotPage> ShowPlotEquation(QWidget* parent, const Settings& settings, const LocaleText& locale,
                                           Prompter& user) {
  SheetDialog dialog(parent, "frmPlotEquation", "Plot Equation");
  QButtonGroup* type = AddOptions(dialog, "optnType", "Kind:", {"&2D, in X", "&3D, in X1 and X2"});
  auto* pages = new QStackedWidget(&dialog);
  const auto page = [&](const char* name, const QString& label) {
    auto* rows = new QFormLayout(pages->widget(pages->addWidget(new QWidget(pages))));
    rows->setContentsMargins(0, 0, 0, 0);
    QLineEdit* equation = dialog.AddText(rows, name, label);
    equation->setMinimumWidth(equation->fontMetrics().averageCharWidth() * 48);
    return std::pair(rows, equation);
  };
  const auto [rows2D, txt2D] = page("txt2D", "&Y =");
  const RangeFields x =
      AddRange(dialog, rows2D, "X", QString::number(settings.Integer("pointsperplot")), {"n", "a", "D"});
  const auto [rows3D, txt3D] = page("txt3D", "&Y =");
  const RangeFields x1 = AddRange(dialog, rows3D, "X1", "30", {"M", "a", "D"}),
                    x2 = AddRange(dialog, rows3D, "X2", "30", {"n", "x", "v"});
  QObject::connect(type, &QButtonGroup::idClicked, pages, &QStackedWidget::setCurrentIndex);
  dialog.Rows()->addRow(pages);
  txt2D->setFocus();

  std::unique_ptr<PlotPage> plot;
  dialog.Run([&, txt2D = txt2D, txt3D = txt3D] {
    const EquationPlot equation{.ThreeD = type->checkedId() == 1,
                                .Txt2D = txt2D->text().toStdString(),
                                .Txt3D = txt3D->text().toStdString(),
                                .X = x.Texts(),
                                .Plane = {x1.Texts(), x2.Texts()}};
    return Keep(equation.Make(settings, locale), plot, user);
  });
  return plot;
}

std::optional<std::size_t> ShowScatterType(QWidget* parent, const DataSheet& sheet) {
  SheetDialog dialog(parent, "frmScatterType", "Plot Residuals");
  QStringList types;
  for (const std::string& type : ScatterTypes(sheet)) types << QString::fromStdString(type);
  const QComboBox* type = dialog.AddChoice("cmbScatterType", "Show residuals &against:", types);
  if (!dialog.Run([] { return true; })) return std::nullopt;
  return static_cast<std::size_t>(type->currentIndex());
}

std::optional<std::vector<PlotSeries>> ChooseGraphs(QWidget* parent, Project& project, const PlotPage& plot,
                                                    const Settings& settings, Prompter& user) {
  const std::vector<PlotSeries> available = AvailableGraphs(project, plot, settings);
  SheetDialog dialog(parent, "GraphList", "Select Data");
  QStringList names;
  for (const PlotSeries& series : available) names << QString::fromStdString(series.Style().LegendText);
  auto* all = new QVBoxLayout;
  const QListWidget* list =
      AddList(all, "lstGraphs", "&Data and solutions:", names, QAbstractItemView::ExtendedSelection);
  dialog.Rows()->addRow(all);
  std::vector<PlotSeries> chosen;
  if (!dialog.Run([&] { return Keep(ChosenGraphs(available, SelectedRows(*list), plot), chosen, user); }))
    return std::nullopt;
  return chosen;
}

}  // namespace quorvex
