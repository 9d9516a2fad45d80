// The reports of macros, with a drawer of the test's own.

#include <gtest/gtest.h>

#include <regex>

#include "batch/MacroCheck.h"
#include "batch/Program.h"
#include "batch/RunMacro.h"
#include "batch/RunReports.h"

namespace quorvex {
namespace {

struct SvgDrawer : PlotDrawer {
  std::string Missing;
  std::string WhyNone() const override { return Missing; }
  Result<std::string> Draw(const std::string&, const std::string& ending, const std::function<bool()>&) override {
    return "<?xml?>\n<svg class=\"" + ending + "\"></svg>\n";
  }
};

struct QuietForm : cfgSolve {
  std::string RequestWindows() override { return "No windows here."; }
};

constexpr const char* kData = "5 13.1 .2\n1 5.1 .1\n2 6.9 .1\n3 9.2 .1\n4 10.8 .1\n";
const std::string kHead = "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\n";
const std::string kModels = "B_MODEL\nID = line <1>\nY = a+b*x\nE_MODEL\nB_MODEL\nID = bent\nY = a+b*x^2\nE_MODEL\n";

class ReportMacro : public testing::Test {
 protected:
  int Run(const std::string& statements) {
    const std::string name =
        Files.Folder.Write("macro.cfg", Files.InFolder(kHead + statements + kModels + "E_MACRO\n"));
    return RunMacro(name, Run_, Form, Drawer).Status;
  }
  // A file of the folder without the line that has the date.
  std::string Undated(const std::string& name) {
    return std::regex_replace(Files.Folder.Read(name), std::regex("20[0-9]{2}-[0-9-]+ [0-9:]+"), "DATE");
  }

