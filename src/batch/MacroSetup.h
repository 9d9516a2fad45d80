#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/Settings.h"

namespace quorvex {

// The measures that models are ranked by; a SortKey counts them from 1.
inline constexpr std::array<std::string_view, 4> kSortKeys = {"RSS", "R^2", "Ra^2", "StdErr"};

// The settings of one macro, as its statements leave them. Three fields are also kept as the text they were given in,
// since a parameter run substitutes in the text.
struct MacroSetup {
  bool UseDDE = false;          // HandShake: mirror status texts
  bool ShowProgress = false;    // HandShake: show the progress form
  bool ShowMessageBox = false;  // HandShake: final and abort message boxes
  double RegressionTolerance = 1e-10;
  int Derivatives = 0;  // 0 Richardson's extrapolation, 1 central difference
  int UnchangedIterations = 10;
  int MaxIterations = 250;
  int IndependentVariables = 1;
  bool DelimitTab = true, DelimitSemicolon = true, DelimitComma = true, DelimitSpace = true;
  bool IgnoreConsecutive = true;
  std::string OutputFormat = "structured";
  bool OutputFitInfo = true;
  bool TableDataFile = false, TableCalcData = false, TableErrorData = false, TableMinMaxError = false;
  int SortKey = 1;  // one of kSortKeys
  std::string OutputDelimit = "\t";
  bool OverrideDecimal = true;
  std::string MissingData;
  std::string DataFile;
  std::string DataFirstLine = "1";
  std::string OutputFile;
  std::string Comment;
  std::string SQLQuery;
  std::string ColumnOrder = "Default";
  bool Weighted = false;
  bool LogEnabled = false;
  std::string LogFile;
  bool LogSummaryOnly = false;
  bool UseParameterFile = false;
  std::string ParameterFile;
};

// The defaults, with the solver's limits from the user's preferences.
inline void InitMacroSetup(MacroSetup& setup, const Settings& preferences) {
  setup = MacroSetup();
  setup.RegressionTolerance = preferences.ResidualTolerance;
  setup.Derivatives = preferences.DerivativeMethod;
  setup.UnchangedIterations = preferences.DivIterations;
  setup.MaxIterations = preferences.MaxIterations;
}

}  // namespace quorvex
