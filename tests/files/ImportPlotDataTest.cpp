#include <gtest/gtest.h>

#include "Projects.h"
#include "RecordingPrompter.h"
#include "SavedPlots.h"
#include "TemporaryFolder.h"
#include "files/ImportPlotData.h"
#include "files/PlotFile.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

// A solved project with so many variables.
Project SolvedProject(std::size_t variables) {
  if (variables == 1) {
    Project project = OneVariableProject({});
    project.Sheet.Cells.ClearCell(10, 2);  // a text, which is no point
    return project;
  }
  if (variables == 3) return SeveralVariablesProject({});
  Project project = NewProject(2, false, {});
  const double rows[][3] = {{1, 2, 3.1}, {2, 1, 4.2}, {3, 5, 9.9}, {4, 4, 9.4}, {5, 7, 14}};
  for (std::size_t i = 0; i < std::size(rows); ++i)
    for (std::size_t col = 0; col < 3; ++col) project.Sheet.Cells.SetGridCellNumber(i + 1, col + 1, rows[i][col]);
  Fit(*project.Models.Find("a+b*x1+c*x2"), PointsOf(project), 1);
  return project;
}

std::vector<std::string> Legends(const PlotPage& plot) {
  std::vector<std::string> legends;
  for (const PlotSeries& series : plot.PlotData) legends.push_back(series.Style().LegendText);
  return legends;
}

class ImportingIntoAPlot : public testing::Test {
 protected:
  // What is said of the import, and what the plot then has beyond what it had.
  std::vector<std::string> Import(PlotPage& plot, const std::string& name) {
    user.Said.clear();
    plot.PlotData.push_back(DataSeries(Points({{1}, {2}}, {3}), {}, {.LegendText = "here"}));
    ImportPlotData(plot, folder.Path(name), Settings(), user);
    std::vector<std::string> legends = Legends(plot);
    EXPECT_EQ(legends.at(0), "here");
    legends.erase(legends.begin());
    legends.insert(legends.end(), user.Said.begin(), user.Said.end());
    return legends;
  }

  TemporaryFolder folder;
  RecordingPrompter user;
};

TEST_F(ImportingIntoAPlot, TakesSeriesOfPlotsProjectsAndData) {
  folder.Write("2d.plt", PlotFileText(*FullPlot2D()));
  folder.Write("3d.plt", PlotFileText(*FullPlot3D()));
  for (const std::size_t variables : {1u, 2u, 3u})
    folder.Write(std::to_string(variables) + ".qvx", ProjectText(SolvedProject(variables)));
  folder.Write("old.qvx", "\"B_HEADER\"\n\"    Quorvex:  Version 4.1\"\n\"a\"\n\"b\"\n\"columns=2\"\n");
  folder.Write("new.qvx", "\"B_HEADER\"\n\"    Quorvex:  Version 10.0\"\n\"a\"\n\"b\"\n\"columns=2\"\n");
  folder.Write("new.plt", "\"B_HEADER\"\n\"Quorvex:  Version 9.5 Plot\"\n\"PlotType: 2D\"\n");
  folder.Write("old.plt", "\"B_HEADER\"\n\"Scanvue Version 2.2\"\n\"a\"\n\"b\"\n");
  folder.Write("cut.plt", "\"B_HEADER\"\n\"Quorvex:  Version 9.0 Plot\"\n\"PlotType: 2D\"\n\"E_HEADER\"\n");
  folder.Write("runs.dat", "1,2\n3,4\n");
  folder.Write("space.dat", "X1,X2,Y\n1,2,3\n4,5,6\n");
  folder.Write("words.dat", "none\n");
  using Texts = std::vector<std::string>;
  const auto file = [&](const std::string& name) { return "refuse: '" + folder.Path(name) + "'"; };
  const auto noData = [&](const std::string& name) {
    return "refuse: Error importing data from '" + folder.Path(name) +
           "'. Either there is no data available in this file, or the file is corrupt.";
  };
  const std::string unreadable =
      "refuse: Error reading plot '" + folder.Path("cut.plt") + "'.\r\nThe file is incompatible or appears corrupted.";
  constexpr const char* kAncient =
      "refuse: Due to the solver enhancements in the software, the plot file cannot be read.  Please re-solve the "
      "project to create plots from this solution.";
  const std::string otherVersion = " is not compatible with Quorvex version 9.0";
  const struct {
    std::string name;
    Texts frame, box;
  } kCases[] = {
      {"2d.plt",
       {"Data", "", "Line", "Mine", "Spline"},
       {file("2d.plt") + " is a 2D plot file which cannot be imported into a 3D plot."}},
      {"3d.plt",
       {file("3d.plt") + " is a 3D plot file which cannot be imported into a 2D plot."},
       {"Data", "Surface", "Plane"}},
      {"1.qvx",
       {"Input Data", "a*x+b", "My line", "Cubic Spline", "Polynomial"},
       {file("1.qvx") + " is a 2D project file which cannot be imported into a 3D plot."}},
      {"2.qvx",
       {file("2.qvx") + " is a 3D project file which cannot be imported into a 2D plot."},
       {"Input Data", "Model a+b*x1+c*x2"}},
      {"3.qvx",
       {file("3.qvx") + " is a 3D project file which cannot be imported into a 2D plot."},
       {"refuse: A model of more than two independent variables has no plot."}},
      {"old.qvx",
       {"refuse: Due to the solver enhancements in the software, the plot information cannot be read."},
       {"refuse: Due to the solver enhancements in the software, the plot information cannot be read."}},
      {"new.qvx", {file("new.qvx") + otherVersion}, {file("new.qvx") + otherVersion}},
      {"new.plt", {file("new.plt") + otherVersion}, {file("new.plt") + otherVersion}},
      {"old.plt", {kAncient}, {kAncient}},
      {"cut.plt", {unreadable}, {unreadable}},
      {"runs.dat", {"Raw Data"}, {noData("runs.dat")}},
      {"space.dat", {"Raw Data"}, {"Raw Data"}},
      {"words.dat", {noData("words.dat")}, {noData("words.dat")}},
      {"missing.dat", {noData("missing.dat")}, {noData("missing.dat")}},
  };
  for (const auto& c : kCases) {
    PlotClass frame{Settings()};
    EXPECT_EQ(Import(frame, c.name), c.frame) << c.name;
    PlotClass3D box{Settings()};
    EXPECT_EQ(Import(box, c.name), c.box) << c.name;
  }
}

TEST_F(ImportingIntoAPlot, DrawsWhatWasImported) {
  folder.Write("1.qvx", ProjectText(SolvedProject(1)));
  folder.Write("2.qvx", ProjectText(SolvedProject(2)));
  PlotClass frame{Settings()};
  PlotClass3D box{Settings()};
  for (auto& [plot, name] : {std::pair<PlotPage*, const char*>(&frame, "1.qvx"), {&box, "2.qvx"}}) {
    EXPECT_TRUE(ImportPlotData(*plot, folder.Path(name), Settings(), user));
    EXPECT_TRUE(plot->CreateGraph({.Auto = true, .Regenerate = true}, user)) << user.Last();
    for (const PlotSeries& series : plot->PlotData) EXPECT_GT(series.NumTablePoints(), 0u);
    EXPECT_TRUE(user.Said.empty());
  }
}

}  // namespace
}  // namespace quorvex
