#pragma once

#include <QDialog>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "results/FitInformation.h"
#include "selection/SelectionReport.h"

class QVBoxLayout;

namespace quorvex {

class TableBar;
class TableView;

// What the windows of variable selection share: a report with the commands of a table, and one that saves the chosen
// model as a project.
class SelectionWindow : public QDialog {
 public:
  // Settings and prompter outlive the window.
  SelectionWindow(QWidget* parent, const LocaleText& locale, Settings& settings, Prompter& user);

 protected:
  // Puts the report and the row of commands below what `all` has, another widget beside the report where there is one.
  void AddReport(QVBoxLayout& all, QWidget* beside = nullptr);
  // The report, and as it is copied and saved. From then on the commands have something to work on.
  void ShowReport(Report shown, Report saved);
  void Enable(bool on);

  virtual SelectionFormat Format() const = 0;
  virtual void FormatChosen(const SelectionFormat& format) = 0;
  virtual void SaveProject() = 0;
  // What Save begins the file's name with.
  virtual std::string ReportName() const = 0;

  const LocaleText locale_;
  Settings& settings_;
  Prompter& user_;
  TableView* f1StepWise;

 private:
  TableBar* commands_ = nullptr;  // once there is a report
};

}  // namespace quorvex
