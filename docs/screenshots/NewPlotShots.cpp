#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTemporaryDir>

#include "Shots.h"
#include "app/ui/parentfrm.h"
#include "desktop/quorvexWindow.h"
#include "plot/PlotClass.h"
#include "plot/ui/frmPlotInfo.h"
#include "results/ui/PlotDialogs.h"
#include "results/ui/TableExportDialogs.h"
#include "results/ui/frmSummary.h"
#include "results/ui/frmTableExport.h"

namespace quorvex {
namespace {

void Type(QDialog& dialog, const char* edit, const char* text) { dialog.findChild<QLineEdit*>(edit)->setText(text); }

}  // namespace

// The dialogs that ask what a new plot shows, with an example's data and a few solutions of them.
void TakeNewPlots(const Shots& shots) {
  const QTemporaryDir state;
  parentfrm frame(shots.Run, "", state.path().toStdString());
  frame.show();
  frame.findChild<QMenu*>("examples")->actions()[1]->trigger();
  quorvexWindow& window = *frame.ActiveProject();
  Project& project = window.Document();
  const SolveData points = GatherData(project.Sheet).Points;
  std::string log;
  SolveForm form;
  for (const char* name : {"a*x+b", "a*x^2+b*x+c", "a+b/x"}) {
    ModelClass& model = *project.Models.Find(name);
    model.SolveType = 1;  // linear
    model.Fit(points, shots.Run.Preferences, log, form);
  }
  window.Refresh();
  window.findChild<QTableView*>("SolvedList")->selectRow(0);

  frame.findChild<QAction*>("mnuResultsSummary")->trigger();
  shots.Take(*window.findChild<frmSummary*>(), "results-summary");
  window.findChild<frmSummary*>()->close();
  shots.TakeDialog(frame, "mnuResultsTableExport", "results-table-type");
  const auto equations = TableExport::Begin(window.Solved(), window.Solved(), project.Sheet, {}, window.User());
  const auto range = [&shots] {
    shots.Take(*QApplication::activeModalWidget(), "results-table-range");
    QApplication::activeModalWidget()->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  };
  const auto type = [&] {
    QTimer::singleShot(0, &frame, range);
    QApplication::activeModalWidget()->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  };
  QTimer::singleShot(0, &frame, type);
  const auto table = AskExportTable(&window, *equations, window.User());
  frmTableExport values(*table, shots.Run.Preferences, project.Locale, window.User());
  values.show();
  shots.Take(values, "results-table");

  shots.TakeDialog(frame, "mnuPlotColumns", "plot-columns");
  shots.TakeDialog(frame, "mnuPlotResiduals", "plot-residuals");
  shots.TakeDialog(frame, "mnuPlotNewEquation", "plot-equation", [](QDialog& dialog) {
    Type(dialog, "txt2D", "exp(-x/3)*sin(2*x)");
    Type(dialog, "txtXMax", "12");
  });
  shots.TakeDialog(frame, "mnuPlotNewEquation", "plot-equation-3d", [](QDialog& dialog) {
    dialog.findChild<QRadioButton*>("optnType1")->click();
    Type(dialog, "txt3D", "exp(-x1^2-x2^2)");
    for (const char* name : {"txtX1Min", "txtX2Min"}) Type(dialog, name, "-1");
  });

  const auto take = [&](const char* name) {
    QTimer::singleShot(0, &frame, [&shots, name] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      shots.Take(*dialog, name);
      dialog->reject();
    });
  };
  take("plot-graphs");
  ChooseGraphs(&window, project, PlotClass(shots.Run.Preferences), shots.Run.Preferences, window.User());
  Settings fresh;
  take("plot-info");
  ShowPlotInfo(&window, fresh);
}

}  // namespace quorvex
