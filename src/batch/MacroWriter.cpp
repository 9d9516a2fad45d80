#include "batch/MacroWriter.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "batch/MacroSetup.h"
#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/SolveData.h"

namespace quorvex {
namespace {

// A field as a statement can hold it; a line end of two characters becomes one blank.
std::string OneLine(std::string_view text) {
  std::string line;
  while (!text.empty()) {
    if (!line.empty()) line += ' ';
    line += TakeLine(text);
  }
  std::replace(line.begin(), line.end(), '\t', ' ');
  return std::string(Trim(line));
}

std::string TrueOrFalse(bool value) { return value ? "True" : "False"; }

struct Item {
  std::string_view Word;
  bool Chosen;
};

class Writer {
 public:
  Writer(const Settings& preferences, const LocaleText& locale) : preferences_(preferences), locale_(locale) {}

  std::string Write(const MacroFields& fields, const std::vector<const ModelClass*>& models) {
    Line(0, "B_MACRO");
    Configuration(fields);
    Input(fields);
    Output(fields);
    for (const ModelClass* model : models) Model(*model);
    Line(0, "E_MACRO");
    return std::move(buffer_);
  }

 private:
  void Configuration(const MacroFields& fields);
  void Input(const MacroFields& fields);
  void Output(const MacroFields& fields);
  void Model(const ModelClass& model);

  void Line(std::size_t indent, std::string_view text) { buffer_.append(indent, ' ').append(text).append(NL); }
  void Statement(std::string_view keyword, std::string_view value) {
    Line(4, std::string(keyword) + " = " + OneLine(value));
  }
  void Statement(std::string_view keyword, std::string_view value, std::string_view otherwise) {
    const std::string text = OneLine(value);
    Statement(keyword, text.empty() ? otherwise : text);
  }
  // The chosen items, separated as the locale separates lists; nothing where there is none.
  void List(std::string_view keyword, std::initializer_list<Item> items) {
    std::string text;
    for (const Item& item : items) {
      if (!item.Chosen) continue;
      text += text.empty() ? " " : std::string(1, locale_.ListSeparator) + ' ';
      text += item.Word;
    }
    if (!text.empty()) Line(4, std::string(keyword) + " =" + text);
  }

