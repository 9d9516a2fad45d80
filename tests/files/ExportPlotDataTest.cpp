#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "files/ExportPlotData.h"
#include "plot/Plots.h"
#include "plot3d/PlotClass3D.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

// Two series that share one X, and one of them twice.
PlotClass TwoSeries() {
  PlotClass plot{Settings()};
  plot.X.AxisTitle = "time \"s\"";
  plot.PlotData.push_back(PointSeries({3, 1, 1}, {0.1, 20, 30}, "first"));
  plot.PlotData.push_back(PointSeries({1, 2}, {-1.5e-300, 5}, "second"));
  return plot;
}

TEST(PlotDataText, HasARowForEachXAndAColumnForEachSeries) {
  const PlotClass plot = TwoSeries();
  EXPECT_EQ(PlotDataText(plot, ExportDelimiter::Comma),
            "\"time 's'\",\"first\",\"second\"\r\n1,20,-1.5E-300\r\n1,30,\"\"\r\n2,\"\",5\r\n3,0.1,\"\"\r\n");
  EXPECT_EQ(PlotDataText(PlotClass{Settings()}, ExportDelimiter::Tab), "\"\"\r\n");

  PlotClass3D box{Settings()};
  DataClass data;
  data.GenerateTable({{2, 1}, {5, 6}}, {7, 8});
  box.PlotData.emplace_back(std::move(data), SeriesStyle{.LegendText = "points"});
  box.X.AxisTitle = "a";
  box.Y.AxisTitle = "b";
  EXPECT_EQ(PlotDataText(box, ExportDelimiter::Space), "\"a\" \"b\" \"points\"\r\n1 6 8\r\n2 5 7\r\n");
}

TEST(PlotDataText, IsImportedAsItIs) {
  PlotClass plot = TwoSeries();
  for (const auto& [delimiter, mask, decimal] : {std::tuple{ExportDelimiter::Comma, kCommaDelimiter, '.'},
                                                 {ExportDelimiter::Tab, kTabDelimiter, ','},
                                                 {ExportDelimiter::Space, kSpaceDelimiter, ','}}) {
    if (decimal == ',') plot.Locale = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
    DelimitedFormat format;
    format.Delimiters = mask;
    format.IgnoreConsecutive = true;
    format.OverrideDecimal = false;
    format.DecimalSeparator = decimal;
    format.FirstLine = 2;
    const DelimitedLines lines = ParseDelimitedLines(PlotDataText(plot, delimiter), format);
    ASSERT_EQ(lines.Rows, 4u);
    EXPECT_EQ(lines.Cells.Cell(1, 3), -1.5e-300);
    EXPECT_EQ(lines.Cells.Cell(4, 2), 0.1);
    EXPECT_EQ(lines.Cells.Cell(3, 3), 5);
    EXPECT_EQ(lines.Cells.GridCellText(3, 2), "");
  }
}

TEST(ExportPlotData, RefusesToCutNumbersApart) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  user.File = folder.Path("out.dat");
  PlotClass plot = TwoSeries();
  EXPECT_TRUE(ExportPlotData(plot, ExportDelimiter::Comma, user));
  EXPECT_EQ(user.Said, std::vector<std::string>{"save: Export|Data files (*.dat)|dat"});
  EXPECT_EQ(folder.Read("out.dat"), PlotDataText(plot, ExportDelimiter::Comma));

  plot.Locale.DecimalSeparator = ',';
  EXPECT_FALSE(ExportPlotData(plot, ExportDelimiter::Comma, user));
  EXPECT_EQ(user.Last(),
            "refuse: The system specified decimal seperator is a comma. Please choose another character for the "
            "delimiter when exporting this file.");
  user.File = folder.Path("missing/out.dat");
  EXPECT_FALSE(ExportPlotData(plot, ExportDelimiter::Tab, user));
  EXPECT_EQ(user.Last(), "refuse: Error writing to '" + *user.File + "'. The folder does not exist.");
}

}  // namespace
}  // namespace quorvex
