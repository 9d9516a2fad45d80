// The results window, for a fit of the data of Misra1a.

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include "Shots.h"
#include "core/ui/MessageBoxPrompter.h"
#include "engine/SolveForm.h"
#include "engine/UserModel.h"
#include "plot/ui/PSetup.h"
#include "results/ui/TableFormat.h"
#include "results/ui/frmResults.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

// Monomolecular adsorption, by NIST (StRD, Misra1a).
constexpr double kVolume[] = {77.6,  114.9, 141.1, 190.8, 239.9, 289.0, 332.8,
                              378.4, 434.8, 477.3, 536.8, 593.1, 689.1, 760.0};
constexpr double kPressure[] = {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02,
                                44.82, 50.76, 55.05, 61.01, 66.40, 75.47, 81.78};

Project SolvedProject(const Settings& settings) {
  Project project = NewProject(1, false, {});
  project.FileName = "misra1a.qvx";
  for (std::size_t i = 0; i < std::size(kVolume); ++i) {
    project.Sheet.Cells.SetGridCellNumber(i + 1, 1, kVolume[i]);
    project.Sheet.Cells.SetGridCellNumber(i + 1, 2, kPressure[i]);
  }
  project.Models.Add(
      "Adsorption",
      MakeUserModel(
          {"Adsorption", {"a*(1-exp(-b*x))"}, "", {{"Value", "250", "Numerical"}, {"Value", "0.0005", "Numerical"}}}, 1,
          {}));
  const SolveData points = GatherData(project.Sheet).Points;
  std::string log;
  SolveForm form;
  for (const char* name : {"Adsorption", "a*x+b", "a*x^2+b*x+c"}) {
    ModelClass& model = *project.Models.Find(name);
    model.SolveType = model.UserType ? 0 : 1;
    model.Fit(points, settings, log, form);
  }
  return project;
}

}  // namespace

void TakeResults(const Shots& shots) {
  Project project = SolvedProject(shots.Run.Preferences);
  MessageBoxPrompter user(nullptr);
  frmResults window(project, shots.Run.Preferences, user);
  window.show();
  auto* tabs = window.findChild<QTabWidget*>("ResultsTab");
  const char* names[] = {"results-fit",       "results-data",        "results-model",
                         "results-residuals", "results-probability", "results-diagnosis"};
  for (int tab = 0; tab < tabs->count(); ++tab) {
    tabs->setCurrentIndex(tab);
    shots.Take(window, names[tab]);
  }
  window.findChild<QPushButton*>("evaluation")->click();
  window.findChild<QLineEdit*>("XVal_text1")->setText("500");
  for (const char* box : {"ckDyDX", "ckDYDParam"}) window.findChild<QCheckBox*>(box)->click();
  window.findChild<QPushButton*>("EvalCommand")->click();
  shots.Take(window, "results-evaluation");

  TableFormat format(nullptr, WindowPatterns(), window.font(), project.Locale);
  format.show();
  shots.Take(format, "results-format");
  PSetup paper(shots.Run.Preferences, project.Locale, user, nullptr);
  paper.show();
  shots.Take(paper, "results-page-setup");
}

}  // namespace quorvex
