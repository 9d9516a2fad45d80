// The plots of macros, with a drawer of the test's own; and of the command line, as far as that goes without one.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Paths.h"
#include "batch/Program.h"
#include "batch/RunMacro.h"
#include "files/PlotFile.h"

namespace quorvex {
namespace {

// Keeps what it is asked for.
struct NotingDrawer : PlotDrawer {
  std::string Missing, Fault;
  std::function<void()> Meanwhile = [] {};
  std::vector<std::string> Endings, Plots;

  std::string WhyNone() const override { return Missing; }
  Result<std::string> Draw(const std::string& plotText, const std::string& ending,
                           const std::function<bool()>& goOn) override {
    Endings.push_back(ending);
    Plots.push_back(plotText);
    Meanwhile();
    if (!goOn()) return Failure{"Called off."};
    if (!Fault.empty()) return Failure{Fault};
    return "picture" + ending;
  }
};

struct QuietForm : cfgSolve {
  std::string RequestWindows() override { return "No windows here."; }
};

constexpr const char* kData = "5 13.1 .2\n1 5.1 .1\n2 6.9 .1\n3 9.2 .1\n4 10.8 .1\n";
const std::string kHead = "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\n";
const std::string kLine = "B_MODEL\nID = line\nY = a+b*x\nE_MODEL\n";
const std::string kRoot = "B_MODEL\nID = root\nY = a+b*sqr(x)\nE_MODEL\n";
const std::string kModels = kLine + "B_MODEL\nID = bent\nY = a+b*x^2\nE_MODEL\n" + kRoot + "E_MACRO\n";

class PlotMacro : public testing::Test {
 protected:
  // The status of a run of that macro.
  int Run(const std::string& macro) {
    const std::string name = Files.Folder.Write("macro.cfg", Files.InFolder(macro));
    const MacroOutcome outcome = RunMacro(name, Run_, Form, Drawer);
    Said = Files.WithoutFolder(outcome.Message);
    return outcome.Status;
  }
  // The same of one with the data, the models and these statements.
  int Draw(const std::string& statements, const std::string& models = kModels) {
    return Run(kHead + statements + models);
  }
  // The names in the legend of the last plot.
  std::vector<std::string> Legend() const {
    const auto plot = ParsePlotFile(Drawer.Plots.at(Drawer.Plots.size() - 1), "p.plt", Settings(), LocaleText());
    std::vector<std::string> names;
    for (const PlotSeries& series : (*plot)->PlotData) names.push_back(series.Style().LegendText);
    return names;
  }

