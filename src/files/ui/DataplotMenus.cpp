// The menus and buttons of a plot's window.

#include <QActionGroup>
#include <QMenuBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "core/RecentFiles.h"
#include "core/ui/RecentMenu.h"
#include "files/ui/Dataplot.h"
#include "plot/ui/PlotBar.h"

namespace quorvex {

QAction* Dataplot::Add(QMenu& menu, const char* name, const QString& text, const QList<QKeySequence>& keys,
                       void (Dataplot::*verb)()) {
  auto* action = new QAction(text, this);
  action->setObjectName(name);
  action->setShortcuts(keys);
  connect(action, &QAction::triggered, this, verb);
  menu.addAction(action);
  verbs_ << action;
  return action;
}

void Dataplot::MakeMenus() {
  auto* menus = new QMenuBar(this);
  layout()->setMenuBar(menus);
  MakePlotMenu(*menus);
  MakeEditMenu(*menus);
  MakeFormatMenu(*menus);
  MakeViewMenu(*menus);
}

void Dataplot::MakePlotMenu(QMenuBar& menus) {
  QMenu& plot = *menus.addMenu(tr("&Plot"));
  MakeNewMenu(plot);
  Add(plot, "mnuPlotOpen", tr("&Open..."), {QKeySequence::Open}, &Dataplot::PlotOpen);
  QAction* close = plot.addAction(tr("C&lose"), QKeySequence("Ctrl+W"), this, &QWidget::close);
  close->setObjectName("mnuPlotClose");
  plot.addSeparator();
  if (source_.Choose) Add(plot, "mnuPlotAdd", tr("A&dd from Project..."), {}, &Dataplot::PlotAdd);
  Add(plot, "mnuPlotImport", tr("&Import..."), {}, &Dataplot::PlotImport);
  QMenu& exports = *plot.addMenu(tr("&Export"));
  constexpr std::pair<ExportDelimiter, const char*> kExports[] = {{ExportDelimiter::Comma, "&Comma Delimited..."},
                                                                  {ExportDelimiter::Tab, "&Tab Delimited..."},
                                                                  {ExportDelimiter::Space, "&Space Delimited..."}};
  for (int i = 0; const auto& [delimiter, text] : kExports) {
    QAction* action = exports.addAction(tr(text), this, [this, how = delimiter] { document_.Export(how); });
    action->setObjectName(QString("mnuPlotExportItem%1").arg(i++));
    verbs_ << action;
  }
  plot.addSeparator();
  Add(plot, "mnuPlotSave", tr("&Save"), {QKeySequence::Save}, &Dataplot::Save);
  Add(plot, "mnuPlotSaveAs", tr("Save &As..."), {QKeySequence("Ctrl+Shift+S")}, &Dataplot::SaveAs);
  Add(plot, "mnuPlotSaveCopyAs", tr("Save Cop&y As..."), {}, &Dataplot::SaveCopyAs);
  plot.addSeparator();
  Add(plot, "mnuPlotPrintSetup", tr("Page Set&up..."), {}, &Dataplot::PageSetupCommand);
  QAction* print = Verb("mnuPlotPrint");
  print->setShortcut(QKeySequence::Print);
  Add(plot, "mnuPlotPrintPreview", tr("Print Pre&view..."), {}, &Dataplot::PrintPreview);
  plot.addAction(print);
}

void Dataplot::MakeNewMenu(QMenu& plot) {
  QMenu& fresh = *plot.addMenu(tr("&New"));
  for (int i = 0; const PlotSource::NewPlot& entry : source_.New) {
    QAction* action = fresh.addAction(tr(entry.Text), this, entry.Make);
    action->setObjectName(QString("mnuPlotNewItem%1").arg(i++));
    verbs_ << action;
  }
  Add(fresh, "mnuPlotNewEquation", tr("&Equation..."), {}, &Dataplot::PlotNewEquation);
}

void Dataplot::MakeEditMenu(QMenuBar& menus) {
  QMenu& edit = *menus.addMenu(tr("&Edit"));
  Add(edit, "mnuEditUndo", {}, {QKeySequence("Ctrl+Z")}, &Dataplot::Undo);
  Add(edit, "mnuEditRedo", {}, {QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")}, &Dataplot::Redo);
  edit.addSeparator();
  QAction* copy = Verb("mnuPlotClipItem1");
  copy->setShortcut(QKeySequence::Copy);
  QAction* metafile = Verb("mnuPlotClipItem0");
  metafile->setShortcut(QKeySequence("Ctrl+Shift+C"));
  edit.addActions({copy, metafile});
}

void Dataplot::MakeFormatMenu(QMenuBar& menus) {
  QMenu& format = *menus.addMenu(tr("&Format"));
  Add(format, "mnuPlotFormatProperties", tr("&Properties..."), {QKeySequence("Ctrl+1")}, &Dataplot::FormatProperties);
  format.addSeparator();
  format.addActions(view_->LookingActions());
  format.addSeparator();
  format.addActions(view_->MovingActions());
  format.addSeparator();
  QMenu& templates = *format.addMenu(tr("&Templates"));
  Add(templates, "mnuPlotTemplateApply", tr("Apply &Template..."), {}, &Dataplot::TemplateApply);
  auto* recent = new RecentMenu(tr("Apply &Recent"), kRecentTemplates, document_.Preferences(), &templates);
  recent->setObjectName("mnuPlotTemplateRecent");
  connect(recent, &RecentMenu::Chosen, this,
          [this](const QString& file) { Show(document_.ApplyTemplate(file.toStdString())); });
  Add(templates, "mnuPlotTemplateEdit", tr("&Edit..."), {}, &Dataplot::TemplateEdit);
  Add(templates, "mnuPlotTemplateSave", tr("&Save..."), {}, &Dataplot::TemplateSave);
  format.addSeparator();
  Add(format, "mnuPlotCalc", tr("&Data Calculator..."), {}, &Dataplot::ShowCalculator);
}

void Dataplot::MakeViewMenu(QMenuBar& menus) { AddSwitches(*menus.addMenu(tr("&View"))); }

void Dataplot::AddSwitches(QMenu& menu) {
  QMenu* choices = nullptr;  // the menu of the entries of which one is on
  QActionGroup* oneOf = nullptr;
  for (const PlotSwitch& entry : Plot().Switches()) {
    if (entry.Name == nullptr) {
      menu.addSeparator();
      continue;
    }
    if (entry.Applies != nullptr && !entry.Applies(Plot())) continue;
    if (entry.Menu != nullptr && (choices == nullptr || choices->title() != entry.Menu)) {
      choices = menu.addMenu(tr(entry.Menu));
      oneOf = new QActionGroup(choices);
    }
    QAction* action = (entry.Menu != nullptr ? choices : &menu)->addAction(tr(entry.Text));
    action->setObjectName(entry.Name);
    action->setCheckable(entry.IsOn != nullptr);
    if (entry.Menu != nullptr) oneOf->addAction(action);
    connect(action, &QAction::triggered, this, [this, &entry](bool on) { Turn(entry, on); });
    verbs_ << action;
    if (entry.IsOn != nullptr) switches_.emplace_back(&entry, action);
  }
}

// What the right button offers: the verbs that have no other place on the picture.
void Dataplot::MakePopup() {
  for (QAction* action : view_->actions()) view_->removeAction(action);
  view_->addActions(view_->LookingActions());
  view_->addActions(view_->MovingActions());
  for (const auto& group : {std::vector{"mnuPlotFormatProperties"}, std::vector{"mnuEditUndo", "mnuEditRedo"},
                            std::vector{"mnuPlotClipItem1", "mnuPlotClipItem0", "mnuPlotSave", "mnuPlotSaveAs"},
                            std::vector{"mnuPlotAdd", "mnuPlotImport", "mnuPlotTemplateApply"},
                            std::vector{"mnuPlotPrintSetup", "mnuPlotPrint"}}) {
    auto* separator = new QAction(view_);
    separator->setSeparator(true);
    view_->addAction(separator);
    for (const char* name : group)
      if (QAction* verb = Verb(name)) view_->addAction(verb);
  }
}

void Dataplot::MakeBar() {
  constexpr std::pair<const char*, const char*> kButtons[] = {
      {"tbzoom", "mnuPlotFormatZoom"}, {"tbunzoom", "mnuPlotFormatFitAll"},     {"tbshowcoords", "mnuPlotShowCoords"},
      {"tbcopy", "mnuPlotClipItem1"},  {"tbformat", "mnuPlotFormatProperties"}, {"tbsave", "mnuPlotSave"},
      {"tbprint", "mnuPlotPrint"},     {"tbpagesetup", "mnuPlotPrintSetup"}};
  QList<QAction*> actions;
  for (const auto& [button, verb] : kButtons)
    if (QAction* action = Verb(verb)) actions << action;
  auto* bar = new PlotBar(*view_, actions, this);
  static_cast<QVBoxLayout*>(layout())->insertWidget(0, bar);
  const auto* tools = bar->findChild<QToolBar*>();
  for (const auto& [button, verb] : kButtons)
    if (QAction* action = Verb(verb)) tools->widgetForAction(action)->setObjectName(button);
  for (const char* name : {"mnuPlotFormatZoom", "mnuPlotShowCoords"}) {
    QAction* mode = Verb(name);
    if (mode == nullptr) continue;
    // A mode that has begun takes all verbs away, its own too; until it ends its button is down.
    mode->setCheckable(true);
    connect(mode, &QAction::triggered, this, [mode] { mode->setChecked(!mode->isEnabled()); });
    connect(view_, &PlotView::MenuEnabled, mode, [mode](bool enabled) {
      if (enabled) mode->setChecked(false);
    });
  }
}

}  // namespace quorvex
