#pragma once

#include "selection/ManualSelection.h"
#include "selection/ui/SelectionWindow.h"

class QListWidget;

namespace quorvex {

// Manual Selection: fits the variables that the user marks, as often as wanted.
class frmUserSelect : public SelectionWindow {
  Q_OBJECT

 public:
  frmUserSelect(QWidget* parent, SelectionData selection, bool intercept, const LocaleText& locale, Settings& settings,
                Prompter& user);

 protected:
  SelectionFormat Format() const override { return manual_.Format(); }
  void FormatChosen(const SelectionFormat& format) override;
  void SaveProject() override { manual_.Export(user_); }
  std::string ReportName() const override { return "Manual Selection"; }

 private:
  QWidget* Variables();
  void Calculate();

  ManualSelection manual_;
  QListWidget* lstVariables;
};

}  // namespace quorvex
