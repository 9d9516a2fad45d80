#pragma once

#include <string>
#include <vector>

namespace quorvex {

// Which models of the project a macro is written for.
enum class MacroModels { Solved, UserDefined, PreDefined, All, Ticked };

// The fields of the macro editor as they stand, texts as typed. The initial state is what the reader takes where a
// macro says nothing.
struct MacroFields {
  // Configuration
  std::string Comments;  // any number of lines
  bool UseDDE = false, ShowProgress = false, ShowMessageBox = false;
  std::string RegressionTolerance, UnchangedIterations, MaxIterations;
  std::string Derivatives = "Richardson";  // or "CentralDifference", "Exact"
  std::string Threads;                     // as many as the process may use where it is empty
  bool TryHarder = false;
  std::string StandardDeviations = "Relative";  // or "Absolute"
  std::string Loss = "Squares";                 // one of kLossNames
  std::string LossScale;

  // Input
  std::string DataFile;  // or the connect string of a database
  std::string DataFirstLine = "1";
  std::string IndependentVariables;
  bool Weighted = false;
  bool UseSQLQuery = false;
  std::string SQLQuery;
  bool UseParameterFile = false;
  std::string ParameterFile;
  std::string ColumnOrder;
  bool DelimitTab = true, DelimitComma = true, DelimitSemicolon = true, DelimitSpace = true;
  bool IgnoreConsecutive = true;
  bool OverrideDecimal = true;
  bool DataSeries = false;
  bool SolveEachRun = false, RequireSolution = false, StrictStatus = false;
  bool UseMissingData = false;
  std::string MissingData;

  // Output
  std::string OutputFile;
  std::string ResultFile;
  std::string OutputFormat = "Structured";  // or "Quorvex", "Spreadsheet"
  bool UseLogFile = false;
  std::string LogFile;
  bool LogSummaryOnly = false;
  std::string OutputDelimit = "Tab";  // or "Comma", "SemiColon", "Space"
  bool TableDataFile = false, TableCalcData = false, TableErrorData = false, TableMinMaxError = false;
  bool TableConfidence = false, TablePrediction = false;
  std::string SortKey = "RSS";  // one of kSortKeys
  bool OutputFitInfo = true;
  bool UsePlots = false;
  std::string PlotFiles;  // one a line
  std::string PlotTemplate;
  std::string PlotModels = "best";  // or "all", or a number
  std::string PlotKind = "Model";   // or "Residuals", "Probability", "Profile"
  std::string PlotBands = "None";   // or "Confidence", "Prediction", "Both"
  bool UseCode = false;
  std::string CodeFiles;    // one a line
  std::string ReportFiles;  // one a line

  // Diagnosis
  bool Diagnostics = false;
  std::string Limits = "Symmetric";  // or "Profile"
  std::string Bootstrap;
  std::string BootstrapKind = "Residuals";  // or "Cases"
  std::string CrossValidation;

  // Models
  MacroModels Models = MacroModels::Solved;
  std::vector<std::string> TickedModels;  // IDs, for MacroModels::Ticked
};

}  // namespace quorvex
