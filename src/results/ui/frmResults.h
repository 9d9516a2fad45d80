#pragma once

#include <QWidget>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotClass.h"
#include "project/Project.h"
#include "results/FitInformation.h"
#include "results/FitLimits.h"
#include "solve/GatherData.h"

class QComboBox;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTabWidget;

namespace quorvex {

class DiagnosisTab;
class EvaluationPanel;
class KeptDiagnoses;
class LimitsBar;
class ResultPlot;
class PlotView;
class TableView;

// The window "Regression Results": one solution of a project at a time, from its solved list, with everything that can
// be asked of it. A tab is made when it is first looked at, and made anew when it is looked at after a change.
//
// The window looks into the project, which outlives it, as settings and prompter do. Whoever solves, undoes or changes
// the project's models in any other way calls Refresh before the user's next turn.
class frmResults : public QWidget {
  Q_OBJECT

 public:
  frmResults(Project& project, Settings& settings, Prompter& user, QWidget* parent = nullptr);
  // The limits of a solve that has just run, for Fit Information; those of a file are not known to be the ones that its
  // solutions were found with, and are not shown.
  void SetLimits(const SolveLimits& limits) { circumstances_.Limits = limits; }

  // Takes over what the project holds now. The solution that was shown stays if it is still solved, else the best is.
  void Refresh();

  // Shows a model of the solved list, or an interpolation. One that is not solved leaves what is shown.
  void Show(const SolvedItem& solution);
  void ShowBest();

 signals:
  // The user wants the whole report on a model as a document; what is known of all models by then.
  void ReportChosen(ModelClass& model, const KeptDiagnoses& known);
  // The user wants to say which quantities of a model's coefficients are reported.
  void QuantitiesChosen(ModelClass& model);

 private:
  // The tabs, in their order.
  enum Tab { kFitInformation, kDataTable, kModelPlot, kResidualPlot, kResidualProbability, kDiagnosis, kTabs };

  void LayOut();
  void MakeTabs();
  QWidget* Commands();
  QPushButton* Command(const char* name, const QString& text, void (frmResults::*command)());
  void FillList(const std::optional<SolvedItem>& keep);
  void EqListChosen();
  void StepTo(int row);
  void Invalidate();
  void ShowCurrentTab();
  void BuildTab(Tab tab, const SolvedItem& solution);
  void ShowDataTable(const SolvedItem& solution);
  LimitsChoice Limits() const;
  void LimitsChosen();
  void ShowLimits();
  void ClearTabs();
  TableView* CurrentTable() const;  // null where the current tab is none of a table
  PlotView* CurrentPlot() const;    // null where the current tab shows no plot
  bool Evaluating() const;
  void EnableCommands();

  void SaveCommand();
  void ReportCommand();
  void FormatCommand();
  void PrintCommand();
  void CopyCommand();
  void PageSetupCommand();

  Project& project_;
  Settings& settings_;
  Prompter& user_;
  FitCircumstances circumstances_;
  NumberPatterns patterns_ = WindowPatterns();
  GatheredData data_;
  std::vector<SolvedItem> solved_;
  std::array<bool, kTabs> current_{};  // whether a tab shows the present solution

  QComboBox* EqList;
  std::array<QPushButton*, 3> cmdUpDown;  // next, previous, best
  std::vector<QPushButton*> commands_;
  QPushButton* evaluation_;
  QStackedWidget* pages_;
  QTabWidget* ResultsTab;
  TableView *FitBook, *DataBook;
  ResultPlot *pctModel, *pctResidual, *pctNormal;
  DiagnosisTab* diagnosis_;
  EvaluationPanel* panel_;
  LimitsBar* limits_;
  QLabel* whyNoLimits_;
};

}  // namespace quorvex
