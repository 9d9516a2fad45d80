#include <QAction>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>

#include "Shots.h"
#include "core/ui/MessageBoxPrompter.h"
#include "core/ui/frmTemplatePrompt.h"
#include "files/PlotTemplateKeys.h"
#include "files/ui/Dataplot.h"
#include "files/ui/frmPltTemplate.h"
#include "files/ui/frmTemplateEdit.h"
#include "plot/PlotClass.h"
#include "plot/ui/PlotPreview.h"
#include "plot/ui/Printfrm.h"

namespace quorvex {

// A plot's window, its menus and the dialogs of templates.
void TakePlotWindow(const Shots& shots) {
  MessageBoxPrompter user(nullptr);
  auto plot = std::make_unique<PlotClass>(shots.Run.Preferences);
  DataClass data;
  data.GenerateTable({{1, 2, 3, 4, 5, 6}}, {1.9, 4.2, 5.8, 8.4, 9.7, 12.3});
  plot->PlotData.emplace_back(std::move(data), SeriesStyle{.LegendText = "Input Data", .DisplayMarker = true});
  plot->PlotTitle = "Calibration";
  auto document = NewPlotDocument(std::move(plot), shots.Run.Preferences, user);
  if (!document) return;
  Dataplot window(std::move(*document),
                  {.Choose = [](QWidget*, const PlotPage&) { return std::optional<std::vector<PlotSeries>>(); },
                   .Graphs = {},
                   .New = {}});
  window.resize(760, 520);
  window.show();
  window.findChild<QAction*>("ShowXMajorGrids")->trigger();
  window.findChild<QAction*>("ShowYMajorGrids")->trigger();
  window.findChild<QAction*>("mnuEditUndo")->trigger();
  auto* bar = window.findChild<QMenuBar*>();
  const char* const names[] = {"plot", "edit", "format"};
  for (int i = 0; const char* name : names) {
    QAction* entry = bar->actions()[i++];
    bar->setActiveAction(entry);
    QApplication::processEvents();
    QPixmap picture = window.grab();
    QPainter(&picture).drawPixmap(bar->actionGeometry(entry).bottomLeft(), entry->menu()->grab());
    picture.save(shots.Folder + "/plot-menu-" + name + shots.Suffix + ".png");
    entry->menu()->close();
  }

  PlotPreview preview(window.Plot(), shots.Run.Preferences, user, &window);
  preview.Refresh();
  preview.show();
  shots.Take(preview, "plot-preview");
  preview.hide();

  Printfrm printing(&window);
  printing.Show("Printing page 1 of 1 on Laser");
  shots.Take(printing, "plot-printing");
  printing.hide();

  QTimer::singleShot(50, [&] {
    auto* form = QApplication::activeModalWidget();
    shots.Take(*form, "plot-template-settings");
    form->close();
  });
  ChooseTemplateGroups(window.Plot(), &window);

  const TemplateSelection all = [&] {
    const std::vector<std::string> groups = TemplateFormatOf(window.Plot()).Groups();
    return TemplateSelection(groups.begin(), groups.end());
  }();
  frmTemplateEdit edit("Template.qv2", TemplateText(window.Plot(), all), user, &window);
  edit.show();
  shots.Take(edit, "plot-template-edit");
  edit.hide();

  frmTemplatePrompt prompt("Enter the plot background color (R,G,B):", "(255, 255, 255)", &window);
  prompt.show();
  shots.Take(prompt, "plot-template-prompt");
}

}  // namespace quorvex
