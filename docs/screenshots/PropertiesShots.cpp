#include <QCheckBox>
#include <QTabWidget>

#include "Shots.h"
#include "core/ui/MessageBoxPrompter.h"
#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "plot/PlotClass.h"
#include "plot/ui/FieldDialog.h"
#include "plot/ui/PlotProperties.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

void TakeDialogs(const Shots& shots, PlotPage& plot, const QString& name) {
  MessageBoxPrompter user(nullptr);
  plot.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user);
  PlotProperties dialog(plot, shots.Run.Preferences, user, {[] {}, [](const PlotPage&) {}}, nullptr);
  dialog.show();
  auto* pages = dialog.findChild<QTabWidget*>();
  for (int page = 0; page < pages->count(); ++page) {
    pages->setCurrentIndex(page);
    QString title = pages->tabText(page).remove('&').toLower();
    shots.Take(dialog, name + '-' + title.replace(' ', '-'));
  }
  const PlotEntries entries(plot);
  for (const FieldPage& page : entries.Pages)
    for (const FieldGroup& group : page.Groups)
      if (group.Dialog) {
        FieldDialog own(group, entries, user, nullptr);
        own.show();
        shots.Take(own, name + '-' + QString::fromStdString(group.Dialog->Button).mid(3).toLower());
      }
}

template <typename Model>
PlotSeries Solved(const std::string& text, std::vector<std::vector<double>> x, std::vector<double> y, int coefficients,
                  const SeriesStyle& style) {
  auto model = std::make_unique<Model>(LocaleText());
  model->SetID(text, {text});
  SolveData points;
  points.X = std::move(x);
  points.SD = points.sig = std::vector<double>(y.size(), 1);
  points.Y = std::move(y);
  model->SetIC(points);
  for (int i = 1; i <= coefficients; ++i) model->SetValue(i, 1);
  PlotSeries series(std::move(model));
  series.Style() = style;
  return series;
}

PlotSeries Data(std::vector<std::vector<double>> x, std::vector<double> y) {
  DataClass data;
  data.GenerateTable(std::move(x), std::move(y));
  return {std::move(data), {.LegendText = "Input Data", .DisplayLine = false, .DisplayMarker = true}};
}

}  // namespace

// The properties of plots.
void TakeProperties(const Shots& shots) {
  const std::vector<double> x = {0, 1, 2, 3, 4, 5}, y = {1, 2.2, 2.9, 4.1, 5, 6.1};
  PlotClass plot(shots.Run.Preferences);
  plot.PlotTitle = "Velocity of an enzyme";
  plot.X.AxisTitle = "Concentration (mM)";
  plot.Y.AxisTitle = "v (s~>-1~>)";
  plot.FootNoteText = "Treated with puromycin\r\nfive runs";
  plot.PlotData.push_back(Data({x}, y));
  plot.PlotData.push_back(Solved<EqClass>("a*x+b", {x}, y, 2, {.LegendText = "a*x+b", .DrawColor = 0xC00000}));
  TakeDialogs(shots, plot, "properties-2d");

  const std::vector<double> x1 = {0, 1, 2, 0, 1, 2}, x2 = {0, 0, 0, 1, 1, 1};
  PlotClass3D space(shots.Run.Preferences);
  space.PlotData.push_back(Data({x1, x2}, y));
  space.PlotData.push_back(Solved<MvClass>("a*x1+b*x2", {x1, x2}, y, 2, {.LegendText = "a*x1+b*x2", .ShadeMesh = 1}));
  TakeDialogs(shots, space, "properties-3d");
}

}  // namespace quorvex