  Program Files{kData};
  Session Run_;
  QuietForm Form;
  SvgDrawer Drawer;
};

TEST_F(ReportMacro, TellsOfTheBestModel) {
  EXPECT_EQ(Run(""), 0);
  const std::string bare = Files.Folder.Read("out.txt");
  EXPECT_EQ(Run("ReportFile = @a.html\n reportfile=@b b.MD\nReportFile = @c.tex\nReportFile = @d.ipynb\n"), 0);
  // The answers stay as they are but for the line that has the time.
  const auto undated = [](const std::string& text) { return std::regex_replace(text, std::regex("on 20.*"), ""); };
  EXPECT_EQ(undated(Files.Folder.Read("out.txt")), undated(bare));
  const std::string html = Undated("a.html");
  for (const char* part : {"<title>line &lt;1&gt;</title>", "<svg class=\".svg\">", "<math ", "Leave-one-out error",
                           "ReportFile = ", "def model(x):", "5 points from "})
    EXPECT_NE(html.find(part), std::string::npos) << part;
  EXPECT_EQ(html.find("<?xml"), std::string::npos);
  EXPECT_NE(Undated("b b.MD").find("\n| a | "), std::string::npos);
  EXPECT_NE(Undated("c.tex").find("\\addplot"), std::string::npos);
  EXPECT_NE(Undated("d.ipynb").find("assert math.isclose(model("), std::string::npos);
  EXPECT_EQ(Run("ReportFile = @a.html\n reportfile=@b b.MD\nReportFile = @c.tex\nReportFile = @d.ipynb\n"), 0);
  EXPECT_EQ(Undated("a.html"), html);
}

TEST_F(ReportMacro, DoesWithoutPicturesThatNobodyDraws) {
  Drawer.Missing = "There is no program that draws.";
  EXPECT_EQ(Run("ReportFile = @a.html\n"), 0);
  EXPECT_NE(Files.Log().find("Warning: There is no program that draws."), std::string::npos);
  EXPECT_NE(Undated("a.html").find("Residuals: There is no program that draws.</p>"), std::string::npos);
}

TEST_F(ReportMacro, RefusesWhatIsNoNameForIt) {
  Files.Folder.Write("data.html", kData);
  const struct {
    std::string Statements;
    int Status;
    const char* Sentence;
  } cases[] = {
      {"ReportFile = @a.odt\nReportFile = @old.html\n", 200,
       "The report '@a.odt' is not written: its name ends in none of .html, .pdf, .md, .tex, .ipynb."},
      {"ReportFile = @none/a.md\nReportFile = @old.html\n", 200,
       "The report '@none/a.md' cannot be written. The folder does not exist."},
      {"DataFile = @data.html\nReportFile = @data.html\nReportFile = @old.html\n", 220,
       "The report '@data.html' is the data file of this macro and is not overwritten."},
      {"OutputFile = @o.html\nReportFile = @o.html\nReportFile = @old.html\n", 220,
       "The report '@o.html' is the output file of this macro and is not overwritten."},
      {"ResultFile = @r.md\nReportFile = @r.md\n", 220,
       "The result file '@r.md' is the report of this macro and is not overwritten."},
  };
  for (const auto& [statements, status, sentence] : cases) {
    SCOPED_TRACE(statements);
    Files.Folder.Write("old.html", "old");
    EXPECT_EQ(Run(statements), status);
    EXPECT_NE(Files.Log().find(sentence), std::string::npos) << Files.Log();
    // The others are written.
    const bool isLeft = Files.Folder.Read("old.html") == "old";
    EXPECT_EQ(isLeft, statements.find("old") == std::string::npos);
    const MacroCheck check = CheckMacroText(Files.InFolder(kHead + statements + kModels + "E_MACRO\n"), Session());
    EXPECT_EQ(check.Status, status);
  }
}

TEST_F(ReportMacro, TakesParametersIntoItsNames) {
  Files.Folder.Write("p.csv", "SITE\none\ntwo\n");
  EXPECT_EQ(Run("ParameterFile = @p.csv\nReportFile = @%SITE%.md\n"), 0);
  EXPECT_NE(Undated("two.md").find("With the parameters SITE = two."), std::string::npos);
  EXPECT_NE(Undated("one.md").find("SITE = one."), std::string::npos);
}

// In the user's locale all numbers have its decimal separator, but those of code.
TEST_F(ReportMacro, HasOneDecimalSeparator) {
  Run_.Locale.DecimalSeparator = ',';
  Run_.Locale.ListSeparator = ';';
  EXPECT_EQ(Run("ReportFile = @a.html\nReportFile = @c.tex\nB_MODEL\nID = best\nY = a+b*x+0,25*c*sin(x)\n"
                "Report = q = a/2,5\nE_MODEL\n"),
            0);
  std::string html = Undated("a.html");
  html = html.substr(html.find("</style>"));
  for (const char* block : {"<pre[^]*?</pre>", "<svg[^]*?</svg>", "model\\([^<]*", "width=\"[^\"]*", "Quorvex [0-9.]*",
                            "[^ ]*html", "text-align[^\"]*", "class=\"verdict[^<]*", "size: [^<]*", "<li>[^<]*"})
    html = std::regex_replace(html, std::regex(block), "");
  std::smatch point;
  EXPECT_FALSE(std::regex_search(html, point, std::regex(".*[0-9]\\.[0-9].*"))) << point.str();
  EXPECT_NE(html.find("<mn>0,25</mn>"), std::string::npos);
  EXPECT_TRUE(std::regex_search(html, std::regex("<td class=\"number\">-?[0-9]+,[0-9]+</td>")));
  const std::string latex = Undated("c.tex");
  EXPECT_NE(latex.find("0{,}25"), std::string::npos);
  EXPECT_NE(latex.find("use comma"), std::string::npos);
  EXPECT_TRUE(std::regex_search(latex, std::regex("& \\$-?[0-9]+\\{,\\}[0-9]+")));
}

// A model without an ID stands by its formula: its key in the run is nobody's name.
TEST_F(ReportMacro, NamesAModelByItsFormulaWhereItHasNoName) {
  EXPECT_EQ(Run("ReportFile = @a.html\nB_MODEL\nY = a+b*x+c*sin(x)\nE_MODEL\n"), 0);
  const std::string html = Undated("a.html");
  EXPECT_NE(html.find("<title>a+b*x+c*sin(x)</title>"), std::string::npos);
  EXPECT_EQ(html.substr(0, html.find("The model in Python")).find("UserModel"), std::string::npos);
}

TEST(MacroWithoutPassword, HidesThatOfAConnectionAlone) {
  MacroSetup setup;
  const std::string text = "B_MACRO\r\n  datafile = Driver=SQLite3;Pwd=secret\r\nComment = Pwd=x\r\n";
  EXPECT_EQ(MacroWithoutPassword(text, setup).find("***"), std::string::npos);
  setup.SQLQuery = "select 1";
  const std::string shown = MacroWithoutPassword(text, setup);
  EXPECT_EQ(shown.find("secret"), std::string::npos);
  EXPECT_NE(shown.find("B_MACRO\n  datafile = Driver=SQLite3;Pwd=***\nComment = Pwd=x\n"), std::string::npos) << shown;
}

}  // namespace
}  // namespace quorvex