  Program Files{kData};
  Session Run_;
  QuietForm Form;
  NotingDrawer Drawer;
  std::string Said;
};
using Names = std::vector<std::string>;

TEST_F(PlotMacro, ShowsTheModelsThatItNames) {
  const std::string line = kHead + kLine + "E_MACRO\n";
  EXPECT_EQ(Run(line), 0);
  const std::string bare = Files.Log();
  EXPECT_TRUE(Drawer.Endings.empty());

  EXPECT_EQ(Draw("PlotFile = @a.svg\n plotfile=@b b.PNG\nPlotFile = @c.plt\nWeighted = True\n"), 0);
  EXPECT_EQ(Drawer.Endings, (Names{".svg", ".png"}));
  EXPECT_EQ(Drawer.Plots[0], Drawer.Plots[1]);
  EXPECT_EQ(Files.Folder.Read("c.plt"), Drawer.Plots[0]);
  EXPECT_EQ(Files.Folder.Read("a.svg") + Files.Folder.Read("b b.PNG"), "picture.svgpicture.png");
  EXPECT_NE(Files.Log().find("Writing solution to @out.txt\nWriting plot to @a.svg\nWriting plot to @b b.PNG\n"
                             "Writing plot to @c.plt\n****"),
            std::string::npos)
      << Files.Log();
  EXPECT_EQ(Legend(), (Names{"Input Data", "line"}));
  const auto plot = ParsePlotFile(Drawer.Plots[0], "p.plt", Settings(), LocaleText());
  EXPECT_TRUE((*plot)->PlotData[0].Style().ShowErrorBars);
  EXPECT_EQ((*plot)->PlotData[0].CopyDataTo().Y[0], 13.1);  // in the order of the source

  for (const auto& [models, names] : std::map<std::string, Names>{{"BEST", {"Input Data", "line"}},
                                                                  {"2", {"Input Data", "line", "root"}},
                                                                  {"99", {"Input Data", "line", "root", "bent"}},
                                                                  {"all", {"Input Data", "line", "root", "bent"}}}) {
    EXPECT_EQ(Draw("PlotModels = " + models + "\nPlotFile = @a.svg\n"), 0);
    EXPECT_EQ(Legend(), names) << models;
  }
  EXPECT_EQ(Draw("PlotKind = residuals\nPlotFile = @a.svg\n"), 0);
  EXPECT_EQ(Legend(), (Names{"Residuals", ""}));
  EXPECT_EQ(Draw("PlotKind = Probability\nPlotFile = @a.svg\n"), 0);
  EXPECT_EQ(Legend(), (Names{"Residuals", "Reference line"}));
  EXPECT_EQ(Draw("PlotKind = Profile\nPlotFile = @a.svg\n"), 0);
  EXPECT_EQ(Legend(), (Names{"a", "b", "Parabola", "", "", "", ""}));

  // The confidence of the lines, not of the data.
  for (const auto& [word, bands] :
       std::map<std::string, std::int32_t>{{"None", 0}, {"Confidence", 1}, {"prediction", 2}, {"Both", 3}}) {
    EXPECT_EQ(Draw("PlotModels = 2\nPlotFile = @a.svg\nPlotBands = " + word + "\n"), 0);
    const auto banded = ParsePlotFile(Drawer.Plots.back(), "p.plt", Settings(), LocaleText());
    ASSERT_TRUE(banded) << word << banded.error();
    for (const std::size_t series : {0u, 1u, 2u}) {
      EXPECT_EQ((*banded)->PlotData[series].Style().Bands, series == 0 ? 0 : bands) << word;
      EXPECT_EQ((*banded)->PlotData[series].ErrorBands() != nullptr, series > 0 && bands > 0) << word;
    }
  }

  // As a plot of the desktop program, with models only where the preferences say so.
  Run_.Preferences.SetFlag("plotmodelsonly", true);
  for (const auto& [wanted, names] :
       std::map<std::string, Names>{{"PlotModels = all", {"line", "root", "bent"}},
                                    {"PlotKind = Residuals", {"Residuals", ""}},
                                    {"PlotKind = Probability", {"Residuals", "Reference line"}}}) {
    EXPECT_EQ(Draw(wanted + "\nPlotFile = @a.svg\n"), 0);
    EXPECT_EQ(Legend(), names) << wanted;
  }

  EXPECT_EQ(Run(line), 0);
  EXPECT_EQ(Files.Log(), bare);
}

TEST_F(PlotMacro, TakesItsLookFromATemplate) {
  Files.Folder.Write("look.qv2", "plot_title_text = Mine\nx_axis_scale_min = prompt\nx_axis_scale_log = True\n");
  EXPECT_EQ(Draw("PlotFile = @a.svg\nPlotTemplate = @LOOK.qv2\n"), 0);
  const auto plot = ParsePlotFile(Drawer.Plots[0], "p.plt", Settings(), LocaleText());
  EXPECT_EQ((*plot)->PlotTitle, "Mine");
  EXPECT_TRUE((*plot)->Axes()[0]->LogScale);
}

TEST_F(PlotMacro, TellsWhatKeepsItFromAPlot) {
  Files.Folder.Write("old.svg", "old");
  Files.Folder.Write("look.qv2", "plot_title_text = Mine\n");
  Files.Folder.Write("look.qv3", "plot_title_text = Mine\n");
  Files.Folder.Write("far.qv2", "x_axis_scale_min = -100\nextrapolate = true\n");
  for (const char* name : {"pipe.svg", "pipe.plt"}) mkfifo(Files.Folder.Path(name).c_str(), 0666);
  Files.Folder.Write("plane.txt", "1 1 3\n1 2 4.1\n2 1 5.2\n2 2 6\n3 5 9.9\n3 1 7.1\n");
  Files.Folder.Write("space.txt", "1 1 2 3\n1 2 2 4.1\n2 1 1 5.2\n2 2 5 6\n3 5 4 9.9\n3 1 1 7.1\n");
  Files.Folder.Write("gap.txt", "-2 5\n-1 3\n1 3.1\n2 4.9\n");
  std::filesystem::create_directory(Files.Folder.Path("folder.svg"));
  const std::string old = "PlotFile = @old.svg\n";
  const std::string plane = "DataFile = @plane.txt\nIndependentVariables = 2\n";
  const std::string space = "DataFile = @space.txt\nIndependentVariables = 3\n";
  const std::string planes = "B_MODEL\nY = a+b*x1\nE_MODEL\nB_MODEL\nY = a+b*x2\nE_MODEL\nE_MACRO\n";
  const std::string gap = "B_MODEL\nID = gap\nY = a+b*sqr(x^2-0.5)\nE_MODEL\n";
  const struct {
    std::string Statements, Models;
    int Status;
    bool Drawn;  // in the place of old.svg
    std::string LogHas;
  } cases[] = {
      {"PlotModels = best2\nPlotKind = Plot\nPlotModels = 0\nPlotModels =\n" + old, kModels, 0, true,
       "Warning: 'PlotModels = best2' is ignored: it is none of best, all, a number from 1\n"
       "Warning: 'PlotKind = Plot' is ignored: it is none of Model, Residuals, Probability, Profile\n"
       "Warning: 'PlotModels = 0' is ignored: it is none of best, all, a number from 1\n"
       "Warning: 'PlotModels = ' is ignored: it is none of best, all, a number from 1\n"},
      {"PlotFile = @a.gif\nPlotFile = %X%\n" + old, kModels, 200, true,
       "Writing plot to @a.gif\nThe plot '@a.gif' is not written: its name ends in none of .bmp, .emf, .svg, .pdf, "
       ".png, .plt.\nWriting plot to %X%\n"},
      {"PlotFile = @folder.svg\nPlotFile=\n" + old, kModels, 220, true,
       "The plot '@folder.svg' cannot be written. The file cannot be accessed.\n"},
      {"PlotFile = @none/a.svg\n", kModels, 200, false,
       "The plot '@none/a.svg' cannot be written. The folder does not exist.\nFile Output Error: 200\n"},
      {"DataFile = @data.plt\nPlotFile = @data.plt\n", kModels, 220, false,
       "The plot '@data.plt' is the data file of this macro and is not overwritten.\n"},
      {"OutputFile = @out.plt\nPlotFile = @OUT.plt\nPlotFile = @out.plt\n", kModels, 220, false,
       "The plot '@out.plt' is the output file of this macro and is not overwritten.\n"},
      {"PlotTemplate = @look.qv2\nPlotFile = @link.plt\n", kModels, 220, false,
       "The plot '@link.plt' is the plot template of this macro and is not overwritten.\n"},
      {"PlotTemplate = @none.qv2\n" + old, kModels, 250, false,
       "The plot '@old.svg' cannot be drawn. The plot template '@none.qv2' cannot be read. The file does not exist.\n"
       "File Output Error: 250\n"},
      {"PlotTemplate = @look.qv3\n" + old, kModels, 250, false,
       "The plot '@old.svg' cannot be drawn. You cannot apply a 3D Template to a 2D Plot.\nFile Output Error: 250\n"},
      {plane + "PlotTemplate = @look.qv2\n" + old, planes, 250, false,
       "The plot '@old.svg' cannot be drawn. You cannot apply a 2D Template to a 3D Plot.\n"},
      {"PlotTemplate = @far.qv2\nPlotModels = all\n" + old, kModels, 0, true,
       "Warning: An error has occurred generating equation data for equation root\nWriting plot to @old.svg\n****"},
      {"PlotTemplate = @far.qv2\nPlotFile = @new.plt\n" + old, kRoot + "E_MACRO\n", 250, false,
       "The plot '@new.plt, @old.svg' cannot be drawn. An error has occurred generating equation data for equation "
       "root\nFile Output Error: 250\n"},
      {"PlotFile = @pipe.svg\nPlotFile = @pipe.plt\n" + old, kModels, 220, true,
       "Writing plot to @pipe.svg\nThe plot '@pipe.svg' cannot be written. It is a pipe or a device and not a file.\n"
       "Writing plot to @pipe.plt\nThe plot '@pipe.plt' cannot be written. It is a pipe or a device and not a file.\n"},
      {plane + old, planes, 0, true, "Writing solution to @out.txt\nWriting plot"},
      {plane + "PlotModels = all\n" + old, planes, 0, true,
       "Warning: Only one model at a time can be displayed on this kind of plot, which shows the best.\nWriting plot"},
      {space + "PlotModels = 2\n" + old, planes, 0, false,
       "Writing solution to @out.txt\nWarning: A model of more than two independent variables has no plot.\n****"},
      {space + "PlotKind = Residuals\n" + old, planes, 0, true, "Writing solution to @out.txt\nWriting plot"},
      {"DataFile = @gap.txt\n" + old, gap + "E_MACRO\n", 0, false,
       "Warning: An error has occurred generating equation data for equation gap\n****"},
      {"DataFile = @gap.txt\nPlotModels = all\n" + old, gap + kModels, 0, true,
       "Warning: An error has occurred generating equation data for equation gap"},
      {"DataFirstLine = 5\n" + old, kLine + "E_MACRO\n", 0, false,
       "Writing solution to @out.txt\nWarning: There are no regression models to plot.\n****"},
  };
  Files.Folder.Write("data.plt", kData);
  std::filesystem::create_symlink(Files.Folder.Path("look.qv2"), Files.Folder.Path("link.plt"));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Statements);
    Files.Folder.Write("old.svg", "old");
    EXPECT_EQ(Draw(c.Statements, c.Models), c.Status);
    EXPECT_NE(Files.Log().find(c.LogHas), std::string::npos) << Files.Log();
    EXPECT_EQ(Files.Folder.Read("old.svg"), c.Drawn ? "picture.svg" : "old");
    EXPECT_NE(Files.Folder.Read("out.txt") + Files.Folder.Read("out.plt"), "");
    std::filesystem::remove(Files.Folder.Path("out.txt"));
  }
  EXPECT_EQ(Files.Folder.Read("data.plt"), kData);
}

