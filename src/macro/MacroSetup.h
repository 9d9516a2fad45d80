#pragma once

#include <string>

#include "core/DerivativeKind.h"
#include "core/LossKind.h"
#include "core/Settings.h"
#include "engine/RankModels.h"

namespace quorvex {

// The settings of one macro, as its statements leave them. What a parameter run substitutes in is kept as text.
struct MacroSetup {
  bool UseDDE = false;          // HandShake: mirror status texts
  bool ShowProgress = false;    // HandShake: show the progress form
  bool ShowMessageBox = false;  // HandShake: final and abort message boxes
  double RegressionTolerance = 1e-10;
  DerivativeKind Derivatives = DerivativeKind::Richardson;
  int Threads = 0;         // at most; 0 for as many as the process may use
  bool TryHarder = false;  // where a nonlinear search fails, go on
  int UnchangedIterations = 10;
  int MaxIterations = 250;
  bool AbsoluteDeviations = false;  // the given standard deviations are taken at their word
  LossKind Loss = LossKind::Squares;
  double LossScale = 0;      // 0: from the residuals
  bool Diagnostics = false;  // tell whether the answers are to be trusted
  // What of it takes fits of its own: limits by the profile likelihood, so many samples of the residuals or of whole
  // points, and so many parts that are left out in turn; 0 for none.
  bool ProfileLimits = false;
  int Bootstrap = 0;
  bool ResampleCases = false;
  int CrossValidation = 0;
  int IndependentVariables = 1;
  bool DelimitTab = true, DelimitSemicolon = true, DelimitComma = true, DelimitSpace = true;
  bool IgnoreConsecutive = true;
  std::string InputDelimitText;  // the statement's value, from which the five flags were read
  std::string OutputFormat = "structured";
  bool OutputFitInfo = true;
  bool TableDataFile = false, TableCalcData = false, TableErrorData = false, TableMinMaxError = false;
  bool TableConfidence = false, TablePrediction = false;  // the limits of the curve, and of a new point
  int SortKey = 1;                                        // one of kSortKeys
  std::string OutputDelimit = "\t";
  bool OverrideDecimal = true;
  std::string MissingData;
  std::string DataFile;
  std::string DataFirstLine = "1";
  std::string OutputFile;
  std::string ResultFile;  // has a line for each run; an output file is then not required
  bool RequireSolution = false, StrictStatus = false, SolveEachRun = false;
  bool DataSeries = false;  // each Y column of the data is a run of its own
  std::string Comment;
  std::string SQLQuery;
  std::string ColumnOrder = "Default";
  bool Weighted = false;
  std::string WeightedText;  // the statement's value
  std::string PlotFile;      // the names of plots, one a line
  std::string PlotTemplate;  // what their look is taken from
  int PlotModels = 1;        // so many of the best at most
  int PlotKind = 0;          // a ResultPlotKind, by the number of its word
  int PlotBands = 0;         // 1 shades where the curve lies, 2 where a new point would, 3 both
  std::string CodeFile;      // the names of what the best model is written to as code, one a line
  std::string ReportFile;    // the names of reports on the best model, one a line
  bool LogEnabled = false;
  std::string LogFile, LogFileTyped;  // in lower case, and as it was typed
  bool LogSummaryOnly = false;
  bool UseParameterFile = false;
  std::string ParameterFile, ParameterFileTyped;
};

// The defaults, with the solver's limits from the user's preferences.
void InitMacroSetup(MacroSetup& setup, const Settings& preferences);

// Puts the setup's limits of the solver in the place of those of the preferences.
void TakeLimits(const MacroSetup& setup, Settings& preferences);

// The data file as log and answers name it; where that is a connect string, without the password in it.
std::string DataSourceText(const MacroSetup& setup);

// Why no data can be read with so many variables, a sentence; empty where they can.
std::string VariablesFault(const MacroSetup& setup);

// Whether the points are wanted in the order of the source, too: by a project, or a plot. The runs of a table of
// parameters may come to ask for a project without reading again.
bool KeepsUnsorted(const MacroSetup& setup);

}  // namespace quorvex
