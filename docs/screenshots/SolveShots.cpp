#include <QAction>
#include <QDialog>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include "Script.h"
#include "Shots.h"
#include "app/ui/parentfrm.h"

namespace quorvex {
namespace {

void Press(QDialog& window, const char* button) { window.findChild<QPushButton*>(button)->click(); }
void Check(QDialog& window, const char* option) { window.findChild<QRadioButton*>(option)->setChecked(true); }
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
}

}  // namespace quorvex