TEST_F(PlotMacro, DoesWithoutTheProgramThatDraws) {
  Drawer.Missing = "None here.";
  EXPECT_EQ(Draw("PlotFile = @a.svg\nPlotFile = @b.plt\nPlotFile = @c.png\n"), 0);
  EXPECT_NE(Files.Log().find("Writing solution to @out.txt\nWarning: None here.\nWriting plot to @b.plt\n****"),
            std::string::npos)
      << Files.Log();
  EXPECT_FALSE(std::filesystem::exists(Files.Folder.Path("a.svg")));
  EXPECT_TRUE(std::filesystem::exists(Files.Folder.Path("b.plt")));
}

TEST_F(PlotMacro, KeepsTheOlderPictureWhereTheDrawingFails) {
  Files.Folder.Write("a.svg", "old");
  const std::string macro = "PlotFile = @a.svg\n";
  Drawer.Fault = "It broke.";
  EXPECT_EQ(Draw(macro), 250);
  EXPECT_NE(Files.Log().find("The plot '@a.svg' cannot be drawn. It broke.\nFile Output Error: 250\n"),
            std::string::npos);
  EXPECT_EQ(Files.Folder.Read("a.svg"), "old");
  Drawer.Fault.clear();
  EXPECT_EQ(Said, "");
  Drawer.Fault = "It broke.";
  EXPECT_EQ(Draw("LogSummaryOnly = True\nPlotFile = @b.svg\n" + macro), 250);
  EXPECT_EQ(Said, "The plot '@b.svg' cannot be drawn. It broke.");
  Drawer.Fault.clear();
  Drawer.Meanwhile = [this] { Form.Aborted = true; };
  EXPECT_EQ(Draw(macro + "PlotFile = @b.plt\nPlotFile = @c.svg\n"), 450);
  EXPECT_NE(Files.Log().find("Writing plot to @a.svg\n\nSOLUTION PROCESS ABORTED BY USER.\n****"), std::string::npos)
      << Files.Log();
  EXPECT_TRUE(
      Files.Log().ends_with("Run Failed\n***************************************\nAbnormal termination\n"
                            "Exit Status 450\n"))
      << Files.Log();
  EXPECT_EQ(Files.Folder.Read("a.svg"), "old");
}