  const Settings& preferences_;
  const LocaleText& locale_;
  std::string buffer_;
};

void Writer::Configuration(const MacroFields& fields) {
  for (std::string_view rest = fields.Comments; !rest.empty();) Statement("Comment", TakeLine(rest));
  List("HandShake",
       {{"UseDDE", fields.UseDDE}, {"ShowProgress", fields.ShowProgress}, {"ShowMessageBox", fields.ShowMessageBox}});
  Statement("RegressionTolerance", fields.RegressionTolerance,
            LocalizeExpression(GeneralNumber(preferences_.ResidualTolerance), locale_));
  Statement("UnchangedIterations", fields.UnchangedIterations, std::to_string(preferences_.DivIterations));
  Statement("MaxIterations", fields.MaxIterations, std::to_string(preferences_.MaxIterations));
  Statement("Derivatives", fields.CentralDifference ? "CentralDifference" : "Richardson");
}

void Writer::Input(const MacroFields& fields) {
  Statement("DataFile", fields.DataFile, "********.***");
  Statement("DataFirstLine", fields.DataFirstLine, "1");
  Statement("IndependentVariables", fields.IndependentVariables, "*");
  Statement("Weighted", TrueOrFalse(fields.Weighted));
  if (fields.UseSQLQuery) Statement("SQLQuery", fields.SQLQuery, "***********");
  if (fields.UseParameterFile) Statement("ParameterFile", fields.ParameterFile, "***********");
  if (!OneLine(fields.ColumnOrder).empty()) Statement("ColumnOrder", fields.ColumnOrder);
  List("InputDelimit", {{"Tab", fields.DelimitTab},
                        {"Comma", fields.DelimitComma},
                        {"SemiColon", fields.DelimitSemicolon},
                        {"Space", fields.DelimitSpace},
                        {"IgnoreConsecutive", fields.IgnoreConsecutive}});
  Statement("OverrideDecimal", TrueOrFalse(fields.OverrideDecimal));
  if (fields.UseMissingData) Statement("MissingData", fields.MissingData, "********");
}

void Writer::Output(const MacroFields& fields) {
  Statement("OutputFile", fields.OutputFile, "********.***");
  Statement("OutputFormat", fields.OutputFormat);
  if (fields.UseLogFile) {
    Statement("LogFile", fields.LogFile, "********.***");
    Statement("LogSummaryOnly", TrueOrFalse(fields.LogSummaryOnly));
  }
  if (EqualNoCase(fields.OutputFormat, "Quorvex")) return;  // a project file has its own layout
  Statement("OutputDelimit", fields.OutputDelimit);
  List("TableOutput", {{"DataFile", fields.TableDataFile},
                       {"CalcData", fields.TableCalcData},
                       {"ErrorData", fields.TableErrorData},
                       {"MinMaxError", fields.TableMinMaxError}});
  Statement("SortKey", fields.SortKey);
  Statement("OutputFitInfo", TrueOrFalse(fields.OutputFitInfo));
}

// A built-in model is found again by its formula; one of the user's also needs its starts and derivatives.
void Writer::Model(const ModelClass& model) {
  const std::string separator(1, locale_.ListSeparator);
  Line(4, "B_MODEL");
  Line(8, "ID = " + OneLine(model.id));
  for (int i = 1; i <= 9; ++i)
    if (!model.FunctionList(i).empty()) Line(8, "F" + std::to_string(i) + " = " + OneLine(model.FunctionList(i)));
  Line(8, "Y = " + OneLine(model.FunctionList(0)));
  for (int i = 1; model.UserType && i <= model.NumDependentVar(); ++i)
    Line(8, "Assign " + model.Variables(i) + " = " + model.RuleConstant(i) + separator +
                " Operator = " + model.Rules(i) + separator + " Fit = " + TrueOrFalse(model.Constants(i) == 1) +
                separator + " Derivative = " + OneLine(model.Derivatives(i)));
  Line(4, "E_MODEL");
}

bool IsChosen(const ModelClass& model, const MacroFields& fields) {
  switch (fields.Models) {
    case MacroModels::Solved:
      return model.Solved;
    case MacroModels::UserDefined:
      return model.UserType;
    case MacroModels::PreDefined:
      return !model.UserType;
    case MacroModels::All:
      return true;
    case MacroModels::Ticked:
      break;
  }
  return std::any_of(fields.TickedModels.begin(), fields.TickedModels.end(),
                     [&](const std::string& id) { return EqualNoCase(id, model.id); });
}

}  // namespace

MacroFields FieldsFor(std::size_t independentVariables, bool weighted, const Settings& preferences,
                      const LocaleText& locale) {
  MacroFields fields;
  fields.RegressionTolerance = LocalizeExpression(GeneralNumber(preferences.ResidualTolerance), locale);
  fields.UnchangedIterations = std::to_string(preferences.DivIterations);
  fields.MaxIterations = std::to_string(preferences.MaxIterations);
  fields.CentralDifference = preferences.DerivativeMethod == 1;
  fields.IndependentVariables = std::to_string(independentVariables);
  fields.Weighted = weighted;
  const int sort = preferences.Integer("sortindex");
  if (sort >= 1 && sort <= static_cast<int>(kSortKeys.size()))
    fields.SortKey = kSortKeys[static_cast<std::size_t>(sort - 1)];
  return fields;
}

std::vector<const ModelClass*> ChosenModels(const MacroFields& fields, const ModelCollection& models) {
  std::vector<const ModelClass*> chosen;
  for (const auto& model : models)
    if (IsChosen(*model, fields)) chosen.push_back(model.get());
  return chosen;
}

std::string BuildMacroText(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                           const LocaleText& locale) {
  return Writer(preferences, locale).Write(fields, ChosenModels(fields, models));
}

std::string MacroFindings::Count() const {
  return "There were " + std::to_string(Errors) + " error(s) and " + std::to_string(Warnings) + " warning(s).";
}

MacroFindings CheckMacro(const MacroFields& fields, const ModelCollection& models, const LocaleText& locale) {
  const auto isEmpty = [](const std::string& field) { return OneLine(field).empty(); };
  // What is no number counts as 0.
  const auto value = [&](const std::string& field) { return NumericText(field, locale.DecimalSeparator).value_or(0); };
  const double variables = value(fields.IndependentVariables);

  const struct {
    bool IsError, Found;
    std::string_view Text;
  } checks[] = {
      {false, !fields.UseDDE && !fields.ShowProgress && !fields.ShowMessageBox,
       "No interactive options have been set (Configuration Tab)."},
      {false, isEmpty(fields.RegressionTolerance),
       "Regression tolerance has not been specified (Configuration Tab). Default value will be used."},
      {false, isEmpty(fields.MaxIterations),
       "Maximum number of iterations has not been specified (Configuration Tab). Default value will be used."},
      {false, isEmpty(fields.UnchangedIterations),
       "Maximum number of unchanged iterations has not been specified (Configuration Tab). Default value will be "
       "used."},
      {true, isEmpty(fields.DataFile), "Input data file has not been specified (Input Tab)."},
      {true, !isEmpty(fields.IndependentVariables) && (variables < 1 || variables > kMostIndependentVariables),
       "The number of independent variables specified is invalid (Input Tab)."},
      {true, isEmpty(fields.IndependentVariables),
       "The number of independent variables has not been specified (Input Tab)."},
      {true, !isEmpty(fields.DataFirstLine) && value(fields.DataFirstLine) < 1,
       "The first line containing data specified is invalid (Input Tab)."},
      {true, fields.UseSQLQuery && isEmpty(fields.SQLQuery),
       "SQL Query was requested but no query string is specified (Input Tab)."},
      {true, fields.UseParameterFile && isEmpty(fields.ParameterFile),
       "Parameter file input was requested but no parameter file is specified (Input Tab)."},
      {false, isEmpty(fields.ColumnOrder),
       "Data source column order was not specified (Input Tab). Default value will be used."},
      {true, !fields.DelimitTab && !fields.DelimitComma && !fields.DelimitSemicolon && !fields.DelimitSpace,
       "No delimiters were specified for parsing the input file (Input Tab)."},
      {true, fields.UseMissingData && isEmpty(fields.MissingData),
       "Marker for missing data not specified (Input Tab)."},
      {true, isEmpty(fields.OutputFile), "No output file name is specified (Output Tab)."},
      {true, fields.UseLogFile && isEmpty(fields.LogFile),
       "Log output was requested but no log file name is specified (Output Tab)."},
      {true, ChosenModels(fields, models).empty(), "No regression models have been selected (Models Tab)."},
  };

  MacroFindings findings;
  for (const auto& check : checks) {
    if (!check.Found) continue;
    ++(check.IsError ? findings.Errors : findings.Warnings);
    findings.Lines.push_back((check.IsError ? "ERROR: " : "Warning: ") + std::string(check.Text));
  }
  return findings;
}

bool ExportMacro(const MacroFields& fields, const ModelCollection& models, const Settings& preferences,
                 const LocaleText& locale, Prompter& prompter) {
  const MacroFindings findings = CheckMacro(fields, models, locale);
  if (!findings.Lines.empty() &&
      !prompter.Ask("There are " + std::to_string(findings.Errors) + " errors and " +
                    std::to_string(findings.Warnings) + " warnings. Do you want to export the file anyway?"))
    return false;
  const auto name = prompter.ChooseFileToSave("Export Macro", "Quorvex Macro files (*.cfg)", "cfg");
  if (!name) return false;

  const bool written = SaveFile(*name, BuildMacroText(fields, models, preferences, locale), FileCare::Answer) == 0;
  if (written)
    prompter.Inform("The file '" + *name + "' contains the exported macro.");
  else
    prompter.Refuse("Error saving macro to '" + *name + "'.");
  return written;
}

}  // namespace quorvex
