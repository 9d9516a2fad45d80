#pragma once

#include <QWidget>
#include <vector>

#include "core/Prompter.h"
#include "results/Evaluation.h"
#include "sheet/DataSheet.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace quorvex {

// Evaluates the solution that a results window shows: its value at X, or the X at which it takes a value, with
// derivatives. The answers gather in a text that can be saved, printed and copied.
class EvaluationPanel : public QWidget {
 public:
  // The sheet names the variables; limits rest on the points.
  EvaluationPanel(const DataSheet& sheet, const SolveData& points, const LocaleText& locale, Prompter& user,
                  QWidget* parent);

  // The solution to evaluate from now on; none where nothing is solved. What was typed and answered stays, but the
  // limits of a search become those of the new input.
  void SetSolution(const SolvedItem* solution);

  // The limits to tell beside a value.
  void SetLimits(const LimitsChoice& limits) { limits_ = limits; }

  // To where X, or for a root Y, is typed.
  void FocusEntry();

  QPlainTextEdit& Text() { return *txtEval; }
  void Save();

 private:
  void LayOut();
  QWidget* EntryBox();
  QGroupBox* SearchBox();
  void MakeVariables(int count);
  void NameVariables();
  void EnableEntries();
  void cmdDefaults_clicked();
  void EvalCommand_clicked();

  const DataSheet& sheet_;
  const SolveData& points_;
  const LocaleText& locale_;
  Prompter& user_;
  SolvedItem solution_;
  LimitsChoice limits_;
  QFormLayout *variables_, *root_;
  QRadioButton* optnAction[2];  // "Value of Y at Xn", "Root at Y, Xn"
  std::vector<QLineEdit*> XVal_text;
  QLineEdit* YVal_text;
  QComboBox* cmboRoot;
  QCheckBox *ckDyDX, *ckDYDParam;
  QGroupBox* search_;
  QLineEdit *txtSearchMin, *txtSearchMax, *txtSearchIntervals;
  QPushButton* evalCommand_;
  QPlainTextEdit* txtEval;
};

}  // namespace quorvex
