#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "files/PlotDocument.h"
#include "plot/PlotSwitches.h"
#include "plot/ui/PlotView.h"

class QMenu;
class QMenuBar;

namespace quorvex {

// Lets the user choose, over the window of a plot, of what its project has for it. Nothing where they cancel.
using GraphChooser = std::function<std::optional<std::vector<PlotSeries>>(QWidget* parent, const PlotPage& plot)>;

// What the project that a plot was made from has for its window; a plot without a project has none of it.
struct PlotSource {
  // Makes another plot of the project.
  struct NewPlot {
    const char* Text;
    std::function<void()> Make;
  };

  GraphChooser Choose;
  std::function<std::vector<PlotSeries>(const PlotPage& plot)> Graphs;  // beside the plot's own series
  std::vector<NewPlot> New;
};

// The window of one plot: its menus and buttons for what can be done with it, and switches for how it looks.
class Dataplot : public QWidget {
  Q_OBJECT

 public:
  explicit Dataplot(PlotDocument document, PlotSource source = {}, QWidget* parent = nullptr);
  ~Dataplot() override;

  PlotDocument& Document() { return document_; }
  PlotPage& Plot() { return document_.Plot(); }
  PlotView& View() { return *view_; }

  // Asks to save what changed. False where the window must stay.
  bool MayClose();

 signals:
  void Changed();  // the plot, or whether it is saved

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void MakeMenus();
  void MakePlotMenu(QMenuBar& menus);
  void MakeNewMenu(QMenu& plot);
  void MakeEditMenu(QMenuBar& menus);
  void MakeFormatMenu(QMenuBar& menus);
  void MakeViewMenu(QMenuBar& menus);
  void MakePopup();
  void MakeBar();
  QAction* Add(QMenu& menu, const char* name, const QString& text, const QList<QKeySequence>& keys,
               void (Dataplot::*verb)());
  QAction* Verb(const char* name) const { return findChild<QAction*>(name); }
  void AddSwitches(QMenu& menu);
  void Turn(const PlotSwitch& entry, bool on);

  void PlotNewEquation();
  void PlotOpen();
  void PlotAdd();
  void PlotImport();
  void Save();
  void SaveAs();
  void SaveCopyAs();
  void PageSetupCommand();
  void PrintPreview();
  void Undo();
  void Redo();
  void FormatProperties();
  void TemplateApply();
  void TemplateEdit();
  void TemplateSave();
  void ShowCalculator();
  bool OpenCurves(std::vector<PlotSeries> curves);
  void ShowBeside(PlotDocument document);

  void Show(bool changed);  // the plot, where it has changed, and what can be done with it now
  void ShowState();

  PlotDocument document_;
  const PlotSource source_;
  PlotView* view_;
  QList<QAction*> verbs_;  // which the modes of the view take away
  std::vector<std::pair<const PlotSwitch*, QAction*>> switches_;
};

// Shows a plot in a window of its own, which belongs to `owner`. A plot without file and name is called after its
// number among those of its owner.
Dataplot& ShowPlot(PlotDocument document, QWidget& owner, PlotSource source = {});

// Opens the file in a window that belongs to the frame, or shows the one that has it already.
void OpenPlot(const QString& fileName, Settings& settings, const LocaleText& locale, Prompter& user, QWidget& frame);

// Asks for each plot that belongs to `owner` to save what changed. False where one must stay open.
bool MayClosePlots(const QWidget& owner);

}  // namespace quorvex
