#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <functional>

#include "Shots.h"
#include "app/ui/parentfrm.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/Dataplot.h"
#include "solve/GatherData.h"

namespace quorvex {

// The data calculator with the damped wave, its derivative and its spectrum, and the dialogs of its keys.
void TakeCalculator(const Shots& shots) {
  const QTemporaryDir state;
  parentfrm frame(shots.Run, "", state.path().toStdString());
  frame.show();
  frame.findChild<QMenu*>("examples")->actions()[1]->trigger();
  quorvexWindow& window = *frame.ActiveProject();
  Project& project = window.Document();
  std::string log;
  SolveForm form;
  ModelClass& model = *project.Models.Find("a*x+b");
  model.SolveType = 1;  // linear
  model.Fit(GatherData(project.Sheet).Points, shots.Run.Preferences, log, form);
  window.Refresh();
  frame.findChild<QAction*>("mnuPlotAll")->trigger();

  auto& plot = *window.findChildren<Dataplot*>().back();
  plot.findChild<QAction*>("mnuPlotCalc")->trigger();
  auto& calculator = *plot.findChild<QDialog*>("calcfrm");
  const auto press = [&](const char* button) { calculator.findChild<QPushButton*>(button)->click(); };
  const auto dialog = [&](const char* name, const std::function<void(QDialog&)>& fill, bool accept) {
    QTimer::singleShot(0, &frame, [&shots, name, fill, accept] {
      auto* shown = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      fill(*shown);
      shots.Take(*shown, name);
      accept ? shown->accept() : shown->reject();
    });
  };
  const auto type = [](QDialog& to, const char* edit, const char* text) {
    to.findChild<QLineEdit*>(edit)->setText(text);
  };
  dialog(
      "calculator-equation",
      [&](QDialog& to) {
        type(to, "functiontext", "exp(-x/3)*sin(2*x)");
        type(to, "maxtext", "12");
        type(to, "samplestext", "512");
      },
      true);
  press("equation");
  dialog(
      "calculator-distribution", [](QDialog&) {}, false);
  press("DistribCalc");
  dialog(
      "calculator-section", [&](QDialog& to) { type(to, "txtXMax", "6"); }, false);
  press("operations24");
  auto* available = calculator.findChild<QListWidget*>("availablelist");
  available->setCurrentRow(1);
  dialog(
      "calculator-sample", [](QDialog&) {}, true);
  press("cmdSample");
  press("stackops4");
  press("stackops0");
  press("operations9");
  press("preview");
  type(calculator, "constant_text", "2.5");
  shots.Take(calculator, "calculator");
}

}  // namespace quorvex
