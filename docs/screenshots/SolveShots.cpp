#include <QAction>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <cmath>

#include "Script.h"
#include "Shots.h"
#include "app/ui/parentfrm.h"
#include "files/ui/Dataplot.h"

namespace quorvex {
namespace {

void Press(QDialog& window, const char* button) { window.findChild<QPushButton*>(button)->click(); }
void Check(QDialog& window, const char* option) { window.findChild<QAbstractButton*>(option)->setChecked(true); }
void Accept(QDialog& window) { window.accept(); }
void Reject(QDialog& window) { window.reject(); }

}  // namespace

// The dialogs of a solve in the order in which their user meets them, and the solutions they lead to.
void TakeSolve(const Shots& shots) {
  shots.Run.Preferences.Set("screenwidth", "13500");
  shots.Run.Preferences.Set("screenheight", "8000");
  shots.Run.Preferences.Set("autoresults", "0");
  const QTemporaryDir state;
  parentfrm frame(shots.Run, "", state.path().toStdString());
  frame.show();
  frame.findChild<QMenu*>("examples")->actions()[1]->trigger();
  const auto command = [&](const char* action, std::deque<Step> steps) {
    const Script script(std::move(steps));
    frame.findChild<QAction*>(action)->trigger();
  };
  const auto take = [&](const char* name) { return [&shots, name](QDialog& dialog) { shots.Take(dialog, name); }; };

  command("mnuSolveRegression", {[&](QDialog& dialog) {
                                   take("solve-setup")(dialog);
                                   Accept(dialog);
                                 },
                                 [&](QDialog& dialog) {
                                   dialog.findChild<QListWidget*>("eq_list")->setCurrentRow(3);
                                   take("solve-model")(dialog);
                                   Press(dialog, "solve_command");
                                 },
                                 Accept});
  command("mnuSolveRegression", {[&](QDialog& dialog) {
                                   Check(dialog, "optGroups");
                                   Accept(dialog);
                                 },
                                 [&](QDialog& dialog) {
                                   auto* groups = dialog.findChild<QListWidget*>("group_list");
                                   for (const int row : {0, 5}) groups->item(row)->setCheckState(Qt::Checked);
                                   for (int i = 0; i < 3; ++i) Press(dialog, "add_command");
                                   take("solve-groups")(dialog);
                                   Reject(dialog);
                                 }});
  command("mnuSolveRegression", {[&](QDialog& dialog) {
                                   Check(dialog, "optAll");
                                   Accept(dialog);
                                 },
                                 [&](QDialog& dialog) {
                                   take("solve-failed")(dialog);
                                   Accept(dialog);
                                 }});
  shots.Take(frame, "solve-list");
  command("mnuSolveLog", {[&](QDialog& dialog) {
            take("solve-log")(dialog);
            Reject(dialog);
          }});
  command("mnuSolveInterpolation", {[&](QDialog& dialog) {
                                      take("solve-interpolation")(dialog);
                                      Press(dialog, "solve_command");
                                    },
                                    Accept});
  command("mnuSolveClear", {[&](QDialog& dialog) {
            take("solve-clear")(dialog);
            Reject(dialog);
          }});

  // A plate of 96 wells over a dilution series.
  QFile plate(state.filePath("plate.txt"));
  if (!plate.open(QIODevice::WriteOnly)) return;
  QString text = "dose";
  for (int well = 0; well < 96; ++well) text += QString("\t%1%2").arg(QChar('A' + well / 12)).arg(well % 12 + 1);
  for (int i = 0; i < 24; ++i) {
    const double x = std::pow(10.0, -2 + i / 6.0);
    text += QString("\n%1").arg(x, 0, 'g', 6);
    for (int well = 0; well < 96; ++well) {
      const double half = 0.5 + 0.04 * well, noise = 0.01 * ((i * 37 + well * 11) % 7 - 3);
      text += QString("\t%1").arg((1.5 + 0.1 * (well % 5)) * x / (half + x) + noise, 0, 'f', 4);
    }
  }
  plate.write(text.toUtf8());
  plate.close();
  command("mnuSolveSeries", {[&](QDialog& dialog) {
                               auto& files = dynamic_cast<QFileDialog&>(dialog);
                               files.selectFile(plate.fileName());
                               files.findChild<QLineEdit*>("fileNameEdit")->setText(plate.fileName());
                               QMetaObject::invokeMethod(&files, "accept");
                             },
                             [&](QDialog& dialog) {
                               take("solve-series")(dialog);
                               Press(dialog, "cmdOK");
                             },
                             [&](QDialog& dialog) {
                               Check(dialog, "optSingle");
                               Check(dialog, "chkHarder");
                               Accept(dialog);
                             },
                             [&](QDialog& dialog) {
                               auto* models = dialog.findChild<QListWidget*>("eq_list");
                               models->setCurrentItem(models->findItems("a*x/(b+x)", Qt::MatchExactly).value(0));
                               Press(dialog, "solve_command");
                             }});
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() != "frmSeries") continue;
    shots.Take(*window, "solve-series-answers");
    window->findChild<QPushButton*>("cmdPlot")->click();
    if (auto* plot = frame.findChild<Dataplot*>()) shots.Take(*plot, "solve-series-plot");
    break;
  }
}

}  // namespace quorvex