TEST_F(PlotMacro, HasPlotsOfEachRunOfATable) {
  Files.Folder.Write("p.csv", "site,ending\none,svg\ntwo,gif\nthree,plt\n");
  EXPECT_EQ(Draw("ParameterFile = @p.csv\nPlotFile = @%SITE%.%ending%\nPlotFile = @%site%.png\n"), 200);
  const std::string log = Files.Log();
  for (const char* name : {"one.svg", "one.png", "two.png", "three.plt", "three.png"})
    EXPECT_NE(Files.Folder.Read(name), "") << name << log;
  EXPECT_NE(log.find("Beginning Run: 1\nAssigning PlotFile = '@one.svg, @one.png'\nReading"), std::string::npos) << log;
  EXPECT_NE(log.find("Input parameters unchanged\nSolution Complete\n\nWriting solution to @out.txt\nWriting plot"),
            std::string::npos);
  EXPECT_TRUE(
      log.ends_with("1: Run Successful\n2: Run Failed\n3: Run Successful\n"
                    "***************************************\nNormal termination\n"))
      << log;
}

TEST_F(PlotMacro, LeavesOutWhatATableGivesNoName) {
  Files.Folder.Write("p.csv", "first,last\n@a.svg,\n,@b.svg\n,\n");
  Files.Folder.Write("p.csv", Files.InFolder(Files.Folder.Read("p.csv")));
  const std::string warning = "Warning: A PlotFile of this run has no name, and that plot is left out.\n";
  EXPECT_EQ(Draw("ParameterFile = @p.csv\nPlotFile = %first%\nPlotFile = %last%\n"), 0);
  EXPECT_EQ(Drawer.Endings, (Names{".svg", ".svg"}));
  for (const std::string& lines :
       {warning + "Assigning PlotFile = '@a.svg'\nReading", warning + "Assigning PlotFile = '@b.svg'\nInput",
        warning + warning + "Assigning PlotFile = ''\nInput"})
    EXPECT_NE(Files.Log().find(lines), std::string::npos) << lines << Files.Log();
}

