#include "results/ui/PlotDialogs.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QListWidget>

#include "core/ui/Controls.h"
#include "results/AvailableGraphs.h"
#include "results/ColumnsPlot.h"
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
      dialog.AddOptions("optnPlotType", "Shown as:", {"&Markers", "&Lines", "Lines &and markers"});

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
  if (available.empty()) {
    user.Refuse(kNoGraphs);
    return std::nullopt;
  }
  SheetDialog dialog(parent, "GraphList", "Select Data");
  QStringList names;
  for (const PlotSeries& series : available) names << QString::fromStdString(series.Style().LegendText);
  auto* all = new QVBoxLayout;
  QListWidget* list = AddList(all, "lstGraphs", "&Data and solutions:", names, QAbstractItemView::ExtendedSelection);
  dialog.Rows()->addRow(all);
  std::vector<PlotSeries> chosen;
  if (!dialog.Run([&] { return Keep(ChosenGraphs(available, SelectedRows(*list), plot), chosen, user); }))
    return std::nullopt;
  return chosen;
}

}  // namespace quorvex
