// Macros that are checked, by the real program: what it prints, that its status is the one of a run, and that it leaves
// every file and folder as they were.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <map>
#include <tuple>

#include "batch/MacroCheck.h"
#include "batch/Program.h"
#include "code/CodeLanguage.h"
#include "core/NearestWord.h"

namespace quorvex {
namespace {

constexpr const char* kData = "1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n";
const std::string kHead = "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\n";
constexpr const char* kTail = "B_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n";

// Each file and folder with its size, times and rights.
using Snapshot = std::map<std::string, std::array<long, 5>>;

class MacroChecks : public testing::Test {
 protected:
  MacroChecks() : program(kData) {
    for (const char* name : {"out", "err", "macro.cfg"}) program.Folder.Write(name, "");
    std::filesystem::create_directory(program.Folder.Path("folder"));
  }

  Snapshot Now() const {
    Snapshot all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(program.Folder.Path(""))) {
      const std::string name = entry.path().filename();
      if (name == "out" || name == "err") continue;  // of the shell
      struct stat info {};
      stat(entry.path().c_str(), &info);
      all[entry.path()] = {info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec, info.st_ctim.tv_nsec, info.st_mode};
    }
    return all;
  }

  // What is printed less the line that counts.
  std::string Check(const std::string& macro, const std::string& more = "",
                    const std::string& environment = "LC_ALL=C") {
    program.Folder.Write("macro.cfg", program.InFolder(macro));
    const Snapshot before = Now();
    Status = program.Run("-check " + program.Folder.Path("macro.cfg") + more, environment);
    EXPECT_EQ(Now(), before);
    std::string text = program.WithoutFolder(program.Out);
    const auto last = text.rfind("Checked ");
    EXPECT_NE(last, std::string::npos) << text << program.Err;
    if (last == std::string::npos) return text;
    Counted = text.substr(last);
    return text.substr(0, last);
  }