TEST_F(PlotMacro, NeverOverwritesTheAnswersOfAnotherRunOfATable) {
  const std::string macro = "OutputFile = @%o%\nParameterFile = @p.csv\nPlotFile = @%p%\n";
  const std::string answers = "The plot '@o1.svg' is the output file of this macro and is not overwritten.\n";
  const std::string plot = "The output '@p1.svg' is a plot of this macro and is not overwritten.\n";
  const struct {
    const char* Table;
    int Status;
    std::string LogHas, Results;
  } cases[] = {
      {"o1.svg,p1.svg\no2.svg,o1.svg\no1.svg,p1.svg\n", 220, answers,
       "1: Run Successful\n2: Run Failed\n3: Run Successful\n"},
      {"o1.svg,p1.svg\no2.svg,./link.svg\n", 220, "link.svg' is the output file of this macro", "2: Run Failed\n"},
      {"o1.svg,p1.svg\np1.svg,p2.svg\n", 220, plot, "1: Run Successful\n2: Run Failed\n"},
      {"o1.svg,p1.svg\no1.svg,p1.svg\n", 0, "", "1: Run Successful\n2: Run Successful\n"},
  };
  std::filesystem::create_symlink("o1.svg", Files.Folder.Path("link.svg"));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Table);
    Files.Folder.Write("p.csv", std::string("o,p\n") + c.Table);
    EXPECT_EQ(Draw(macro), c.Status);
    EXPECT_NE(Files.Log().find(c.LogHas), std::string::npos) << Files.Log();
    EXPECT_NE(Files.Log().find(c.Results), std::string::npos) << Files.Log();
    EXPECT_NE(Files.Folder.Read("o1.svg").find("Model_ID"), std::string::npos);
    EXPECT_EQ(Files.Folder.Read("p1.svg"), "picture.svg");
  }
}

