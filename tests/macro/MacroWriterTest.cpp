#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <tuple>

#include "Golden.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "engine/EqClass.h"
#include "engine/LoadModelCatalog.h"
#include "engine/MvClass.h"
#include "macro/MacroReader.h"
#include "macro/MacroWriter.h"

namespace quorvex {
namespace {

const LocaleText kPoint;
const LocaleText kComma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.', .DateSeparator = '.'};

// A model of the user's; the texts are in stored form and are put into the locale's, as if typed there.
ModelClass& AddUserModel(ModelCollection& models, int variables, const std::string& id, std::vector<std::string> lines,
                         const LocaleText& locale) {
  std::unique_ptr<ModelClass> model;
  if (variables == 1)
    model = std::make_unique<EqClass>(locale);
  else
    model = std::make_unique<MvClass>(locale);
  for (std::string& line : lines) line = LocalizeExpression(line, locale);
  model->SetID(id, std::move(lines));
  EXPECT_TRUE(model->IsValidEquation()) << id;
  return *models.Add(id, std::move(model));
}

void SetCoefficient(ModelClass& model, int i, const std::string& rule, const std::string& constant, bool free,
                    const std::string& derivative, const LocaleText& locale) {
  model.SetRule(i, rule);
  model.SetRuleConstant(i, LocalizeExpression(constant, locale));
  model.SetConstant(i, free ? 1 : 0);
  model.SetDerivative(i, LocalizeExpression(derivative, locale));
}

// What the models tab shows in a project: the catalogue and some models of the user's.
ModelCollection ProjectModels(int variables, const LocaleText& locale) {
  ModelCollection models;
  LoadModelCatalog(models, variables, locale);
  const std::string x = variables == 1 ? "x" : "x2", second = variables == 1 ? "X" : "x1";
  ModelClass& hill = AddUserModel(models, variables, "My Hill = 1", {"Vm * F2", x + "^n", "F1/(k^n + F1)"}, locale);
  SetCoefficient(hill, 1, "* YMax", "0.5", true, "Numerical", locale);
  SetCoefficient(hill, 2, "/ N", "-2E-05", false, "Numerical", locale);
  SetCoefficient(hill, 3, variables == 1 ? "* (XMax-XMin)" : "* (X2Max-X2Min)", "1", true, "Numerical", locale);
  ModelClass& bent = AddUserModel(models, variables, "bent", {"a+max(B*" + second + ",0.25)"}, locale);
  SetCoefficient(bent, 1, "Value", "3", true, "max(" + second + ", 0.25)", locale);
  SetCoefficient(bent, 2, "* YMin", "1", true, "1", locale);
  bent.SetBounds(1, -0.25, HUGE_VAL);
  bent.SetBounds(2, 1e-9, 1e9);
  AddUserModel(models, variables, "plain", {"c9*" + second + "+if(" + x + ">1,d,2.5*d)"}, locale);
  // Two pairs of the catalogue share a formula, which is what a macro finds a built-in model by: always the first of
  // them.
  if (variables == 1) {
    models.Remove("a+b*ln(x)");
    models.Remove("a+b/x");
  }
  std::size_t n = 0;
  for (const auto& model : models) model->Solved = n++ % 3 == 0;
  return models;
}

MacroFields FilledFields() {
  MacroFields fields;
  fields.Comments = "first line\r\n\r\nthird line\r\n";
  fields.UseDDE = fields.ShowMessageBox = true;
  fields.RegressionTolerance = "0.001";
  fields.UnchangedIterations = "7";
  fields.MaxIterations = "300";
  fields.DataFile = "data/My Data.csv";
  fields.DataFirstLine = "2";
  fields.IndependentVariables = "1";
  fields.ColumnOrder = "y, drop, x";
  fields.DelimitTab = fields.DelimitSpace = false;
  fields.OutputFile = "Out.txt";
  fields.Models = MacroModels::Ticked;
  fields.TickedModels = {"MY HILL = 1", "a*x+b"};
  return fields;
}

TEST(MacroWriter, WritesStatementsInTheirFixedOrder) {
  MacroFields fields = FilledFields();
  fields.Derivatives = "CentralDifference";
  fields.TryHarder = fields.Weighted = true;
  fields.UseSQLQuery = fields.UseParameterFile = fields.UseMissingData = fields.UseLogFile = true;
  fields.SQLQuery = "SELECT x,\r\n\ty FROM t";
  fields.ParameterFile = "Sites.csv";
  fields.MissingData = "NA";
  fields.LogFile = "Run.log";
  fields.LogSummaryOnly = true;
  fields.OutputDelimit = "SemiColon";
  fields.TableDataFile = fields.TableCalcData = fields.TableErrorData = fields.TableMinMaxError = true;
  fields.SortKey = "Ra^2";
  fields.OutputFitInfo = false;
  fields.OverrideDecimal = false;
  fields.UsePlots = true;
  fields.PlotFiles = "Fit %SITE%.svg\r\nfit.plt";
  fields.PlotTemplate = "Look.qv2";
  fields.PlotModels = "all";
  fields.PlotKind = "Residuals";
  fields.PlotBands = "Both";
  fields.UseCode = true;
  fields.CodeFiles = "fit.py\r\nfit %SITE%.js";
  fields.ReportFiles = "Fit %SITE%.html\r\nfit.ipynb";
  fields.StandardDeviations = "Absolute";
  fields.Loss = "Cauchy";
  fields.LossScale = "0.5";
  fields.TableConfidence = fields.TablePrediction = true;
  fields.Diagnostics = true;
  fields.Limits = "Profile";
  fields.Bootstrap = "1000";
  fields.BootstrapKind = "Cases";
  fields.CrossValidation = "10";
  ExpectGolden("MacroOfAllFields.txt", BuildMacroText(fields, ProjectModels(1, kPoint), Settings(), kPoint));
}

TEST(MacroWriter, PutsPlaceholdersForWhatIsMissing) {
  MacroFields fields;
  fields.UseSQLQuery = fields.UseParameterFile = fields.UseMissingData = fields.UseLogFile = fields.UsePlots = true;
  fields.UseCode = true;
  fields.DataFirstLine = "";
  fields.DelimitTab = fields.DelimitComma = fields.DelimitSemicolon = fields.DelimitSpace = false;
  fields.IgnoreConsecutive = false;
  fields.OutputFormat = "Quorvex";  // which has no output options
  Settings preferences;
  preferences.Set("tolerance", "0.05");
  preferences.Set("maxiterations", "99");
  preferences.Set("diviterations", "5");
  ExpectGolden("MacroOfEmptyFields.txt", BuildMacroText(fields, ModelCollection(), preferences, kComma));
}

TEST(MacroWriter, ChoosesModelsAsAsked) {
  ModelCollection models;
  LoadModelCatalog(models, 1, kPoint);
  AddUserModel(models, 1, "mine", {"a*x"}, kPoint).Solved = true;
  AddUserModel(models, 1, "also mine", {"b*x"}, kPoint);
  models.Find("a*x+b")->Solved = true;
  const auto ids = [&](MacroModels choice) {
    MacroFields fields;
    fields.Models = choice;
    fields.TickedModels = {"ALSO MINE", "a*exp(b*x)", "gone"};
    std::vector<std::string> found;
    for (const ModelClass* model : ChosenModels(fields, models)) found.push_back(model->id);
    return found;
  };
  using Names = std::vector<std::string>;
  EXPECT_EQ(ids(MacroModels::Solved), (Names{"a*x+b", "mine"}));
  EXPECT_EQ(ids(MacroModels::UserDefined), (Names{"mine", "also mine"}));
  EXPECT_EQ(ids(MacroModels::PreDefined).size(), models.size() - 2);
  EXPECT_EQ(ids(MacroModels::All).size(), models.size());
  EXPECT_EQ(ids(MacroModels::Ticked), (Names{"a*exp(b*x)", "also mine"}));
}

TEST(MacroWriter, BeginsWithTheDataAndThePreferences) {
  Settings preferences;
  preferences.Set("tolerance", "0.05");
  preferences.Set("maxiterations", "99");
  preferences.Set("diviterations", "7");
  preferences.Set("derivative", "2");
  preferences.Set("threads", "3");  // of this machine, which says nothing of the one that runs the macro
  preferences.Set("sortindex", "3");
  const MacroFields fields = FieldsFor(3, true, preferences, kComma);
  EXPECT_EQ(fields.RegressionTolerance, "0,05");
  EXPECT_EQ(fields.MaxIterations, "99");
  EXPECT_EQ(fields.UnchangedIterations, "7");
  EXPECT_EQ(fields.Derivatives, "Exact");
  EXPECT_EQ(fields.Threads, "");
  EXPECT_EQ(fields.SortKey, "Ra^2");
  EXPECT_EQ(fields.IndependentVariables, "3");
  EXPECT_TRUE(fields.Weighted);
  for (const char* nonsense : {"0", "8", "best"}) {
    preferences.Set("sortindex", nonsense);
    EXPECT_EQ(FieldsFor(1, false, preferences, kPoint).SortKey, "RSS") << nonsense;
  }
}

// Fields in which the editor finds nothing.
MacroFields CleanFields() {
  MacroFields fields = FilledFields();
  fields.UseSQLQuery = fields.UseParameterFile = fields.UseMissingData = fields.UseLogFile = fields.UsePlots = true;
  fields.UseCode = true;
  fields.SQLQuery = fields.ParameterFile = fields.MissingData = fields.LogFile = fields.PlotFiles = "given";
  fields.CodeFiles = "given";
  return fields;
}

TEST(CheckMacro, FindsWhatIsMissingOrInvalid) {
  const struct {
    std::function<void(MacroFields&)> Spoil;
    const char* Line;
  } cases[] = {
      {[](auto& f) { f.UseDDE = f.ShowMessageBox = false; },
       "Warning: No interactive options have been set (Configuration Tab)."},
      {[](auto& f) { f.RegressionTolerance = ""; },
       "Warning: Regression tolerance has not been specified (Configuration Tab). Default value will be used."},
      {[](auto& f) { f.MaxIterations = ""; },
       "Warning: Maximum number of iterations has not been specified (Configuration Tab). Default value will be used."},
      {[](auto& f) { f.UnchangedIterations = " "; },
       "Warning: Maximum number of unchanged iterations has not been specified (Configuration Tab). Default value will "
       "be used."},
      {[](auto& f) { f.LossScale = "-1"; }, "ERROR: The scale of the loss is invalid (Configuration Tab)."},
      {[](auto& f) { f.DataFile = ""; }, "ERROR: Input data file has not been specified (Input Tab)."},
      {[](auto& f) { f.IndependentVariables = "0"; },
       "ERROR: The number of independent variables specified is invalid (Input Tab)."},
      {[](auto& f) { f.IndependentVariables = "21"; },
       "ERROR: The number of independent variables specified is invalid (Input Tab)."},
      {[](auto& f) { f.IndependentVariables = "two"; },
       "ERROR: The number of independent variables specified is invalid (Input Tab)."},
      {[](auto& f) { f.IndependentVariables = ""; },
       "ERROR: The number of independent variables has not been specified (Input Tab)."},
      {[](auto& f) { f.DataFirstLine = "0"; },
       "ERROR: The first line containing data specified is invalid (Input Tab)."},
      {[](auto& f) { f.SQLQuery = "\r\n"; },
       "ERROR: SQL Query was requested but no query string is specified (Input Tab)."},
      {[](auto& f) { f.ParameterFile = ""; },
       "ERROR: Parameter file input was requested but no parameter file is specified (Input Tab)."},
      {[](auto& f) { f.ColumnOrder = ""; },
       "Warning: Data source column order was not specified (Input Tab). Default value will be used."},
      {[](auto& f) { f.DelimitComma = f.DelimitSemicolon = false; },
       "ERROR: No delimiters were specified for parsing the input file (Input Tab)."},
      {[](auto& f) { f.MissingData = ""; }, "ERROR: Marker for missing data not specified (Input Tab)."},
      {[](auto& f) { f.OutputFile = ""; }, "ERROR: No output file name is specified (Output Tab)."},
      {[](auto& f) { f.LogFile = ""; },
       "ERROR: Log output was requested but no log file name is specified (Output Tab)."},
      {[](auto& f) { f.PlotFiles = "\n"; },
       "ERROR: Plots were requested but no plot file name is specified (Output Tab)."},
      {[](auto& f) { f.PlotModels = "0"; }, "ERROR: The number of models to plot is invalid (Output Tab)."},
      {[](auto& f) { f.Bootstrap = "2.5"; }, "ERROR: The number of bootstrap samples is invalid (Diagnosis Tab)."},
      {[](auto& f) { f.CrossValidation = "1"; },
       "ERROR: The number of parts of the cross-validation is invalid (Diagnosis Tab)."},
      {[](auto& f) { f.CodeFiles = ""; }, "ERROR: Code was requested but no code file name is specified (Output Tab)."},
      {[](auto& f) { f.TickedModels = {}; }, "ERROR: No regression models have been selected (Models Tab)."},
  };
  const ModelCollection models = ProjectModels(1, kPoint);
  EXPECT_EQ(CheckMacro(CleanFields(), models, kPoint).Lines, std::vector<std::string>());

  MacroFields worst = CleanFields();
  std::vector<std::string> all;
  for (const auto& c : cases) {
    MacroFields fields = CleanFields();
    c.Spoil(fields);
    EXPECT_EQ(CheckMacro(fields, models, kPoint).Lines, std::vector<std::string>{c.Line});
    c.Spoil(worst);
    if (std::string(c.Line).find("specified is invalid (Input Tab).") == std::string::npos ||
        std::string(c.Line).find("first line") != std::string::npos)
      all.push_back(c.Line);
  }
  const MacroFindings findings = CheckMacro(worst, models, kPoint);
  EXPECT_EQ(findings.Lines, all);
  EXPECT_EQ(findings.Count(), "There were 16 error(s) and 5 warning(s).");

  // A file of results does in the place of an output file.
  MacroFields lines = CleanFields();
  lines.OutputFile = "", lines.ResultFile = "all.jsonl";
  EXPECT_EQ(CheckMacro(lines, models, kPoint).Lines, std::vector<std::string>());

  // What an unticked box stands for is not asked for.
  MacroFields unticked = CleanFields();
  unticked.UseSQLQuery = unticked.UseParameterFile = unticked.UseMissingData = unticked.UseLogFile = false;
  unticked.SQLQuery = unticked.ParameterFile = unticked.MissingData = unticked.LogFile = "";
  unticked.UsePlots = unticked.UseCode = false;
  unticked.CodeFiles = "";
  unticked.PlotFiles = unticked.PlotModels = "";
  unticked.DataFirstLine = "";  // written as 1
  EXPECT_EQ(CheckMacro(unticked, models, kPoint).Lines, std::vector<std::string>());
}

TEST(ExportMacro, TalksToTheUserOnTheWay) {
  const ModelCollection models = ProjectModels(1, kPoint);
  const TemporaryFolder folder;
  const std::string dialog = "save: Export Macro|Quorvex Macro files (*.cfg)|cfg";
  const std::string question = "ask: There are 1 errors and 1 warnings. Do you want to export the file anyway?";
  MacroFields doubtful = CleanFields();
  doubtful.DataFile = doubtful.ColumnOrder = "";
  const std::string good = folder.Path("My Macro.cfg"), bad = folder.Path("none/macro.cfg");
  using Talk = std::vector<std::string>;
  const struct {
    MacroFields Fields;
    bool Answer;
    std::optional<std::string> File;
    Talk Said;
    bool Written;
  } cases[] = {
      {CleanFields(), true, good, {dialog, "inform: The file '" + good + "' contains the exported macro."}, true},
      {CleanFields(), true, std::nullopt, {dialog}, false},
      {CleanFields(), true, bad, {dialog, "refuse: Error saving macro to '" + bad + "'."}, false},
      {CleanFields(), true, "/dev/full", {dialog, "refuse: Error saving macro to '/dev/full'."}, false},
      {doubtful, false, good, {question}, false},
      {doubtful, true, good, {question, dialog, "inform: The file '" + good + "' contains the exported macro."}, true},
  };
  for (const auto& c : cases) {
    std::filesystem::remove(good);
    RecordingPrompter prompter;
    prompter.Answer = c.Answer;
    prompter.File = c.File;
    EXPECT_EQ(ExportMacro(c.Fields, models, Settings(), kPoint, prompter), c.Written);
    EXPECT_EQ(prompter.Said, c.Said);
    EXPECT_EQ(folder.Read("My Macro.cfg"), c.Written ? BuildMacroText(c.Fields, models, Settings(), kPoint) : "");
  }
}

// Fields of any kind, as long as each statement they make has a value that stands for itself.
class RandomFields {
 public:
  explicit RandomFields(unsigned seed) : random_(seed) {}

