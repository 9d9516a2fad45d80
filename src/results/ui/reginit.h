#pragma once

#include <QDialog>
#include <QTimer>
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
// preview with it; so do the Up and Down keys in its cell. The preview follows what is typed, a moment later; while a
// value is no number it stays as it is, and a line says why. Two more bars turn the preview of a model of two
// variables, a surface.
class reginit : public QDialog {
  Q_OBJECT

 public:
  // A model that has no estimates yet begins with the program's own. Project, editor and model outlive the dialog.
  reginit(QWidget* parent, Project& project, ProjectEditor& editor, ModelClass& model, SolveData data,
          Settings& settings);

  void accept() override;

 protected:
  bool eventFilter(QObject* grid, QEvent* event) override;

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
  void ValueTyped(int row);
  void FollowTyping();
  void ShowPreview(const std::vector<EstimateRow>& rows);
  bool TakeKey(int column, int key);  // those that mean something of their own in a cell
  void LeaveCell(bool forward);       // by Tab: to the next cell that takes a number, or out of the grid
  QWidget* Preview();                 // with its scroll bars
  void ShowAngles();                  // of the preview, on its scroll bars
  void SaveRules();

  Project& project_;
  ProjectEditor& editor_;
  ModelClass& model_;
  const SolveData data_;
  Settings& settings_;
  QTimer typed_;     // runs while the preview is behind what was typed
  double base_ = 0;  // the selected coefficient's value where the scroll bar stands in its middle

  QTableWidget* RangeGrid;
  QLabel *adjusted_, *note_;
  QScrollBar *HscrAjust, *XYScroll, *ZScroll;
  QComboBox* drpPercent;
  QPushButton *recalc_command, *cmdSaveRules;
  ResultPlot* preview_;
};

// Asks for them over a window. False where the user cancels.
bool SpecifyEstimates(QWidget* over, Project& project, ProjectEditor& editor, ModelClass& model, Settings& settings);

}  // namespace quorvex
