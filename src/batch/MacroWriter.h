#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/ModelCollection.h"

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
  bool CentralDifference = false;  // else Richardson's extrapolation

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
  bool UseMissingData = false;
  std::string MissingData;

  // Output
  std::string OutputFile;
  std::string OutputFormat = "Structured";  // or "Quorvex", "Spreadsheet"
  bool UseLogFile = false;
  std::string LogFile;
  bool LogSummaryOnly = false;
  std::string OutputDelimit = "Tab";  // or "Comma", "SemiColon", "Space"
  bool TableDataFile = false, TableCalcData = false, TableErrorData = false, TableMinMaxError = false;
  std::string SortKey = "RSS";  // one of kSortKeys
  bool OutputFitInfo = true;

  // Models
  MacroModels Models = MacroModels::Solved;
  std::vector<std::string> TickedModels;  // IDs, for MacroModels::Ticked
};

// The fields that the editor opens with for data of that kind: the solver limits of the preferences stand in them, so
// that the macro does not depend on who runs it.
MacroFields FieldsFor(std::size_t independentVariables, bool weighted, const Settings& preferences,
                      const LocaleText& locale);

// The models of the project that the fields choose, in the project's order.
std::vector<const ModelClass*> ChosenModels(const MacroFields& fields, const ModelCollection& models);

// The macro that the fields and the chosen models of the project make, lines ended by NL, numbers and lists in the
// locale's form. Required fields that are empty get a placeholder of asterisks, solver limits the user's preference.
// Line ends and tabs within a field become blanks, since a statement is one line and its tabs are lost when it is read.
std::string BuildMacroText(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                           const LocaleText& locale);

// What the editor finds before a macro is shown or exported.
struct MacroFindings {
  std::vector<std::string> Lines;  // each begins "Warning: " or "ERROR: "
  int Errors = 0, Warnings = 0;

  // "There were 1 error(s) and 2 warning(s)."
  std::string Count() const;
};

MacroFindings CheckMacro(const MacroFields& fields, const ModelCollection& models, const LocaleText& locale);

// The command of the editor's export button: checks, asks whether to go on where something was found, asks for a name
// and writes the file. True when it was written.
bool ExportMacro(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                 const LocaleText& locale, Prompter& prompter);

}  // namespace quorvex