  int Below(int n) { return std::uniform_int_distribution(0, n - 1)(random_); }
  bool Tick() { return Below(2) == 1; }
  std::string OneOf(std::initializer_list<const char*> texts) {
    return texts.begin()[Below(static_cast<int>(texts.size()))];
  }

  MacroFields Make(int variables, const LocaleText& locale) {
    MacroFields f;
    f.Comments = OneOf({"", "one", "one\n\nthree = 3", "  B_MODEL  \r\nE_MACRO\r\n"});
    f.UseDDE = Tick(), f.ShowProgress = Tick(), f.ShowMessageBox = Tick();
    f.RegressionTolerance = LocalizeExpression(OneOf({"", "1E-07", "0.125", "1"}), locale);
    f.UnchangedIterations = OneOf({"", "1", "32000"});
    f.MaxIterations = OneOf({"", "1", "32000"});
    f.Derivatives = OneOf({"Richardson", "CentralDifference", "Exact"}), f.TryHarder = Tick();
    f.Threads = OneOf({"", "1", "16"});
    f.DataFile = OneOf({"Data.csv", "/tmp/A b=c.txt", "%SITE%.csv"});
    f.DataFirstLine = OneOf({"", "1", "12", "%First%"});
    f.IndependentVariables = std::to_string(variables);
    f.Weighted = Tick();
    f.UseSQLQuery = Tick();
    f.SQLQuery = OneOf({"SELECT a = b FROM t", "SELECT x\nFROM t"});
    f.UseParameterFile = Tick();
    f.ParameterFile = OneOf({"Sites.csv", "p.csv"});
    const bool commas = locale.ListSeparator == ',';
    f.ColumnOrder = OneOf({"", "Default", commas ? "y, x" : "y; x", commas ? "x1,drop,Y,sd" : "x1; drop; Y; sd"});
    f.DelimitTab = Tick(), f.DelimitComma = Tick(), f.DelimitSemicolon = Tick(), f.DelimitSpace = Tick();
    f.IgnoreConsecutive = Tick() || !(f.DelimitTab || f.DelimitComma || f.DelimitSemicolon || f.DelimitSpace);
    f.OverrideDecimal = Tick();
    f.UseMissingData = Tick();
    f.MissingData = OneOf({"NA", "-999", "="});
    f.OutputFile = OneOf({"Out.txt", "%OUT%"});
    f.ResultFile = OneOf({"", "All.jsonl"});
    if (!f.ResultFile.empty() && Tick()) f.OutputFile.clear();  // which is then left out, without a placeholder
    f.SolveEachRun = Tick(), f.RequireSolution = Tick(), f.StrictStatus = Tick();
    f.DataSeries = Tick();
    f.OutputFormat = OneOf({"Quorvex", "Structured", "Spreadsheet"});
    f.UseLogFile = Tick();
    f.LogFile = OneOf({"Run.LOG", "/tmp/run.log"});
    f.LogSummaryOnly = Tick();
    f.OutputDelimit = OneOf({"Tab", "Comma", "SemiColon", "Space"});
    f.TableDataFile = Tick(), f.TableCalcData = Tick(), f.TableErrorData = Tick(), f.TableMinMaxError = Tick();
    f.SortKey = OneOf({"RSS", "R^2", "Ra^2", "StdErr", "AICc", "BIC", "CV"});
    f.OutputFitInfo = Tick();
    f.UsePlots = Tick();
    f.PlotFiles = OneOf({"p.svg", "%SITE% a=b.PNG\r\n\np.plt"});
    f.PlotTemplate = OneOf({"", "Look.qv2"});
    f.ReportFiles = OneOf({"", "r.html", "%SITE%.md\r\n\nr.tex"});
    f.PlotModels = OneOf({"best", "ALL", "3"});
    f.PlotKind = OneOf({"Model", "residuals", "Probability"});
    f.PlotBands = OneOf({"None", "confidence", "Prediction", "Both"});
    f.UseCode = Tick();
    f.CodeFiles = OneOf({"c.py", "%SITE% a=b.R\r\n\nc.js"});
    f.StandardDeviations = OneOf({"Relative", "Absolute"});
    f.Loss = OneOf({"Squares", "Huber", "SoftL1", "Cauchy", "BISQUARE"});
    f.LossScale = LocalizeExpression(OneOf({"", "0.125", "3"}), locale);
    f.TableConfidence = Tick(), f.TablePrediction = Tick();
    f.Diagnostics = Tick();
    f.Limits = OneOf({"Symmetric", "Profile"});
    f.Bootstrap = OneOf({"", "1", "100000"}), f.BootstrapKind = OneOf({"Residuals", "cases"});
    f.CrossValidation = OneOf({"", "2", "10"});
    f.Models = static_cast<MacroModels>(Below(5));
    f.TickedModels = {"bent", "My Hill = 1", "a*x+b", "a+b*x1+c*x2"};
    return f;
  }

