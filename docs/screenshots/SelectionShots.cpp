#include <QAction>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "Script.h"
#include "Shots.h"
#include "app/ui/parentfrm.h"
#include "core/NumberText.h"
#include "desktop/quorvexWindow.h"

namespace quorvex {
namespace {

// Employment and what may explain it: six columns that are nearly alike.
void OpenLongley(quorvexWindow& window) {
  Project project = NewProject(6, false, LocaleText());
  std::ifstream file("tests/data/longley.csv");
  std::string line;
  for (std::size_t row = 0; std::getline(file, line); ++row) {
    std::istringstream fields(line);
    std::string field;
    for (std::size_t col = 1; std::getline(fields, field, ','); ++col) {
      if (row == 0)
        project.Sheet.Headers[col - 1] = field;
      else
        project.Sheet.Cells.SetGridCellNumber(row, col, NumericText(field).value_or(0));
    }
  }
  window.Document() = std::move(project);
  window.Refresh();
}

void Accept(QDialog& dialog) { dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click(); }

// Once the search is at its end.
void TakeReport(const Shots& shots, QDialog& report, const QString& name, bool atEnd) {
  if (report.findChild<QPushButton*>("cmdAbort")->isEnabled()) {
    QTimer::singleShot(20, &report, [&shots, &report, name, atEnd] { TakeReport(shots, report, name, atEnd); });
    return;
  }
  if (atEnd) report.findChild<QTableView*>("f1StepWise")->scrollToBottom();
  shots.Take(report, name);
  report.reject();
}

}  // namespace

// The windows of variable selection.
void TakeSelection(const Shots& shots) {
  shots.Run.Preferences.Set("screenwidth", "13500");
  shots.Run.Preferences.Set("screenheight", "8000");
  const QTemporaryDir state;
  parentfrm frame(shots.Run, "", state.path().toStdString());
  frame.show();
  frame.findChild<QMenu*>("examples")->actions()[1]->trigger();
  OpenLongley(*frame.ActiveProject());
  const auto command = [&](int procedure, std::deque<Step> steps) {
    steps.push_front([procedure](QDialog& setup) {
      setup.findChild<QRadioButton*>("optnVarSelect" + QString::number(procedure))->click();
    });
    const Script script(std::move(steps));
    frame.findChild<QAction*>("mnuDataVarSelect")->trigger();
  };
  command(2, {[&](QDialog& setup) {
                auto* always = setup.findChild<QListWidget*>("lstInclude");
                always->item(5)->setSelected(true);
                shots.Take(setup, "selection-setup");
                always->clearSelection();
                Accept(setup);
              },
              [&](QDialog& report) { TakeReport(shots, report, "selection-stepwise", true); }});
  command(3, {Accept, [&](QDialog& report) { TakeReport(shots, report, "selection-subsets", false); }});
  command(4, {Accept, [&](QDialog& manual) {
                auto* variables = manual.findChild<QListWidget*>("lstVariables");
                for (const int row : {1, 2, 5}) variables->item(row)->setSelected(true);
                manual.findChild<QPushButton*>("cmdCalculate")->click();
                shots.Take(manual, "selection-manual");
                manual.reject();
              }});
  frame.ActiveProject()->Document().Changed = false;
}

}  // namespace quorvex