TEST_F(PlotMacro, TellsOfAMissingTemplateBeforeItSolves) {
  EXPECT_EQ(Draw("PlotTemplate = @none.qv2\n"), 0);
  EXPECT_EQ(Files.Log().find("none.qv2"), std::string::npos);
  EXPECT_EQ(Draw("PlotTemplate = @none.qv2\nPlotFile = @a.svg\n"), 250);
  const std::string log = Files.Log();
  EXPECT_LT(log.find("Error: The plot template '@none.qv2' cannot be read. The file does not exist.\n"),
            log.find("Solving models"))
      << log;
  EXPECT_NE(Files.Folder.Read("out.txt"), "");
}

TEST(PlotOption, SaysWhatIsWrongInASentence) {
  Program program;
  program.MoveAway();
  const std::string wanted =
      "A plot file and at least one picture to be made of it must be named, as in: "
      "quorvex -plot FILE.plt OUT.svg\n";
  program.Folder.Write("data.plt", "1 2\n2 3\n");
  const std::pair<std::string, std::string> cases[] = {
      {"-plot", wanted},
      {"-PLOT @a.plt", wanted},
      {"-plot @a.plt @b.plt", "The plot file '@a.plt' cannot be read. The file does not exist.\n"},
      {"-plot @ @b.plt", "The plot file '@' cannot be read. The file cannot be accessed.\n"},
      {"-plot @a.plt @b.plt @c.gif",
       "The plot '@c.gif' is not written: its name ends in none of .bmp, .emf, .svg, .pdf, .png, .plt.\n"
       "The plot file '@a.plt' cannot be read. The file does not exist.\n"},
      {"-plot @data.plt @c.gif @data.plt @d.plt @none/b.plt",
       "The plot '@c.gif' is not written: its name ends in none of .bmp, .emf, .svg, .pdf, .png, .plt.\n"
       "The file '@data.plt' is the plot itself and is not overwritten.\n"
       "The plot '@none/b.plt' cannot be written. The folder does not exist.\n"},
      {"-plot @data.plt @b.svg",
       "The desktop program quorvex-desktop is not installed, so no pictures are drawn, only plot files (.plt) are "
       "written.\n"},
      {"-plot @data.plt @data.plt", "The file '@data.plt' is the plot itself and is not overwritten.\n"},
      {"-plot @data.plt @none/b.plt @b.plt", "The plot '@none/b.plt' cannot be written. The folder does not exist.\n"},
  };
  for (const auto& [arguments, said] : cases) {
    EXPECT_EQ(program.Run(program.InFolder(arguments)), 1) << arguments;
    EXPECT_EQ(program.WithoutFolder(program.Err), said);
    EXPECT_EQ(program.Out, "");
  }
  EXPECT_EQ(program.Folder.Read("data.plt"), "1 2\n2 3\n");
  EXPECT_NE(program.Folder.Read("d.plt"), "");
  // The last one wrote what it could.
  EXPECT_EQ(program.Run(program.InFolder("-plot @b.plt @c.plt")), 0);
  EXPECT_EQ(program.Folder.Read("c.plt"), program.Folder.Read("b.plt"));
  EXPECT_NE(program.Folder.Read("c.plt"), "");
}

}  // namespace
}  // namespace quorvex