  Program program;
  int Status = 0;
  std::string Counted;
};

TEST_F(MacroChecks, TellEachFaultOfAMacroByItsLine) {
  const struct {
    std::string Macro, Told;
  } cases[] = {
      {kHead + kTail, ""},
      {kHead + "OutputFiel = 3\n" + kTail, "Line 4: unknown statement 'OutputFiel'. Did you mean OutputFile?\n"},
      {kHead + "zzz\n" + kTail, "Line 4: unknown statement 'zzz'.\n"},
      {"B_MACRO\rDatafile = @data.txt\rOutputFile = @out.txt\rB_MODLE\rB_MODEL\rY = a+b*x\rE_MODEL\rE_MACRO",
       "Line 4: unknown statement 'B_MODLE'. Did you mean B_MODEL?\n"},
      {kHead + "SortKey = RMS\nsortkey = rss\n" + kTail,
       "Line 4: 'SortKey = RMS' is none of RSS, R^2, Ra^2, StdErr, AICc, BIC, CV.\n"
       "Line 5: SortKey stands in line 4, too; this one counts.\n"},
      {kHead + "Comment = a\nComment = b\nHandShake = UseDDE\nHandShake = ShowProgress\n" + kTail, ""},
      {kHead + "Weighted = yes\nMaxIterations = abc\nRegressionTolerance = 1..5\nDerivatives = Richards\n" + kTail,
       "Line 4: 'Weighted = yes' counts as False: it is neither True nor False.\n"
       "Line 5: 'MaxIterations = abc' is no number from 1 to 32000.\n"
       "Line 6: 'RegressionTolerance = 1..5' is no number, and does nothing.\n"
       "Line 7: 'Derivatives = Richards' is none of Richardson, CentralDifference, Exact.\n"},
      {kHead + "InputDelimit = Tab, Comme\nDataFirstLine = 0\nOutputFormat = Text\nPlotKind = Modle\n" + kTail,
       "Line 4: 'InputDelimit = Tab, Comme' names 'Comme', which is none of Tab, Comma, SemiColon, Space, "
       "IgnoreConsecutive.\n"
       "Line 5: 'DataFirstLine = 0' is no number from 1 on.\n"
       "Line 6: 'OutputFormat = Text' is none of Quorvex, Structured, Spreadsheet.\n"
       "Line 7: 'PlotKind = Modle' is ignored: it is none of Model, Residuals, Probability, Profile.\n"},
      {kHead +
           "Diagnostics = True\nBootstrap = -3\nCrossValidation = 1\nLossScale = 0\nLoss = Hubert\nLimits = both\n" +
           "PlotBands = all\nStandardDeviations = given\n" + kTail,
       "Line 5: 'Bootstrap = -3' is ignored: it is not a whole number from 1 to 100000.\n"
       "Line 6: 'CrossValidation = 1' is ignored: it is not a whole number from 2 to 32000.\n"
       "Line 7: 'LossScale = 0' is ignored: it is not a number above 0.\n"
       "Line 8: 'Loss = Hubert' is ignored: it is none of Squares, Huber, SoftL1, Cauchy, Bisquare.\n"
       "Line 9: 'Limits = both' is ignored: it is none of Symmetric, Profile.\n"
       "Line 10: 'PlotBands = all' is ignored: it is none of None, Confidence, Prediction, Both.\n"
       "Line 11: 'StandardDeviations = given' is ignored: it is none of Relative, Absolute.\n"},
      {kHead + "B_MODEL\nSortKey = RSS\nAssgin a = 1\nIdle = 3\nF12 = x\nY = a+b*x*x\nE_MODEL\nE_MACRO\n",
       "Line 5: the statement 'SortKey' is not read between B_MODEL and E_MODEL.\n"
       "Line 6: unknown statement 'Assgin a'. Did you mean Assign?\n"
       "Line 7: the model line 'Idle = 3' counts as ID.\n"
       "Line 8: the model line 'F12 = x' counts as F1.\n"},
      {kHead + "B_MODEL\nID = A\nF1 = x)\nY = a+b*F1\nE_MODEL\n" + kTail,
       "Line 7: block 1 ('A') does not compile: Unexpected token ')', at character 6 of 'a+b*f1'.\n"},
      {kHead + "B_MODEL\nY = a+b*x\nAssign c = 1, Operator = Value, Fit = True\nAssign b = 1\nE_MODEL\nE_MACRO\n",
       "Line 6: 'Assign c = 1, Operator = Value, Fit = True' is ignored: the model has no coefficient 'c'.\n"
       "Line 7: 'Assign b = 1' is ignored: it is no Assign statement.\n"},
      {kHead + "B_MODEL\nY = a+b*x\nAssign a = 1, Operator = Value, Fit = True, Derivative = max(1,2), Maximum = 2, "
               "Minimum "
               "= 2\n"
               "Assign a = 1, Operator = Value, Fit = True, Minimum =, Maximum = -1E3\n"
               "Assign b = 1, Operator = Value, Fit = True, Minimum = 2, Maximum = 1\n"
               "Assign b = 1, Operator = Value, Fit = True, Maximum = nan\n"
               "Assign b = 1, Operator = Value, Fit = True, Minimum = 1, Minimum = 2\n"
               "Assign b = 1, Operator = Value, Minimum = 5\n"
               "Assign b = 1, Operator = Value, Fit = True; Maximum = 5\nE_MODEL\nE_MACRO\n",
       "Line 8: 'Assign b = 1, Operator = Value, Fit = True, Minimum = 2, Maximum = 1' is ignored: its Minimum, 2, is "
       "above its Maximum, 1.\n"
       "Line 9: 'Assign b = 1, Operator = Value, Fit = True, Maximum = nan' is ignored: its Maximum, 'nan', is no "
       "number.\n"
       "Line 10: 'Assign b = 1, Operator = Value, Fit = True, Minimum = 1, Minimum = 2' is ignored: it gives the "
       "Minimum twice.\n"
       "Line 11: 'Assign b = 1, Operator = Value, Minimum = 5' is ignored: its Minimum and Maximum do not come last, "
       "behind ','.\n"
       "Line 12: 'Assign b = 1, Operator = Value, Fit = True; Maximum = 5' is ignored: its Minimum and Maximum do not "
       "come last, behind ','.\n"},
      {kHead + "IndependentVariables = one\n" + kTail,
       "Line 4: 'IndependentVariables = one' is no number from 1 to 20.\n"},
      {kHead + "B_MODEL\nY = a+b*x\nE_MODEL\nIndependentVariables = 1\nLogFile = x",
       "Line 7: IndependentVariables stands behind the first model, which was read without it.\n"
       "Line 8: the macro has no E_MACRO, and the last line of the file is not read.\n"},
      {kHead + "B_MODEL\nY = a+b*x\nE_MODEL\nB_MODEL\nY = c*x\nE_MACRO\n",
       "Line 7: this B_MODEL has no E_MODEL, and its model is not read.\n"},
      {kHead + "ColumnOrder = x1, z\n" + kTail, "Line 4: 'ColumnOrder = x1, z' names no column y.\n"},
      {kHead + "Comment = %SITE% of 50% or 60%\n" + kTail,
       "Line 4: %SITE% stays as it is, for there is no ParameterFile.\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Check(c.Macro), c.Told) << c.Macro;
    EXPECT_EQ(Status, 0) << c.Macro;
    EXPECT_EQ(program.Err, "");
  }
}

TEST_F(MacroChecks, TellWhatDoesNothingWithoutAnother) {
  const std::string three = "Limits = Profile\nBootstrap = 9\nCrossValidation = 2\n",
                    none = "without 'Diagnostics = True'", report = "B_MODEL\nY = 2*c*x\nReport = r = 2*c\nE_MODEL\n";
  const struct {
    std::string Statements, Told;
  } cases[] = {
      {three, "Line 4: Limits does nothing " + none + ".\nLine 5: Bootstrap does nothing " + none +
                  ".\nLine 6: CrossValidation does nothing " + none + " or 'SortKey = CV'.\n"},
      {"Diagnostics = True\nBootstrapKind = Cases\n" + three, ""},
      {"CrossValidation = 2\nSortKey = cv\n", ""},
      {"Diagnostics = True\nBootstrapKind = Cases\n", "Line 5: BootstrapKind does nothing without Bootstrap.\n"},
      {"StandardDeviations = Absolute\n",
       "Line 4: StandardDeviations does nothing for data without them, 'Weighted = True' being missing.\n"},
      {"StandardDeviations = Absolute\nWeighted = True\n", ""},
      {"LossScale = 2\n", "Line 4: LossScale does nothing on squares; a Loss is missing.\n"},
      {"LossScale = 2\nLoss = cauchy\n", ""},
      {"OutputFormat = Quorvex\nDiagnostics = True\n",
       "Line 5: Diagnostics does nothing where the output is a project and there is no ResultFile.\n"},
      {"OutputFormat = Quorvex\nDiagnostics = True\nResultFile = @all.jsonl\n", ""},
      {"PlotBands = Both\n", "Line 4: PlotBands does nothing without a PlotFile.\n"},
      {"PlotBands = Both\nPlotFile = @a.svg\nPlotKind = Residuals\n",
       "Line 4: PlotBands does nothing on plots of residuals.\n"},
      {"PlotBands = None\n", ""},
      {"Diagnostics = True\nLimits = Profile\nLoss = Huber\nPlotKind = Profile\nPlotFile = @a.svg\n",
       "Line 5: Limits does nothing with a Loss other than Squares.\n"
       "Line 7: PlotKind does nothing with a Loss other than Squares.\n"},
      {report, "Line 6: Report does nothing " + none + ".\n"},
      {"OutputFormat = Quorvex\n" + report, ""},
      {"Diagnostics = True\n" + report, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Check(kHead + c.Statements + kTail), c.Told) << c.Statements;
    EXPECT_EQ(Status, 0);
  }
}

// A run says in its log what it makes of values that cannot be read, and goes on with the default.
TEST_F(MacroChecks, AreRightAboutNumbersThatARunIgnores) {
  for (const char* statement :
       {"Bootstrap = -3", "Bootstrap = 1e9", "Bootstrap = abc", "Bootstrap = 0", "Bootstrap = 2.5",
        "Bootstrap =", "CrossValidation = 1", "CrossValidation = 1e99", "LossScale = -1", "LossScale = nan",
        "LossScale = inf", "LossScale = 1,5", "LossScale = 1e999"}) {
    const std::string macro = kHead + "LogFile = @run.log\n" + statement + "\n" + kTail;
    EXPECT_NE(Check(macro).find("Line 5: '" + std::string(statement)), std::string::npos) << statement;
    EXPECT_EQ(program.RunMacro(macro), 0);
    EXPECT_NE(program.Log().find("Warning: '" + std::string(statement)), std::string::npos) << program.Log();
    std::filesystem::remove(program.Folder.Path("run.log"));
    std::filesystem::remove(program.Folder.Path("out.txt"));
  }
}

// The status is the low byte of a run's, which the run of the same macro confirms.
TEST_F(MacroChecks, EndWithTheStatusOfARun) {
  program.Folder.Write("cut.csv", "A,B\n1\n");
  const std::string model = kTail;
  const struct {
    std::string Macro, Told;
  } cases[] = {
      {"no macro", "The file '@macro.cfg' is no macro: no line of it reads B_MACRO, or nothing follows.\n"},
      {kHead + "E_MACRO\n", "The macro has no model that can be solved.\n"},
      {"B_MACRO\nOutputFile = @o.txt\n" + model, "No DataFile is named.\n"},
      {"B_MACRO\nDataFile = @data.txt\n" + model, "No OutputFile is named, and no ResultFile.\n"},
      {"B_MACRO\nDataFile = @none.txt\nOutputFile = @none/out.txt\n" + model,
       "Line 2: the data file '@none.txt' cannot be read. The file does not exist.\n"
       "Line 3: the output file '@none/out.txt' cannot be written. The folder does not exist.\n"},
      {"B_MACRO\nDataFile = @folder\nOutputFile = @folder\n" + model,
       "Line 2: the data file '@folder' cannot be read. The file cannot be accessed.\n"
       "Line 3: the output file '@folder' cannot be written. The file cannot be accessed.\n"},
      {"B_MACRO\nDataFile = /dev/null\nOutputFile = @o.txt\n" + model,
       "Line 2: the data file '/dev/null' cannot be read. The device is not available.\n"},
      {"B_MACRO\nDataFile = @data.txt\nOutputFile = @data.txt\n" + model,
       "Line 3: the output '@data.txt' is the data file of this macro and is not overwritten.\n"},
      {kHead + "ResultFile = @none/r.jsonl\n" + model,
       "Line 4: the result file '@none/r.jsonl' cannot be written. The folder does not exist.\n"},
      {kHead + "ResultFile = @out.txt\n" + model,
       "Line 4: the result file '@out.txt' is the output file of this macro and is not overwritten.\n"},
      {"B_MACRO\nDataFile = @data.txt\nOutputFile = @o.txt\nLogFile = @none/run.log\n" + model,
       "Line 4: the log '@none/run.log' cannot be written. The folder does not exist.\n"},
      {"B_MACRO\nDataFile = @data.txt\nOutputFile = @run.log\nLogFile = @run.log\n" + model,
       "Line 3: the output '@run.log' is the log of this macro and is not overwritten.\n"},
      {kHead + "ParameterFile = @cut.csv\n" + model,
       "Line 4: the parameter file '@cut.csv' cannot be read. The last row has 1 of 2 values.\n"},
      {kHead + "IndependentVariables = 21\n" + model,
       "Line 4: IndependentVariables must be 1 to 20, not 21.\n"
       "Line 6: block 1 does not compile: it has no independent variable.\n"
       "The macro has no model that can be solved.\n"},
      {kHead + "ColumnOrder = x\n" + model, "Line 4: 'ColumnOrder = x' names too few columns.\n"},
      {kHead + "PlotFile = @out.txt\n" + model,
       "Line 4: the plot '@out.txt' is the output file of this macro and is not overwritten.\n"},
      {kHead + "CodeFile = @f.py\nCodeFile = @fit.xyz\n" + model,
       "Line 5: t" + UnknownLanguageText("@fit.xyz").substr(1) + "\n"},
      {kHead + "CodeFile = @data.txt\nCodeFile = @out.txt\n" + model,
       "Line 4: the code '@data.txt' is the data file of this macro and is not overwritten.\n"
       "Line 5: the code '@out.txt' is the output file of this macro and is not overwritten.\n"},
      {kHead + "StrictStatus = True\nB_MODEL\nY = a*(x\nE_MODEL\n" + model,
       "Line 6: block 1 does not compile: Missing token ')', at character 5 of 'a*(x'.\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Check(c.Macro), c.Told) << c.Macro;
    const int checked = Status;
    EXPECT_NE(checked, 0) << c.Macro;
    EXPECT_EQ(program.RunMacro(c.Macro), checked) << c.Macro;
    for (const char* made : {"out.txt", "o.txt", "run.log"}) std::filesystem::remove(program.Folder.Path(made));
  }
}

TEST_F(MacroChecks, GoThroughAllRowsOfATable) {
  program.Folder.Write("sites.csv", "SITE,\"First\",ODD\ndata.txt,1,%First%\nnone.txt,x,\nnone.txt,1,\ndata.txt,2,\n");
  const std::string macro =
      "B_MACRO\nParameterFile = @sites.csv\nDataFile = @%SITE%\nDataFirstLine = %first%\nOutputFile = @o_%Site%\n"
      "LogFile = @run_%SITE%.log\nComment = %NOBODY%\nPlotFile = @o.svg\nPlotFile = @o_%SITE%\n"
      "B_MODEL\nY = a+b*x\nAssign %First% = 1, Operator = Value, Fit = True\nE_MODEL\nE_MACRO\n";
  EXPECT_EQ(Check(macro),
            "Line 2: nothing in the macro uses the parameter 'ODD' of the table.\n"
            "Line 3, row 2 and 1 more: the data file '@none.txt' cannot be read. The file does not exist.\n"
            "Line 4, row 2: 'DataFirstLine = x' is no number from 1 on.\n"
            "Line 5, row 1: the output file '@o_data.txt' is written 2 times, at last by row 4, each over the one "
            "before.\n"
            "Line 5, row 2: the output file '@o_none.txt' is written 2 times, at last by row 3, each over the one "
            "before.\n"
            "Line 6: no parameter is put into LogFile, where %SITE% stays as it is.\n"
            "Line 7: the table has no parameter 'NOBODY'.\n"
            "Line 8, row 1: the plot '@o.svg' is written 4 times, at last by row 4, each over the one before.\n"
            "Line 9, row 1 and 1 more: the plot '@o_data.txt' is the output file of this macro and is not "
            "overwritten.\n"
            "Line 9, row 2 and 1 more: the plot '@o_none.txt' is the output file of this macro and is not "
            "overwritten.\n"
            "Line 12, row 1 and 1 more: 'Assign 1=1,Operator=Value,Fit=True' is ignored: the model has no coefficient "
            "'1'.\n"
            "Line 12, row 2: 'Assign x=1,Operator=Value,Fit=True' is ignored: the model has no coefficient 'x'.\n"
            "Line 12, row 4: 'Assign 2=1,Operator=Value,Fit=True' is ignored: the model has no coefficient '2'.\n");
  EXPECT_EQ(Counted, "Checked 4 runs of 1 model: 13 faults.\n");
  EXPECT_EQ(Status, 220);
  EXPECT_EQ(program.Err, "Exit Status 220\n");

  EXPECT_NE(Check(macro, " -part 2/4").find("Line 3, row 2: the data file"), std::string::npos);
  EXPECT_EQ(Counted.substr(0, 14), "Checked 1 run ");
  EXPECT_EQ(Status, 110);
  Check(macro, " -part 5/4");
  EXPECT_EQ(Status, 80);
}

TEST_F(MacroChecks, FindWhatMayNotBeUsed) {
  const std::string secret = program.Folder.Write("secret.txt", kData);
  program.MoveAway();
  for (const auto& [name, mode] :
       {std::pair("", 0777), {"out", 0666}, {"err", 0666}, {"secret.txt", 0}, {"folder", 0555}})
    chmod(program.Folder.Path(name).c_str(), static_cast<mode_t>(mode));
  const std::string user =
      geteuid() == 0 ? "LC_ALL=C setpriv --reuid=65534 --regid=65534 --clear-groups env" : "LC_ALL=C";
  EXPECT_EQ(Check("B_MACRO\nDataFile = @secret.txt\nOutputFile = @folder/o.txt\nLogFile = @folder/l.log\n" +
                      std::string(kTail),
                  "", user),
            "Line 2: the data file '@secret.txt' cannot be read. The file cannot be accessed.\n"
            "Line 3: the output file '@folder/o.txt' cannot be written. The file cannot be accessed.\n"
            "Line 4: the log '@folder/l.log' cannot be written. The file cannot be accessed.\n");
  EXPECT_EQ(Status, 130);
}

TEST_F(MacroChecks, FollowTheLocaleOfLists) {
  const std::string macro = kHead +
                            "ColumnOrder = x; y\nB_MODEL\nY = a+b*x\nAssign a = 0,5; Operator = Value; Fit = True\n" +
                            "E_MODEL\nE_MACRO\n";
  EXPECT_EQ(Check(macro, "", "LC_ALL=de_DE.UTF-8"), "");
  EXPECT_EQ(Check(macro),
            "Line 4: 'ColumnOrder = x; y' names one column: lists are separated by ',' here.\n"
            "Line 4: 'ColumnOrder = x; y' names too few columns.\n"
            "Line 7: 'Assign a = 0,5; Operator = Value; Fit = True' is ignored: it is no Assign statement.\n");
}

TEST_F(MacroChecks, RefuseWhatIsNoMacroFile) {
  const struct {
    const char* Arguments;
    int Status;
    const char* Err;
  } cases[] = {
      {"-check", 1, "A macro to be checked must be named, as in: quorvex -check FILE.cfg\n"},
      {"-check @", 50, "Exit Status 50\n"},
      {"-check @none.cfg", 30, "Exit Status 30\n"},
      {"-CHECK @data.txt", 20, "Exit Status 20\n"},
      {"-check /dev/stdin <@data.txt", 20, "Exit Status 20\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(program.Run(program.InFolder(c.Arguments)), c.Status) << c.Arguments;
    EXPECT_EQ(program.Err, c.Err) << c.Arguments;
  }
}

// Whatever stands in a line, what is told of it is one line that a terminal can show.
TEST(MacroFault, IsShownInOneShortLine) {
  const std::string long_(1'000'000, 'q');
  for (const std::string& text : std::vector<std::string>{long_ + " = 1", "\x1b[2J\x07\x01",
                                                          "\xc2\x9b"
                                                          "31m",
                                                          long_}) {
    const MacroCheck check = CheckMacroText("B_MACRO\n" + text + "\nE_MACRO\n", Session());
    for (const MacroFault& fault : check.Faults) {
      const std::string shown = ShownFault(fault);
      EXPECT_LT(shown.size(), 700u);
      EXPECT_TRUE(shown.ends_with('.')) << shown;
      EXPECT_EQ(shown.find_first_of("\x1b\x07\x01\r\n"), std::string::npos) << shown;
      EXPECT_EQ(shown.find("\xc2\x9b"), std::string::npos) << shown;
    }
  }
}

TEST(NearestWord, FindsWhatWasMeant) {
  constexpr std::string_view known[] = {"Y", "ID", "OutputFile", "OutputFormat", "DataFile", "PlotFile"};
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"outputfile", "OutputFile"},
      {"OuptutFile", "OutputFile"},
      {"OutFile", "OutputFile"},
      {"DatFiel", "DataFile"},
      {"PlotFiles", "PlotFile"},
      {"OutputFrmat", "OutputFormat"},
      {"Output", ""},
      {"Z", ""},
      {"", ""},
      {"Nothing", ""},
  };
  for (const auto& [word, meant] : cases) EXPECT_EQ(NearestWord(word, known), meant) << word;
}

}  // namespace
}  // namespace quorvex
