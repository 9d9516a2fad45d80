#include "macro/MacroStatements.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>
#include <utility>

#include "core/NumberText.h"
#include "core/SolveData.h"

namespace quorvex {
namespace {

using S = MacroSetup;
using F = MacroFields;

constexpr MacroWord kHandShake[] = {{"UseDDE", &S::UseDDE, &F::UseDDE},
                                    {"ShowProgress", &S::ShowProgress, &F::ShowProgress},
                                    {"ShowMessageBox", &S::ShowMessageBox, &F::ShowMessageBox}};
constexpr MacroWord kInputDelimit[] = {
    {"Tab", &S::DelimitTab, &F::DelimitTab},
    {"Comma", &S::DelimitComma, &F::DelimitComma},
    {"SemiColon", &S::DelimitSemicolon, &F::DelimitSemicolon},
    {"Space", &S::DelimitSpace, &F::DelimitSpace},
    {"IgnoreConsecutive", &S::IgnoreConsecutive, &F::IgnoreConsecutive, /*Suffices=*/false}};
constexpr MacroWord kTableOutput[] = {{"DataFile", &S::TableDataFile, &F::TableDataFile},
                                      {"CalcData", &S::TableCalcData, &F::TableCalcData},
                                      {"ErrorData", &S::TableErrorData, &F::TableErrorData},
                                      {"MinMaxError", &S::TableMinMaxError, &F::TableMinMaxError},
                                      {"Confidence", &S::TableConfidence, &F::TableConfidence},
                                      {"Prediction", &S::TablePrediction, &F::TablePrediction}};
constexpr std::string_view kDerivatives[] = {"Richardson", "CentralDifference", "Exact"};
constexpr std::string_view kOutputFormat[] = {"Quorvex", "Structured", "Spreadsheet"};
constexpr std::string_view kOutputDelimit[] = {"Tab", "Comma", "SemiColon", "Space"};

constexpr std::string_view kPlotModels[] = {"best", "all"};
constexpr std::string_view kPlotKind[] = {"Model", "Residuals", "Probability", "Profile"};
constexpr std::string_view kPlotBands[] = {"None", "Confidence", "Prediction", "Both"};
constexpr std::string_view kStandardDeviations[] = {"Relative", "Absolute"};
constexpr std::string_view kLimits[] = {"Symmetric", "Profile"};
constexpr std::string_view kBootstrapKind[] = {"Residuals", "Cases"};

bool ReadOutputFormat(MacroSetup& setup, std::string_view value) {
  setup.OutputFormat = value;
  return true;
}

bool ReadOutputQuorvexFormat(MacroSetup& setup, std::string_view value) {
  setup.OutputFormat = EqualNoCase(value, "true") ? "Quorvex" : "Structured";
  return true;
}

// Of several words the last one here counts; without any of them what was said before stays.
bool ReadOutputDelimit(MacroSetup& setup, std::string_view value) {
  constexpr std::pair<std::string_view, std::string_view> kDelimiters[] = {
      {"tab", "\t"}, {"comma", ","}, {"space", " "}, {"semicolon", ";"}};
  for (const auto& [word, delimiter] : kDelimiters)
    if (ContainsNoCase(value, word)) setup.OutputDelimit = delimiter;
  return true;
}

bool ReadSortKey(MacroSetup& setup, std::string_view value) {
  setup.SortKey = 1;
  for (std::size_t key = 0; key < kSortKeys.size(); ++key)
    if (EqualNoCase(value, kSortKeys[key])) setup.SortKey = static_cast<int>(key) + 1;
  return true;
}

bool ReadPlotModels(MacroSetup& setup, std::string_view value) {
  constexpr int kAll = std::numeric_limits<int>::max();
  const double number = EqualNoCase(value, "best")  ? 1
                        : EqualNoCase(value, "all") ? kAll
                                                    : NumericText(value).value_or(0);
  if (number < 1 || number != std::floor(number)) return false;
  setup.PlotModels = number < kAll ? static_cast<int>(number) : kAll;
  return true;
}

// Stores the number of the word in the field, which may be of any kind that numbers stand for.
template <const auto& words, auto field>
bool ReadWord(MacroSetup& setup, std::string_view value) {
  const auto word = std::ranges::find_if(words, [&](std::string_view each) { return EqualNoCase(each, value); });
  if (word == std::end(words)) return false;
  setup.*field = static_cast<std::remove_cvref_t<decltype(setup.*field)>>(word - std::begin(words));
  return true;
}

constexpr double kMostSamples = 100000, kMostParts = 32000;

constexpr MacroStatement kStatements[] = {
    {.Keyword = "Comment", .Value = LinesValue{&S::Comment, &F::Comments, "        "}},
    {.Keyword = "HandShake",
     .Value = WordsValue{.Words = kHandShake, .Adds = true},
     .FoundAt = 1,
     .Missing = "No interactive options have been set (Configuration Tab)."},
    {.Keyword = "RegressionTolerance",
     .Value = LimitValue<double>{&S::RegressionTolerance, &Settings::ResidualTolerance, &F::RegressionTolerance},
     .FoundAt = 2,
     .Missing = "Regression tolerance has not been specified (Configuration Tab). Default value will be used."},
    {.Keyword = "UnchangedIterations",
     .Value = LimitValue<int>{&S::UnchangedIterations, &Settings::DivIterations, &F::UnchangedIterations},
     .FoundAt = 4,
     .Missing = "Maximum number of unchanged iterations has not been specified (Configuration Tab). Default value will "
                "be used."},
    {.Keyword = "MaxIterations",
     .Value = LimitValue<int>{&S::MaxIterations, &Settings::MaxIterations, &F::MaxIterations},
     .FoundAt = 3,
     .Missing = "Maximum number of iterations has not been specified (Configuration Tab). Default value will be used."},
    {.Keyword = "Derivatives",
     .Value = DerivativesValue{kDerivatives, &S::Derivatives, &Settings::DerivativeMethod, &F::Derivatives}},
    {.Keyword = "Threads",
     .Value = NumberValue<int>{&S::Threads, &F::Threads, "a whole number from 1 to 1024"},
     .UnlessDefault = true,
     .FoundAt = 6,
     .Invalid = "The number of threads is invalid (Configuration Tab).",
     .Least = 1,
     .Most = 1024},
    {.Keyword = "TryHarder", .Value = FlagValue{&S::TryHarder, &F::TryHarder}, .Only = &F::TryHarder},
    {.Keyword = "StandardDeviations",
     .Value = ChoiceValue{kStandardDeviations, ReadWord<kStandardDeviations, &S::AbsoluteDeviations>,
                          &F::StandardDeviations},
     .UnlessDefault = true},
    {.Keyword = "Loss",
     .Value = ChoiceValue{kLossNames, ReadWord<kLossNames, &S::Loss>, &F::Loss},
     .UnlessDefault = true},
    {.Keyword = "LossScale",
     .Value = NumberValue<double>{&S::LossScale, &F::LossScale, "a number above 0"},
     .UnlessDefault = true,
     .FoundAt = 5,
     .Invalid = "The scale of the loss is invalid (Configuration Tab).",
     .Least = std::numeric_limits<double>::denorm_min(),
     .Most = std::numeric_limits<double>::max()},

    {.Keyword = "DataFile",
     .Value = TextValue{.Read = &S::DataFile, .Typed = &F::DataFile, .Placeholder = "********.***"},
     .FoundAt = 7,
     .MissingIsError = true,
     .Missing = "Input data file has not been specified (Input Tab)."},
    {.Keyword = "DataFirstLine",
     .Value = TextValue{.Read = &S::DataFirstLine, .Typed = &F::DataFirstLine, .Placeholder = "1", .LowerCase = true},
     .FoundAt = 9,
     .Invalid = "The first line containing data specified is invalid (Input Tab).",
     .Least = 1},
    {.Keyword = "IndependentVariables",
     .Value = VariablesValue{&S::IndependentVariables, &F::IndependentVariables, "*"},
     .FoundAt = 8,
     .MissingIsError = true,
     .Missing = "The number of independent variables has not been specified (Input Tab).",
     .Invalid = "The number of independent variables specified is invalid (Input Tab).",
     .Least = 1,
     .Most = kMostIndependentVariables},
    {.Keyword = "Weighted", .Value = FlagValue{&S::Weighted, &F::Weighted, &S::WeightedText}},
    {.Keyword = "SQLQuery",
     .Value = TextValue{.Read = &S::SQLQuery, .Typed = &F::SQLQuery, .Placeholder = "***********"},
     .Only = &F::UseSQLQuery,
     .FoundAt = 10,
     .MissingIsError = true,
     .Missing = "SQL Query was requested but no query string is specified (Input Tab)."},
    {.Keyword = "ParameterFile",
     .Value = TextValue{.Read = &S::ParameterFile,
                        .Typed = &F::ParameterFile,
                        .Placeholder = "***********",
                        .LowerCase = true,
                        .Given = &S::UseParameterFile,
                        .AsTyped = &S::ParameterFileTyped},
     .Only = &F::UseParameterFile,
     .FoundAt = 11,
     .MissingIsError = true,
     .Missing = "Parameter file input was requested but no parameter file is specified (Input Tab)."},
    {.Keyword = "SolveEachRun", .Value = FlagValue{&S::SolveEachRun, &F::SolveEachRun}, .Only = &F::SolveEachRun},
    {.Keyword = "DataSeries", .Value = FlagValue{&S::DataSeries, &F::DataSeries}, .Only = &F::DataSeries},
    {.Keyword = "ColumnOrder",
     .Value =
         TextValue{.Read = &S::ColumnOrder, .Typed = &F::ColumnOrder, .Empty = EmptyText::MeansDefault, .IsList = true},
     .FoundAt = 12,
     .Missing = "Data source column order was not specified (Input Tab). Default value will be used."},
    {.Keyword = "InputDelimit",
     .Value = WordsValue{.Words = kInputDelimit, .Text = &S::InputDelimitText},
     .FoundAt = 13,
     .MissingIsError = true,
     .Missing = "No delimiters were specified for parsing the input file (Input Tab)."},
    {.Keyword = "OverrideDecimal", .Value = FlagValue{&S::OverrideDecimal, &F::OverrideDecimal}},
    {.Keyword = "MissingData",
     .Value = TextValue{.Read = &S::MissingData,
                        .Typed = &F::MissingData,
                        .Placeholder = "********",
                        .Empty = EmptyText::IsIgnored},
     .Only = &F::UseMissingData,
     .FoundAt = 14,
     .MissingIsError = true,
     .Missing = "Marker for missing data not specified (Input Tab)."},

    {.Keyword = "OutputFile",
     .Value = TextValue{.Read = &S::OutputFile, .Typed = &F::OutputFile, .Placeholder = "********.***"},
     .Instead = &F::ResultFile,
     .FoundAt = 15,
     .MissingIsError = true,
     .Missing = "No output file name is specified (Output Tab)."},
    {.Keyword = "ResultFile", .Value = TextValue{.Read = &S::ResultFile, .Typed = &F::ResultFile}},
    {.Keyword = "OutputFormat",
     .Value = ChoiceValue{kOutputFormat, ReadOutputFormat, &F::OutputFormat, &S::OutputFormat}},
    {.Keyword = "OutputQuorvexFormat", .Value = ChoiceValue{{}, ReadOutputQuorvexFormat, nullptr}},
    {.Keyword = "LogFile",
     .Value = TextValue{.Read = &S::LogFile,
                        .Typed = &F::LogFile,
                        .Placeholder = "********.***",
                        .LowerCase = true,
                        .Given = &S::LogEnabled,
                        .AsTyped = &S::LogFileTyped},
     .Only = &F::UseLogFile,
     .FoundAt = 16,
     .MissingIsError = true,
     .Missing = "Log output was requested but no log file name is specified (Output Tab)."},
    {.Keyword = "LogSummaryOnly", .Value = FlagValue{&S::LogSummaryOnly, &F::LogSummaryOnly}, .Only = &F::UseLogFile},
    {.Keyword = "RequireSolution",
     .Value = FlagValue{&S::RequireSolution, &F::RequireSolution},
     .Only = &F::RequireSolution},
    {.Keyword = "StrictStatus", .Value = FlagValue{&S::StrictStatus, &F::StrictStatus}, .Only = &F::StrictStatus},
    {.Keyword = "OutputDelimit",
     .Value = ChoiceValue{kOutputDelimit, ReadOutputDelimit, &F::OutputDelimit},
     .OfTexts = true},
    {.Keyword = "TableOutput", .Value = WordsValue{.Words = kTableOutput}, .OfTexts = true},
    {.Keyword = "SortKey", .Value = ChoiceValue{kSortKeys, ReadSortKey, &F::SortKey}, .OfTexts = true},
    {.Keyword = "OutputFitInfo", .Value = FlagValue{&S::OutputFitInfo, &F::OutputFitInfo}, .OfTexts = true},

    {.Keyword = "PlotFile",
     .Value = LinesValue{.Read = &S::PlotFile, .Typed = &F::PlotFiles, .Placeholder = "********.***"},
     .Only = &F::UsePlots,
     .FoundAt = 17,
     .MissingIsError = true,
     .Missing = "Plots were requested but no plot file name is specified (Output Tab)."},
    {.Keyword = "PlotTemplate",
     .Value = TextValue{.Read = &S::PlotTemplate, .Typed = &F::PlotTemplate},
     .Only = &F::UsePlots},
    {.Keyword = "PlotModels",
     .Value =
         ChoiceValue{
             .Words = kPlotModels, .Read = ReadPlotModels, .Chosen = &F::PlotModels, .Otherwise = "a number from 1"},
     .Only = &F::UsePlots,
     .FoundAt = 18,
     .Invalid = "The number of models to plot is invalid (Output Tab)."},
    {.Keyword = "PlotKind",
     .Value = ChoiceValue{kPlotKind, ReadWord<kPlotKind, &S::PlotKind>, &F::PlotKind},
     .Only = &F::UsePlots},
    {.Keyword = "PlotBands",
     .Value = ChoiceValue{kPlotBands, ReadWord<kPlotBands, &S::PlotBands>, &F::PlotBands},
     .Only = &F::UsePlots,
     .UnlessDefault = true},
    {.Keyword = "CodeFile",
     .Value = LinesValue{.Read = &S::CodeFile, .Typed = &F::CodeFiles, .Placeholder = "********.***"},
     .Only = &F::UseCode,
     .FoundAt = 21,
     .MissingIsError = true,
     .Missing = "Code was requested but no code file name is specified (Output Tab)."},

    {.Keyword = "ReportFile", .Value = LinesValue{.Read = &S::ReportFile, .Typed = &F::ReportFiles}},

    {.Keyword = "Diagnostics", .Value = FlagValue{&S::Diagnostics, &F::Diagnostics}, .Only = &F::Diagnostics},
    {.Keyword = "Limits",
     .Value = ChoiceValue{kLimits, ReadWord<kLimits, &S::ProfileLimits>, &F::Limits},
     .UnlessDefault = true},
    {.Keyword = "Bootstrap",
     .Value = NumberValue<int>{&S::Bootstrap, &F::Bootstrap, "a whole number from 1 to 100000"},
     .UnlessDefault = true,
     .FoundAt = 19,
     .Invalid = "The number of bootstrap samples is invalid (Diagnosis Tab).",
     .Least = 1,
     .Most = kMostSamples},
    {.Keyword = "BootstrapKind",
     .Value = ChoiceValue{kBootstrapKind, ReadWord<kBootstrapKind, &S::ResampleCases>, &F::BootstrapKind},
     .UnlessDefault = true},
    {.Keyword = "CrossValidation",
     .Value = NumberValue<int>{&S::CrossValidation, &F::CrossValidation, "a whole number from 2 to 32000"},
     .UnlessDefault = true,
     .FoundAt = 20,
     .Invalid = "The number of parts of the cross-validation is invalid (Diagnosis Tab).",
     .Least = 2,
     .Most = kMostParts},
};

}  // namespace

std::string DerivativeWord(DerivativeKind kind) { return std::string(kDerivatives[static_cast<std::size_t>(kind)]); }

std::span<const MacroStatement> MacroStatements() { return kStatements; }

const MacroStatement* FindStatement(std::string_view keyword) {
  const auto found = std::ranges::find_if(
      kStatements, [&](const MacroStatement& statement) { return EqualNoCase(statement.Keyword, keyword); });
  return found == std::end(kStatements) ? nullptr : found;
}

std::string MacroFields::*TypedField(const MacroStatement& statement) {
  return std::visit(
      [](const auto& value) -> std::string MacroFields::* {
        if constexpr (requires { value.Typed; })
          return value.Typed;
        else
          return nullptr;
      },
      statement.Value);
}

std::optional<double> NumberWithin(const MacroStatement& statement, std::string_view value, const LocaleText& locale) {
  const std::optional<double> number = NumericText(value, locale.DecimalSeparator);
  if (!number || !(*number >= statement.Least && *number <= statement.Most)) return std::nullopt;
  const bool wantsWhole = std::holds_alternative<NumberValue<int>>(statement.Value);
  return wantsWhole && *number != std::floor(*number) ? std::nullopt : number;
}

std::string MacroSetup::*KeptText(const MacroStatement& statement) {
  return std::visit(
      [](const auto& value) -> std::string MacroSetup::* {
        if constexpr (requires { value.Text; })
          return value.Text;
        else if constexpr (std::is_same_v<decltype(value.Read), std::string MacroSetup::*>)
          return value.Read;
        else
          return nullptr;
      },
      statement.Value);
}

void ReadFlag(const FlagValue& flag, std::string_view value, MacroSetup& setup) {
  if (flag.Text != nullptr) setup.*flag.Text = value;
  setup.*flag.Read = EqualNoCase(value, "true");
}

void ReadWords(const WordsValue& words, std::string_view value, MacroSetup& setup) {
  if (words.Text != nullptr) setup.*words.Text = value;
  for (const MacroWord& word : words.Words)
    setup.*word.Read = (words.Adds && setup.*word.Read) || ContainsNoCase(value, word.Word);
}

void ReadKeptText(const MacroStatement& statement, MacroSetup& setup) {
  if (const auto* flag = std::get_if<FlagValue>(&statement.Value))
    ReadFlag(*flag, std::string(setup.*flag->Text), setup);
  if (const auto* words = std::get_if<WordsValue>(&statement.Value))
    ReadWords(*words, std::string(setup.*words->Text), setup);
}

}  // namespace quorvex
