#pragma once

#include <QDialog>
#include <vector>

#include "core/SolveData.h"
#include "solve/InitialEstimates.h"

class QComboBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QTableWidget;

namespace quorvex {

class ResultPlot;

// The initial estimates of a model, over a preview of what they make of the data: a row for each coefficient, which is
// estimated, held constant, or tried over a range. The scroll bar moves the value of the selected coefficient, and the
// preview with it. Two more turn the preview of a model of two variables, a surface.
class reginit : public QDialog {
  Q_OBJECT

 public:
  // A model that has no estimates yet begins with the program's own. Project, editor and model outlive the dialog.
  reginit(QWidget* parent, Project& project, ProjectEditor& editor, ModelClass& model, SolveData data,
          Settings& settings);

  void accept() override;

 private:
  void LayOut();
  void Fill(const std::vector<EstimateRow>& rows);
  std::vector<EstimateRow> Rows() const;
  EstimateType TypeOf(int row) const;
  void ShowType(int row);  // the cells that its type has no use for are empty and closed
  bool Refused(const std::optional<EstimateRefusal>& refusal);  // of which the user hears, at its cell
  void GoTo(int row, int column);
  void SelectRow(int row);
  void Scroll(int steps);
  void Recalculate();
  QWidget* Preview();  // with its scroll bars
  void ShowAngles();   // of the preview, on its scroll bars
  void SaveRules();

  Project& project_;
  ProjectEditor& editor_;
  ModelClass& model_;
  const SolveData data_;
  Settings& settings_;
  double base_ = 0;  // the selected coefficient's value where the scroll bar stands in its middle

  QTableWidget* RangeGrid;
  QLabel* adjusted_;
  QScrollBar *HscrAjust, *XYScroll, *ZScroll;
  QComboBox* drpPercent;
  QPushButton *recalc_command, *cmdSaveRules;
  ResultPlot* preview_;
};

// Asks for them over a window; refused where the sheet has no data to preview them by.
void SpecifyEstimates(QWidget* over, Project& project, ProjectEditor& editor, ModelClass& model, Settings& settings);

}  // namespace quorvex
