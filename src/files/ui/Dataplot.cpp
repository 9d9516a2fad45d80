#include "files/ui/Dataplot.h"

#include <QAction>
#include <QCloseEvent>
#include <QFileInfo>
#include <QVBoxLayout>
#include <algorithm>

#include "calculator/ui/calcfrm.h"
#include "core/ui/BusyCursor.h"
#include "files/PlotTemplateKeys.h"
#include "files/ui/frmPlotEquation.h"
#include "files/ui/frmPltTemplate.h"
#include "files/ui/frmTemplateEdit.h"
#include "plot/ui/PSetup.h"
#include "plot/ui/PlotPreview.h"
#include "plot/ui/PlotProperties.h"
#include "results/CurvesPlot.h"

namespace quorvex {

Dataplot::Dataplot(PlotDocument document, PlotSource source, QWidget* parent)
    : QWidget(parent, Qt::Window),
      document_(std::move(document)),
      source_(std::move(source)),
      view_(new PlotView(Plot(), document_.User(), document_.Preferences(), this)) {
  setObjectName("Dataplot");
  document_.WritePicture = [this](const std::string& file) { view_->WritePicture(file); };
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins({});
  rows->setSpacing(0);
  rows->addWidget(view_, 1);
  setFocusProxy(view_);
  MakeMenus();
  MakePopup();
  MakeBar();
  view_->setFocus();  // and not the first box of the bar
  connect(view_, &PlotView::Changed, this, [this](std::string_view what) {
    document_.Record(what);
    ShowState();
  });
  connect(view_, &PlotView::MenuEnabled, this, [this](bool enabled) {
    for (QAction* verb : verbs_) verb->setEnabled(enabled);
    if (enabled) ShowState();
  });
  ShowState();
}

// The view goes before the plot that it shows.
Dataplot::~Dataplot() { delete view_; }

bool Dataplot::MayClose() {
  if (document_.Changed()) {
    // What is asked about is to be seen.
    raise();
    activateWindow();
  }
  const bool close = document_.MayClose();
  ShowState();
  return close;
}

void Dataplot::closeEvent(QCloseEvent* event) { event->setAccepted(MayClose()); }

void Dataplot::Turn(const PlotSwitch& entry, bool on) {
  const auto isOn = [&] { return entry.IsOn != nullptr && entry.IsOn(Plot()); };
  const bool before = isOn();
  entry.Turn(Plot(), on, document_.User());
  if (entry.IsOn == nullptr || isOn() != before) document_.Record(QString(entry.Text).remove('&').toStdString());
  Show(true);
}

void Dataplot::PlotNewEquation() {
  if (auto made = ShowPlotEquation(this, document_.Preferences(), Plot().Locale, document_.User()))
    ShowBeside(std::move(*made));
}

void Dataplot::PlotOpen() {
  const auto file = document_.User().ChooseFileToOpen("Open", kPlotFilter);
  if (file)
    OpenPlot(QString::fromStdString(*file), document_.Preferences(), Plot().Locale, document_.User(),
             *(parentWidget() != nullptr ? parentWidget() : this)->window());
}

void Dataplot::PlotAdd() {
  auto chosen = source_.Choose(this, Plot());
  if (!chosen) return;
  document_.Add(std::move(*chosen));
  Show(true);
}

void Dataplot::PlotImport() { Show(document_.Import()); }

void Dataplot::Save() {
  document_.FileSave();
  ShowState();
}

void Dataplot::SaveAs() {
  document_.FileSaveAs();
  ShowState();
}

void Dataplot::SaveCopyAs() { document_.FileSaveCopyAs(); }

void Dataplot::PageSetupCommand() { PSetup(document_.Preferences(), Plot().Locale, document_.User(), this).exec(); }

void Dataplot::PrintPreview() { PreviewPlot(Plot(), document_.Preferences(), document_.User(), this); }

void Dataplot::Undo() { Show(document_.Undo()); }
void Dataplot::Redo() { Show(document_.Redo()); }

void Dataplot::FormatProperties() {
  const PlotWatcher watcher{.Redraw = [this] { Show(true); },
                            .Applied = [this](const PlotPage&) { document_.Record(kPropertiesChange); }};
  EditProperties(Plot(), document_.Preferences(), document_.User(), watcher, this);
  ShowState();
}

void Dataplot::TemplateApply() { Show(document_.ApplyTemplate()); }

void Dataplot::TemplateEdit() { EditTemplate(TemplateFormatOf(Plot()).Filter, document_.User(), this); }

void Dataplot::TemplateSave() {
  // A plot in error is refused before anybody chooses.
  const auto selection = Plot().PlotCreated ? ChooseTemplateGroups(Plot(), this) : TemplateSelection();
  if (selection) document_.SaveTemplate(*selection);
}

void Dataplot::ShowCalculator() {
  if (Plot().Angles()) return document_.ShowCalculator();
  auto* calculator = findChild<calcfrm*>({}, Qt::FindDirectChildrenOnly);
  if (calculator == nullptr) {
    calculator = new calcfrm(this, document_.Preferences(), Plot().Locale, document_.User(),
                             [this](std::vector<PlotSeries> curves) { return OpenCurves(std::move(curves)); });
    calculator->setAttribute(Qt::WA_DeleteOnClose);
    calculator->Init(Plot().PlotData, source_.Graphs ? source_.Graphs(Plot()) : std::vector<PlotSeries>());
  }
  calculator->show();
  calculator->raise();
  calculator->activateWindow();
}

// A plot of what was computed.
bool Dataplot::OpenCurves(std::vector<PlotSeries> curves) {
  auto document = NewPlotDocument(CurvesPlot(std::move(curves), document_.Preferences(), Plot().Locale),
                                  document_.Preferences(), document_.User());
  if (document) ShowBeside(std::move(*document));
  return document.has_value();
}

// A plot of the same project, in a window of its own.
void Dataplot::ShowBeside(PlotDocument document) {
  document.Project = document_.Project;
  ShowPlot(std::move(document), parentWidget() != nullptr ? *parentWidget() : *this, source_);
}

void Dataplot::Show(bool changed) {
  if (changed) view_->Redraw();
  ShowState();
}

void Dataplot::ShowState() {
  const QString name = QString::fromStdString(document_.FileName);
  const QString project = QString::fromStdString(document_.Project);
  setWindowTitle((document_.HasFile   ? QFileInfo(name).fileName()
                  : project.isEmpty() ? name
                                      : name + " - " + project) +
                 "[*]");
  setWindowModified(document_.Changed());
  for (const auto& [entry, action] : switches_) {
    action->setChecked(entry->IsOn(Plot()));
    if (entry->Matters != nullptr) action->setEnabled(entry->Matters(Plot()));
  }
  const PlotUndo& history = document_.History();
  Verb("mnuEditUndo")->setText(QString::fromStdString(history.UndoText()));
  Verb("mnuEditUndo")->setEnabled(history.CanUndo());
  Verb("mnuEditRedo")->setText(QString::fromStdString(history.RedoText()));
  Verb("mnuEditRedo")->setEnabled(history.CanRedo());
  emit Changed();
}

Dataplot& ShowPlot(PlotDocument document, QWidget& owner, PlotSource source) {
  if (!document.HasFile && document.FileName == kUnnamedPlot) {
    constexpr const char* kShown = "plots";  // so far, of this owner
    const QList<Dataplot*> others = owner.findChildren<Dataplot*>(Qt::FindDirectChildrenOnly);
    int number = owner.property(kShown).toInt();
    do {
      document.FileName = kUnnamedPlot + (' ' + std::to_string(++number));
    } while (std::ranges::any_of(others, [&](Dataplot* o) { return o->Document().FileName == document.FileName; }));
    owner.setProperty(kShown, number);
  }
  auto* window = new Dataplot(std::move(document), std::move(source), &owner);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->show();
  window->raise();
  window->activateWindow();
  return *window;
}

void OpenPlot(const QString& fileName, Settings& settings, const LocaleText& locale, Prompter& user, QWidget& frame) {
  const std::string path = QFileInfo(fileName).absoluteFilePath().toStdString();
  for (Dataplot* open : frame.findChildren<Dataplot*>())
    if (open->Document().HasFile && open->Document().FileName == path) {
      open->raise();
      open->activateWindow();
      return;
    }
  std::optional<PlotDocument> document = [&] {
    const BusyCursor busy;
    return OpenPlotDocument(path, settings, locale, user);
  }();
  if (document) ShowPlot(std::move(*document), frame);
}

bool MayClosePlots(const QWidget& owner) {
  const QList<Dataplot*> plots = owner.findChildren<Dataplot*>(Qt::FindDirectChildrenOnly);
  return std::ranges::all_of(plots, [](Dataplot* plot) { return !plot->isVisible() || plot->MayClose(); });
}

}  // namespace quorvex
