#include <gtest/gtest.h>

#include "drawing/EmfReader.h"
#include "plot/Metafile.h"
#include "plot/Plots.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

constexpr const char* kDescription = "Quorvex:  Version 9.0\0Plot MetaFile\0";
constexpr std::size_t kDescriptionLength = 37;

PlotClass FullPlot() {
  PlotClass plot{Settings()};
  plot.PlotTitle = "Gr\u00F6\u00DFe x~>2~>";
  plot.X.AxisTitle = "\u03B8";
  plot.Y.AxisTitle = "H\u00F6he";
  for (int style = 0; style < 10; ++style) {
    plot.PlotData.push_back(PointSeries({0, 1, 2.2, 3.1}, {0.5, 1.5 + style, 1, 2.0 * style}, "series", {1, 1, 1, 1}));
    SeriesStyle& look = plot.PlotData.back().Style();
    look.MarkerStyle = style;
    look.DrawStyle = style % 5;
    look.DisplayMarker = true;
    look.ShowErrorBars = style == 0;
  }
  plot.FootNote.Show = plot.Legend.ShowShadow = true;
  plot.FootNoteText = "Two lines\r\nof text";
  return plot;
}

// In whichever direction they were drawn.
std::vector<std::string> Sorted(std::vector<std::string> lines) {
  for (std::string& line : lines) {
    std::istringstream in(line);
    std::string word;
    DevicePoint from, to;
    in >> word >> from.x >> from.y >> to.x >> to.y;
    const bool ends = (in >> std::ws).eof(), backward = std::pair(from.x, from.y) > std::pair(to.x, to.y);
    std::ostringstream turned;
    turned << word << ' ' << to.x << ' ' << to.y << ' ' << from.x << ' ' << from.y;
    if (ends && backward) line = turned.str();
  }
  std::ranges::sort(lines);
  return lines;
}

// The lines of a recording, as the file has them.
std::vector<std::string> Lines(const RecordingSurface& recording) {
  std::vector<std::string> lines;
  std::string position;
  bool open = false;
  for (const std::string& call : recording.Calls) {
    const std::string word = call.substr(0, call.find(' ')), rest = call.substr(std::min(call.size(), word.size()));
    if (word == "MoveToEx") {
      open = open && position == rest;
      position = rest;
    } else if (word == "LineTo") {
      if (rest == position) continue;  // no dot
      if (!open) lines.push_back("Line" + position);
      lines.back() += rest;
      position = rest;
      open = true;
    } else {
      open = false;
    }
  }
  return lines;
}

TEST(CreateMetafile, HoldsWhatTheSameDrawingHoldsElsewhere) {
  PlotClass plot = FullPlot();
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  RecordingSurface recording(640, 480), target(640, 480);
  ASSERT_TRUE(plot.DrawGraph(recording, prompter));
  const EmfReader file(CreateMetafile(plot, target, kMetafileNotCreated, prompter).value_or(""));
  EXPECT_NE(plot.MetafileHandle, 0u);
  EXPECT_TRUE(target.Only({"LineTo", "TextOutA", "Rectangle"}).empty());  // it only measures

  for (const char* word : {"TextOutA", "SetTextColor", "SetBkMode", "Rectangle", "Ellipse"})
    EXPECT_EQ(file.Only({word}), recording.Only({word})) << word;
  // Single steps are painted behind the longer lines in the same pen.
  EXPECT_EQ(Sorted(file.Only({"Line"})), Sorted(Lines(recording)));
  EXPECT_EQ(file.ObjectCount(), 0u);
}

TEST(CreateMetafile, TakesFrameAndDescriptionFromTargetAndProgram) {
  PlotClass plot = FullPlot();
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  // 1440 and 720 twips to the millimetre of 96 units to the inch: 640 are 169 mm and 1280 are 339.
  for (const auto& [width, hundredths] : {std::pair{640, 16900}, {1280, 33900}}) {
    RecordingSurface target(width, 480);
    const EmfReader file(CreateMetafile(plot, target, kMetafileNotCreated, prompter).value_or(""));
    EXPECT_EQ(file.I32(32), hundredths);
    EXPECT_EQ(file.I32(36), 12700);
    EXPECT_EQ(file.U32(60), kDescriptionLength);
    EXPECT_EQ(file.Text(file.U32(64), kDescriptionLength), std::string(kDescription, kDescriptionLength));
  }
}

TEST(CreateMetafile, RecordsSurfacesInSpace) {
  PlotClass3D plot{Settings()};
  DataClass points;
  points.GenerateTable({{0, 1, 0, 1}, {0, 0, 1, 1}}, {1, 2, 3, 5});
  plot.PlotData.emplace_back(std::move(points), SeriesStyle{.LegendText = "corners", .DisplayMarker = true});
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
  RecordingSurface recording, target;
  ASSERT_TRUE(plot.DrawGraph(recording, prompter));
  const EmfReader file(CreateMetafile(plot, target, kMetafileNotCreated, prompter).value_or(""));
  EXPECT_EQ(file.Only({"TextOutA", "Ellipse", "Polygon"}), recording.Only({"TextOutA", "Ellipse", "Polygon"}));
}

TEST(CreateMetafile, SaysWhereThereIsNone) {
  PlotClass plot = FullPlot();
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  // On a device that is no millimetre wide, and of a plot that cannot be drawn.
  RecordingSurface small(1, 1), target;
  for (const bool created : {true, false}) {
    plot.PlotCreated = created;
    EXPECT_FALSE(CreateMetafile(plot, created ? small : target, kMetafileNotCreated, prompter));
    EXPECT_EQ(prompter.Last(), "refuse: Error creating Metafile.");
    EXPECT_FALSE(CreateMetafile(plot, created ? small : target, kMetafileNotCopied, prompter));
    EXPECT_EQ(prompter.Last(), "refuse: Error Creating Metafile");
  }
}

}  // namespace
}  // namespace quorvex