 private:
  std::mt19937 random_;
};

std::string Joined(const std::string& text, char lineEnd, const std::string& by) {
  std::string joined;
  for (const char c : text) joined += c == lineEnd ? by : std::string(1, c);
  return joined;
}

// The setup that a user of the editor means by these fields.
MacroSetup MeantBy(const MacroFields& f, const Settings& preferences, const LocaleText& locale) {
  MacroSetup s;
  s.UseDDE = f.UseDDE, s.ShowProgress = f.ShowProgress, s.ShowMessageBox = f.ShowMessageBox;
  const auto number = [&](const std::string& text, double otherwise) {
    return text.empty() ? otherwise : *NumericText(text, locale.DecimalSeparator);
  };
  s.RegressionTolerance = number(f.RegressionTolerance, preferences.ResidualTolerance);
  s.UnchangedIterations = static_cast<int>(number(f.UnchangedIterations, preferences.DivIterations));
  s.MaxIterations = static_cast<int>(number(f.MaxIterations, preferences.MaxIterations));
  s.Derivatives = f.Derivatives == "Exact"               ? DerivativeKind::Exact
                  : f.Derivatives == "CentralDifference" ? DerivativeKind::Central
                                                         : DerivativeKind::Richardson;
  s.TryHarder = f.TryHarder;
  s.Threads = static_cast<int>(number(f.Threads, 0));
  s.IndependentVariables = static_cast<int>(number(f.IndependentVariables, 0));
  s.DelimitTab = f.DelimitTab, s.DelimitComma = f.DelimitComma;
  s.DelimitSemicolon = f.DelimitSemicolon, s.DelimitSpace = f.DelimitSpace;
  s.IgnoreConsecutive = f.IgnoreConsecutive;
  s.OutputFormat = f.OutputFormat;
  s.OverrideDecimal = f.OverrideDecimal;
  if (f.UseMissingData) s.MissingData = f.MissingData;
  s.DataFile = f.DataFile;
  s.DataFirstLine = f.DataFirstLine.empty() ? "1" : ToLower(f.DataFirstLine);
  s.OutputFile = f.OutputFile, s.ResultFile = f.ResultFile;
  s.SolveEachRun = f.SolveEachRun, s.RequireSolution = f.RequireSolution, s.StrictStatus = f.StrictStatus;
  s.DataSeries = f.DataSeries;
  if (f.UseSQLQuery) s.SQLQuery = Joined(f.SQLQuery, '\n', " ");
  s.ColumnOrder = f.ColumnOrder.empty() ? "Default" : f.ColumnOrder;
  s.Weighted = f.Weighted;
  if (f.UseLogFile) s.LogEnabled = true, s.LogFile = ToLower(f.LogFile), s.LogSummaryOnly = f.LogSummaryOnly;
  if (f.UseParameterFile) s.UseParameterFile = true, s.ParameterFile = ToLower(f.ParameterFile);
  s.Comment = f.Comments == "one"             ? "        one"
              : f.Comments.starts_with("one") ? "        one\r\n        three = 3"
              : f.Comments.empty()            ? ""
                                              : "        B_MODEL\r\n        E_MACRO";
  if (f.UsePlots) {
    s.PlotFile = f.PlotFiles == "p.svg" ? f.PlotFiles : "%SITE% a=b.PNG\r\np.plt";
    s.PlotTemplate = f.PlotTemplate;
    s.PlotModels = f.PlotModels == "best" ? 1 : f.PlotModels == "3" ? 3 : std::numeric_limits<int>::max();
    s.PlotKind = f.PlotKind == "Model" ? 0 : f.PlotKind == "residuals" ? 1 : 2;
    const std::string bands[] = {"None", "confidence", "Prediction", "Both"};
    s.PlotBands = static_cast<int>(std::ranges::find(bands, f.PlotBands) - bands);
  }
  if (f.UseCode) s.CodeFile = f.CodeFiles == "c.py" ? f.CodeFiles : "%SITE% a=b.R\r\nc.js";
  s.ReportFile = f.ReportFiles.size() < 7 ? f.ReportFiles : "%SITE%.md\r\nr.tex";
  s.AbsoluteDeviations = f.StandardDeviations == "Absolute";
  for (std::size_t loss = 0; loss < kLossNames.size(); ++loss)
    if (EqualNoCase(kLossNames[loss], f.Loss)) s.Loss = static_cast<LossKind>(loss);
  s.LossScale = number(f.LossScale, 0);
  s.Diagnostics = f.Diagnostics, s.ProfileLimits = f.Limits == "Profile";
  s.Bootstrap = static_cast<int>(number(f.Bootstrap, 0)), s.ResampleCases = f.BootstrapKind == "cases";
  s.CrossValidation = static_cast<int>(number(f.CrossValidation, 0));
  if (f.OutputFormat == "Quorvex") return s;
  s.OutputDelimit = f.OutputDelimit == "Tab"     ? "\t"
                    : f.OutputDelimit == "Comma" ? ","
                    : f.OutputDelimit == "Space" ? " "
                                                 : ";";
  s.TableDataFile = f.TableDataFile, s.TableCalcData = f.TableCalcData;
  s.TableErrorData = f.TableErrorData, s.TableMinMaxError = f.TableMinMaxError;
  s.TableConfidence = f.TableConfidence, s.TablePrediction = f.TablePrediction;
  for (int key = 1; key <= static_cast<int>(kSortKeys.size()); ++key)
    if (kSortKeys[static_cast<std::size_t>(key - 1)] == f.SortKey) s.SortKey = key;
  s.OutputFitInfo = f.OutputFitInfo;
  return s;
}

// What the fields of the editor decide; the rest of the record follows from it.
auto Decided(const MacroSetup& s) {
  return std::tie(s.UseDDE, s.ShowProgress, s.ShowMessageBox, s.RegressionTolerance, s.Derivatives, s.Threads,
                  s.UnchangedIterations, s.MaxIterations, s.IndependentVariables, s.DelimitTab, s.DelimitSemicolon,
                  s.DelimitComma, s.DelimitSpace, s.IgnoreConsecutive, s.OutputFormat, s.OutputFitInfo, s.TableDataFile,
                  s.TableCalcData, s.TableErrorData, s.TableMinMaxError, s.SortKey, s.OutputDelimit, s.OverrideDecimal,
                  s.MissingData, s.DataFile, s.DataFirstLine, s.OutputFile, s.Comment, s.SQLQuery, s.ColumnOrder,
                  s.Weighted, s.LogEnabled, s.LogFile, s.LogSummaryOnly, s.UseParameterFile, s.ParameterFile,
                  s.PlotFile, s.PlotTemplate, s.PlotModels, s.PlotKind, s.ResultFile, s.SolveEachRun, s.RequireSolution,
                  s.StrictStatus, s.DataSeries, s.AbsoluteDeviations, s.Loss, s.LossScale, s.TableConfidence,
                  s.TablePrediction, s.PlotBands, s.Diagnostics, s.ProfileLimits, s.Bootstrap, s.ResampleCases,
                  s.CrossValidation, s.ReportFile);
}

std::string Folded(const std::string& text) { return ToLower(Joined(text, ' ', "")); }

// A model as read back: the same formula but for case and blanks, which macros drop, and the same coefficients by name.
void ExpectSameModel(const ModelClass& read, const ModelClass& written) {
  EXPECT_EQ(read.cfgID, written.id);
  EXPECT_EQ(read.UserType, written.UserType);
  EXPECT_TRUE(written.UserType || read.id == written.id) << read.id;
  EXPECT_EQ(read.SolveType, 0);
  for (int n = 0; n <= 9; ++n) EXPECT_EQ(Folded(read.FunctionList(n)), Folded(written.FunctionList(n))) << written.id;
  ASSERT_EQ(read.NumDependentVar(), written.NumDependentVar()) << written.id;
  for (int i = 1; i <= written.NumDependentVar(); ++i) {
    int at = 1;  // upper case sorts first
    while (at < read.NumDependentVar() && !EqualNoCase(read.Variables(at), written.Variables(i))) ++at;
    EXPECT_TRUE(EqualNoCase(read.Variables(at), written.Variables(i))) << written.id;
    EXPECT_EQ(Folded(read.Rules(at)), Folded(written.Rules(i))) << written.id;
    EXPECT_EQ(read.RuleConstant(at), written.RuleConstant(i)) << written.id;
    EXPECT_EQ(read.Constants(at), written.Constants(i)) << written.id;
    EXPECT_EQ(Folded(read.Derivatives(at)), Folded(written.Derivatives(i))) << written.id;
    EXPECT_EQ(read.Minimum(at), written.Minimum(i)) << written.id;
    EXPECT_EQ(read.Maximum(at), written.Maximum(i)) << written.id;
  }
}

// With bounds a model of the catalogue has Assign statements, too, and starts where it is.
TEST(MacroWriter, WritesTheBoundsOfABuiltInModel) {
  ModelCollection models;
  LoadModelCatalog(models, 1, kComma);
  ModelClass& model = *models.Find("a*exp(b*x)");
  model.Solved = true;
  model.SetValue(1, 4.5);
  model.SetValue(2, -0.5);
  model.SetBounds(1, 0, 4.5);
  MacroFields fields;
  fields.Models = MacroModels::Solved;
  const std::string text = BuildMacroText(fields, models, Settings(), kComma);
  EXPECT_NE(text.find("        Assign a = 4,5; Operator = Value; Fit = True; Derivative = Numerical; Minimum = 0; "
                      "Maximum = 4,5\r\n"
                      "        Assign b = -0,5; Operator = Value; Fit = True; Derivative = Numerical\r\n"),
            std::string::npos)
      << text;
}

TEST(MacroWriter, WritesWhatTheReaderReadsBackTheSame) {
  RandomFields random(1977);
  for (const LocaleText& locale : {kPoint, kComma}) {
    for (int variables = 1; variables <= 3; ++variables) {
      const ModelCollection models = ProjectModels(variables, locale);
      for (int round = 0; round < 100; ++round) {
        const MacroFields fields = random.Make(variables, locale);
        Settings preferences;
        preferences.Set("tolerance", "0.0625");
        preferences.Set("maxiterations", "123");
        preferences.Set("diviterations", "4");
        const std::string text = BuildMacroText(fields, models, preferences, locale);
        const MacroSetup meant = MeantBy(fields, preferences, locale);

        Macro macro;
        InitMacroSetup(macro.Setup, Settings());
        std::string log;
        ASSERT_TRUE(ReadMacro(text, locale, preferences, macro, log));
        EXPECT_EQ(log, "");
        EXPECT_TRUE(Decided(macro.Setup) == Decided(meant)) << text.substr(0, text.find("B_MODEL\r"));

        std::vector<const ModelClass*> read;
        for (const auto& model : macro.Models)
          if (model->Solve) read.push_back(model.get());
        const std::vector<const ModelClass*> chosen = ChosenModels(fields, models);
        ASSERT_EQ(read.size(), chosen.size());
        for (std::size_t i = 0; i < read.size(); ++i) ExpectSameModel(*read[i], *chosen[i]);
        if (HasFailure()) return;
      }
    }
  }
}

}  // namespace
}  // namespace quorvex
