#include <gtest/gtest.h>

#include <numbers>
#include <sstream>

#include "Golden.h"
#include "plot/PageSetup.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

using Lines = std::vector<std::string>;

// 400 by 300 units of a quarter millimetre: 4 mm are 16 units and 2 mm are 8, an inch has 102, a major tick 13.
// Numbers at 8 points are 5 wide a character and 11 high, axis titles at 10 points 6 and 13, the title 8 and 16.
RecordingSurface QuarterMillimetres() {
  RecordingSurface surface(400, 300);
  surface.Caps = {{DeviceCap::HORZSIZE, 100}, {DeviceCap::VERTSIZE, 75}};
  return surface;
}

PlotClass UnitPlot() {
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(PointSeries({0, 1}, {0, 1}));
  return plot;
}

RecordingSurface Drawn(PlotClass& plot, RecordingSurface surface = QuarterMillimetres()) {
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  plot.RefreshPlot(surface, prompter);
  EXPECT_TRUE(prompter.Said.empty());
  EXPECT_EQ(surface.ObjectCount(), 0U) << "pens, brushes, fonts and regions left behind";
  return surface;
}

// The straight lines in the order drawn, as "x1 y1 x2 y2".
Lines Segments(const RecordingSurface& surface) {
  Lines lines;
  std::string from;
  for (const std::string& call : surface.Only({"MoveToEx", "LineTo"})) {
    const std::string place = call.substr(call.find(' '));
    if (call.starts_with("LineTo")) lines.push_back(from.substr(1) + place);
    from = place;
  }
  return lines;
}

bool Has(const Lines& lines, const std::string& line) { return std::ranges::count(lines, line) > 0; }

TEST(DrawGraph, LaysTheFrameOut) {
  const struct {
    const char* what;
    void (*change)(PlotClass&);
    DeviceRect frame;
  } kCases[] = {
      {"numbers alone", [](PlotClass&) {}, {52, 24, 368, 257}},
      {"titles", [](PlotClass& p) { p.PlotTitle = "T", p.X.AxisTitle = "x", p.Y.AxisTitle = "y"; }, {65, 40, 368, 244}},
      {"longer numbers at the left", [](PlotClass& p) { p.Y.LabelString = "0.0000"; }, {62, 24, 368, 257}},
      {"and swapped", [](PlotClass& p) { p.Y.LabelString = "0.0000", p.SwapAxis = true; }, {52, 24, 368, 257}},
      {"a title swapped below", [](PlotClass& p) { p.Y.AxisTitle = "y", p.SwapAxis = true; }, {52, 24, 368, 244}},
      {"slanted numbers below", [](PlotClass& p) { p.X.LabelString = "0.00000"; }, {52, 24, 368, 243}},
      {"square", [](PlotClass& p) { p.Make2DSquare = true; }, {52, 24, 285, 257}},
  };
  for (const auto& c : kCases) {
    PlotClass plot = UnitPlot();
    c.change(plot);
    Drawn(plot);
    EXPECT_EQ(plot.Shown().Frame, c.frame) << c.what;
  }
}

TEST(DrawGraph, MakesAHighPageSquareToo) {
  PlotClass plot = UnitPlot();
  plot.Make2DSquare = true;
  RecordingSurface high(300, 600);
  high.Caps = {{DeviceCap::HORZSIZE, 75}, {DeviceCap::VERTSIZE, 150}};
  Drawn(plot, high);
  // 216 units of width are too narrow for numbers side by side (210 of them, and the frame would be 216).
  EXPECT_EQ(plot.Shown().Frame, (DeviceRect{52, 24, 268, 240}));
}

TEST(DrawGraph, PlacesTitlesAndNumbers) {
  PlotClass plot = UnitPlot();
  plot.PlotTitle = "Title";
  plot.X.AxisTitle = "x axis";
  plot.Y.AxisTitle = "y~>2~> axis";
  const Lines texts = Drawn(plot).Only({"TextOutA"});
  // The Y title: 72 units of letters, of which a superscript of 75 % takes 5; a normal piece sits 3 lower (further
  // right), and the whole is 16 high, so the frame begins at 68.
  EXPECT_EQ(plot.Shown().Frame, (DeviceRect{68, 40, 368, 244}));
  for (const char* text : {
           "TextOutA 198 16 Title",
           "TextOutA 200 271 x axis",
           "TextOutA 19 162 y",
           "TextOutA 16 156 2",
           "TextOutA 19 151  axis",
           "TextOutA 40 238 0.00",  // the lowest number of the Y axis
           "TextOutA 40 34 1.00",
           "TextOutA 58 252 0.00",  // the first one of the X axis
           "TextOutA 358 252 1.00",
       })
    EXPECT_TRUE(Has(texts, text)) << text;
}

TEST(DrawGraph, KeepsLongTitlesWithinThePage) {
  const auto text = [](std::size_t characters) { return std::string(characters, 'm'); };
  // 384 units across between rims of 8, and 239 down from one title to the other.
  const struct {
    std::size_t title, x, y;  // characters
    std::string titleText, xText, yText;
  } kCases[] = {
      {48, 64, 39, "8 16 " + text(48), "8 271 " + text(64), "16 266 " + text(39)},
      {49, 65, 40, "8 16 " + text(45) + "...", "8 271 " + text(61) + "...", "16 266 " + text(36) + "..."},
      {45, 60, 38, "32 16 " + text(45), "32 271 " + text(60), "16 260 " + text(38)},  // aside of the frame's middle
      {5000, 0, 5000, "8 16 " + text(45) + "...", "", "16 284 " + text(39) + "..."},
  };
  for (const auto& c : kCases) {
    PlotClass plot = UnitPlot();
    plot.PlotTitle = text(c.title);
    plot.X.AxisTitle = text(c.x);
    plot.Y.AxisTitle = text(c.y);
    const Lines texts = Drawn(plot).Only({"TextOutA"});
    for (const std::string& expected : {c.titleText, c.xText, c.yText})
      EXPECT_TRUE(expected.empty() || Has(texts, "TextOutA " + expected)) << expected;
  }
}

TEST(DrawGraph, SlantsCrowdedNumbers) {
  const struct {
    const char* what;
    const char* format;
    std::int32_t width;
    bool slanted;
  } kCases[] = {
      {"10 gaps of 30 units and 5 %: 315 of 316", "0.0000", 400, false},
      {"and 315 of 315", "0.0000", 399, true},
      {"the last number, 70 units, reaches 35 beyond the frame, over 2 * 16", "0.000000000000", 4000, true},
      {"60 units reach 30 beyond it", "0.0000000000", 4000, false},
  };
  for (const auto& c : kCases) {
    PlotClass plot = UnitPlot();
    plot.X.LabelString = c.format;
    RecordingSurface surface(c.width, 300);
    surface.Caps = {{DeviceCap::HORZSIZE, c.width / 4}, {DeviceCap::VERTSIZE, 75}};
    const Lines fonts = Drawn(plot, surface).Only({"CreateFontIndirectA"});
    EXPECT_EQ(std::ranges::any_of(fonts, [](const std::string& f) { return f.find(" -11 450 ") != f.npos; }), c.slanted)
        << c.what;
  }
  PlotClass plot = UnitPlot();
  plot.X.LabelString = "0.00000";
  const Lines texts = Drawn(plot).Only({"TextOutA"});
  EXPECT_TRUE(Has(texts, "TextOutA 22 276 0.00000"));   // 52 - 43 * 0.7071, 243 + 8 + 35 * 0.7071
  EXPECT_TRUE(Has(texts, "TextOutA 338 276 1.00000"));  // ends below 368
}

TEST(DrawGraph, SetsTicksIntoTheFrame) {
  PlotClass plot = UnitPlot();
  const Lines lines = Segments(Drawn(plot));
  EXPECT_EQ(lines.size(), 5U + 2 * 10 + 2 * 40 + 1);
  for (const char* line : {"52 24 368 24", "368 24 368 257", "368 257 52 257", "52 257 52 24",  // the frame
                           "52 234 65 234", "52 24 65 24",      // major at the left, the first and the last
                           "84 257 84 244", "368 257 368 244",  // and below
                           "52 252 58 252", "58 257 58 251"})   // minor
    EXPECT_TRUE(Has(lines, line)) << line;

  plot.X.ShowExtraTicks = true;
  plot.Y.NumMinorTicks = 0;
  const Lines extra = Segments(Drawn(plot));
  EXPECT_EQ(extra.size(), 5U + 10 + 20 + 80 + 1);
  EXPECT_TRUE(Has(extra, "84 24 84 37"));
  EXPECT_TRUE(Has(extra, "58 24 58 30"));

  plot.TickPenLength = 0.15F;  // 15.3 units; the half of 15 goes to the even 8
  const Lines longer = Segments(Drawn(plot));
  EXPECT_TRUE(Has(longer, "84 257 84 242"));
  EXPECT_TRUE(Has(longer, "58 257 58 249"));
}

// In a decade the ticks stand at log10(1) to log10(9): 316 / 2 * {0, 0.3010, 0.4771, ...} from 52 on.
TEST(DrawGraph, SetsTheMinorTicksOfADecade) {
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(PointSeries({1, 100}, {0, 1}));
  plot.X.LogScale = true;
  plot.Y.NumMinorTicks = 0;
  Lines below;
  for (const std::string& line : Segments(Drawn(plot)))
    if (line.ends_with(" 251")) below.push_back(line.substr(0, line.find(' ')));
  EXPECT_EQ(below, (Lines{"52", "100", "127", "147", "162", "175", "186", "195", "203", "210", "258", "285", "305",
                          "320", "333", "344", "353", "361"}));
}

TEST(DrawGraph, DrawsGridsAcrossTheFrame) {
  PlotClass plot = UnitPlot();
  plot.X.ShowMajorGrids = true;
  plot.Y.ShowMinorGrids = true;
  const Lines lines = Segments(Drawn(plot));
  EXPECT_EQ(lines.size(), 5U + 2 * 10 + 2 * 40 + 10 + 40 + 1);
  EXPECT_TRUE(Has(lines, "84 257 84 24"));
  EXPECT_TRUE(Has(lines, "52 252 368 252"));
}

TEST(DrawGraph, DrawsACurveWithoutRepeatingPixels) {
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(PointSeries({0, 0.0001, 0.5, 0.5, 0.5001, 1}, {0, 0, 0.5, 0.5, 0.5, 1}));
  plot.PlotData[0].Style().DisplayMarker = true;
  const RecordingSurface surface = Drawn(plot);
  const Lines lines = Segments(surface);
  EXPECT_EQ((Lines{lines.end() - 2, lines.end()}), (Lines{"52 257 210 140", "210 140 368 24"}));
  // 5 points of marker are a radius of 4.
  EXPECT_EQ(surface.Only({"Ellipse"}),
            (Lines{"Ellipse 48 253 56 261", "Ellipse 206 136 214 144", "Ellipse 364 20 372 28"}));
  const Lines clips = surface.Only({"CreateRectRgn"});
  ASSERT_EQ(clips.size(), 2U);
  EXPECT_TRUE(clips[0].starts_with("CreateRectRgn 52 24 368 257"));
  EXPECT_TRUE(clips[1].starts_with("CreateRectRgn 48 20 372 261"));

  plot.SwapAxis = true;
  plot.X.LogScale = true;  // upward, without a place for 0
  plot.PlotData.clear();
  plot.PlotData.emplace_back(PointSeries({1, 0, 100}, {0, 0.7, 1}));
  plot.X.Min = 1, plot.X.Max = 100, plot.Y.Min = 0, plot.Y.Max = 1;
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({}, prompter));
  RecordingSurface swapped = QuarterMillimetres();
  plot.RefreshPlot(swapped, prompter);
  const DeviceRect& frame = plot.Shown().Frame;
  const auto corner = [](std::int32_t x, std::int32_t y) { return std::to_string(x) + " " + std::to_string(y); };
  EXPECT_EQ(Segments(swapped).back(), corner(frame.left, frame.bottom) + " " + corner(frame.right, frame.top));
}

// The second point lies 316,000 units to the right of the first and 932,000 above. By Pythagoras 12 units towards
// it are 3.85 to the right and 11.36 up.
TEST(DrawGraph, LeadsADashedLineTowardsAFarPoint) {
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(PointSeries({0, 1000}, {0, 4000}));
  plot.PlotData[0].Style().DrawStyle = 1;
  plot.X.Max = plot.Y.Max = 1;
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({}, prompter));
  RecordingSurface surface = QuarterMillimetres();
  plot.RefreshPlot(surface, prompter);
  EXPECT_TRUE(Has(Segments(surface), "52 257 56 246"));

  plot.PlotData[0].Style().DrawStyle = 0;  // a solid one has no second point
  RecordingSurface solid = QuarterMillimetres();
  plot.RefreshPlot(solid, prompter);
  EXPECT_EQ(Segments(solid).size(), 5U + 2 * 10 + 2 * 40);
}

TEST(DrawGraph, GivesUpWhereASeriesHasNoPoints) {
  PlotClass plot = UnitPlot();
  plot.PlotData.emplace_back(Curve("a*x", {1}));  // whose table nobody made
  plot.Legend.Show = true;
  plot.PlotData[0].Style().LegendText = "line";
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  RecordingSurface surface = QuarterMillimetres();
  EXPECT_FALSE(plot.DrawGraph(surface, prompter));
  EXPECT_FALSE(plot.PlotCreated);
  EXPECT_EQ(prompter.Last(), "refuse: An error occurred creating the plot with the current data and plot settings.");
  EXPECT_FALSE(Has(surface.Only({"TextOutA"}), "line"));
  EXPECT_EQ(surface.ObjectCount(), 0U);

  RecordingSurface again;
  plot.RefreshPlot(again, prompter);
  EXPECT_TRUE(again.Calls.empty());
}

TEST(DrawGraph, DrawsErrorBars) {
  const Lines upright = {"210 82 210 199", "204 82 216 82", "204 199 216 199"};
  const struct {
    const char* what;
    bool swap, log;
    std::vector<double> x, y, sd;
    Lines lines;  // 102 units to the inch make caps of 6 to either side
  } kCases[] = {
      {"upright", false, false, {0.5}, {0.5}, {0.25}, upright},
      {"lying", true, false, {0.5}, {0.5}, {0.25}, {"289 140 131 140", "289 134 289 146", "131 134 131 146"}},
      {"once for a pixel", false, false, {0.5, 0.5, 0.5001}, {0.5, 0.5, 0.5}, {0.25, 0.1, 0.1}, upright},
      {"not beyond the axis", false, false, {-0.1, 1.1}, {0.5, 0.5}, {0.25, 0.25}, {}},
      // Decades 0.01 to 1: 0.1 is the middle, 0.2 lies 0.3010 of 116.5 above it, and 0 has no place.
      {"to nothing", false, true, {0.5}, {0.1}, {0.1}, {"210 105 210 50000", "204 105 216 105", "204 50000 216 50000"}},
      {"lying so", true, true, {0.5}, {0.1}, {0.1}, {"258 140 -50000 140", "258 134 258 146", "-50000 134 -50000 146"}},
  };
  for (const auto& c : kCases) {
    PlotClass plot = BarePlot();
    plot.PlotData.push_back(PointSeries(c.x, c.y, "", c.sd));
    plot.PlotData[0].Style() = {.DisplayLine = false, .DisplayMarker = true, .ShowErrorBars = true};
    plot.SwapAxis = c.swap;
    plot.Y.LogScale = c.log;
    plot.X.Max = plot.Y.Max = 1;
    plot.Y.Min = c.log ? 0.01 : 0;
    plot.X.NumMajorTicks = plot.Y.NumMajorTicks = 2;
    plot.X.NumMinorTicks = plot.Y.NumMinorTicks = 0;
    RecordingPrompter prompter;
    ASSERT_TRUE(plot.CreateGraph({}, prompter));
    plot.Y.NumMinorTicks = 0;
    RecordingSurface surface = QuarterMillimetres();
    ASSERT_TRUE(plot.DrawGraph(surface, prompter));
    Lines lines = Segments(surface);
    EXPECT_EQ(Lines(lines.begin() + 9, lines.end()), c.lines) << c.what;  // behind frame and ticks
  }
}

TEST(DrawGraph, DrawsTheLegend) {
  PlotClass plot = UnitPlot();
  plot.Legend.Show = true;
  plot.Legend.ShowShadow = true;
  plot.PlotData.emplace_back(PointSeries({0, 1}, {0, 1}, "second one"));
  plot.PlotData.emplace_back(PointSeries({0, 1}, {0, 1}, "hidden"));
  plot.PlotData[0].Style().LegendText = "first";
  plot.PlotData[0].Style().MarkerSize = 12;  // 17 high, and so are the rows from there on
  plot.PlotData[1].Style().DrawStyle = 1;
  plot.PlotData[1].Style().DisplayMarker = true;
  plot.PlotData[1].Style().MarkerStyle = 7;
  plot.PlotData[2].Style().DisplayLine = false;
  const auto boxes = [](const RecordingSurface& surface, long count) {  // the last ones
    const Lines rectangles = surface.Only({"Rectangle"});
    return Lines(rectangles.end() - count, rectangles.end());
  };
  // 10 letters of 5, 5 gaps of 8 and a sample of 32 (a dash's own 28 is shorter) by two rows of 17 and 2 gaps of 8.
  RecordingSurface surface = Drawn(plot);
  EXPECT_EQ(plot.Shown().Legend, (DeviceRect{238, 32, 360, 82})) << "in the corner of the frame, 8 from its lines";
  EXPECT_EQ(boxes(surface, 3), (Lines{"Rectangle 243 37 364 86", "Rectangle 238 32 360 82",
                                      "Rectangle 324 61 332 69"}));  // shadow, box, marker of the second row
  EXPECT_TRUE(Has(surface.Only({"TextOutA"}), "TextOutA 246 40 first"));
  EXPECT_TRUE(Has(surface.Only({"TextOutA"}), "TextOutA 246 57 second one"));
  EXPECT_FALSE(surface.Text().find("hidden") != std::string::npos);
  const Lines lines = Segments(surface);
  EXPECT_TRUE(Has(lines, "312 48 344 48"));  // solid, as long as the longest
  EXPECT_TRUE(Has(lines, "312 65 324 65"));  // dashes that end with the pattern
  EXPECT_TRUE(Has(lines, "328 65 340 65"));

  plot.Legend.ShowShadow = false;
  plot.Legend.Left = 100;
  plot.Legend.Top = 1;  // closer to the edge than anything may come
  plot.PlotData[1].Style().DisplayMarker = false;
  surface = Drawn(plot);
  EXPECT_EQ(boxes(surface, 1), (Lines{"Rectangle 100 2 222 52"}));
  EXPECT_EQ(plot.Legend.Width, 122);
  RecordingSurface larger(800, 300);
  larger.Caps = {{DeviceCap::HORZSIZE, 200}, {DeviceCap::VERTSIZE, 75}};
  EXPECT_EQ(boxes(Drawn(plot, larger), 1), (Lines{"Rectangle 200 2 322 52"})) << "in proportion to the page";
}

TEST(DrawGraph, KeepsTheLegendOffTheCurves) {
  // "curve" takes 97 by 27 units, so it stands from 0.67 to 0.97 or 0.03 to 0.33 across, above 0.85 or below 0.15.
  const struct {
    std::vector<double> x, y;
    DeviceRect legend;
  } kCases[] = {
      {{0, 0.5, 1}, {0, 0.5, 1}, {263, 32, 360, 59}},
      {{0, 0.8, 1}, {0, 0.9, 1}, {60, 32, 157, 59}},
      {{0, 0.2, 0.8, 1}, {0, 0.9, 0.9, 1}, {263, 222, 360, 249}},
      {{0, 0.2, 0.8, 0.9, 1}, {0, 0.9, 0.9, 0.1, 1}, {60, 222, 157, 249}},
      {{0, 0.1, 0.2, 0.8, 0.9, 1}, {0, 0.1, 0.9, 0.9, 0.1, 1}, {263, 32, 360, 59}},  // one everywhere
  };
  for (const auto& c : kCases) {
    PlotClass plot = BarePlot();
    plot.Legend.Show = true;
    plot.PlotData.emplace_back(PointSeries(c.x, c.y, "curve"));
    Drawn(plot);
    EXPECT_EQ(plot.Shown().Legend, c.legend);
    EXPECT_FALSE(plot.Legend.Placed());
  }
}

TEST(DrawGraph, FillsAndBordersABox) {
  const struct {
    int border, area;
    bool printer, background;
    const char* pen;
    const char* brush;
  } kCases[] = {
      {1, 1, false, false, "CreatePen 0 3 255", "CreateSolidBrush 1000"},
      {1, 0, false, false, "CreatePen 0 3 255", "CreateSolidBrush 2000"},
      {0, 1, false, false, "CreatePen 0 1 1000", "CreateSolidBrush 1000"},
      {1, 0, true, false, "CreatePen 0 3 255", "CreateSolidBrush 16777215"},  // blank paper
      {1, 0, true, true, "CreatePen 0 3 255", "CreateSolidBrush 2000"},
  };
  for (const auto& c : kCases) {
    PlotClass plot = UnitPlot();
    plot.PlotBackgroundColor = 2000;
    plot.FootNote.Show = true;
    plot.FootNoteText = "note";
    plot.FootNote.BorderWidth = 3;
    plot.FootNote.BorderColor = 255;
    plot.FootNote.AreaColor = 1000;
    plot.FootNote.BorderType = c.border;
    plot.FootNote.AreaType = c.area;
    RecordingPrompter prompter;
    ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
    RecordingSurface surface = QuarterMillimetres();
    surface.Printer = c.printer;
    ASSERT_TRUE(plot.DrawGraph(surface, prompter, {.PrintBackground = c.background}));
    const Lines pens = surface.Only({"CreatePen"}), brushes = surface.Only({"CreateSolidBrush"});
    EXPECT_TRUE(pens.back().starts_with(c.pen)) << pens.back();
    EXPECT_TRUE(brushes.back().starts_with(c.brush)) << brushes.back();
    EXPECT_EQ(Has(surface.Only({"Rectangle"}), "Rectangle 0 0 400 300"), !c.printer || c.background);
  }
}

TEST(DrawGraph, AlignsTheFootNote) {
  const struct {
    std::int16_t align;
    Lines texts;
  } kCases[] = {
      {0, {"TextOutA 108 58 longest line", "TextOutA 108 69 ", "TextOutA 108 80 third"}},
      {1, {"TextOutA 108 58 longest line", "TextOutA 168 69 ", "TextOutA 143 80 third"}},
      {2, {"TextOutA 108 58 longest line", "TextOutA 138 69 ", "TextOutA 126 80 third"}},
  };
  for (const auto& c : kCases) {
    PlotClass plot = UnitPlot();
    plot.FootNote.Show = true;
    plot.FootNoteText = "longest line\r\n\r\nthird\r\n\r\n";
    plot.FootNote.Left = 100;
    plot.FootNote.Top = 50;
    plot.FootNoteAlign = c.align;
    const RecordingSurface surface = Drawn(plot);
    const Lines texts = surface.Only({"TextOutA"});
    EXPECT_EQ(Lines(texts.end() - 3, texts.end()), c.texts);
    EXPECT_EQ(plot.Shown().FootNote, (DeviceRect{100, 50, 176, 99}));
  }
  PlotClass plot = UnitPlot();
  plot.FootNote.Show = true;
  plot.FootNoteText = "\r\n\r\n";
  Drawn(plot);
  EXPECT_EQ(plot.Shown().FootNote, DeviceRect{});
}

// A sheet at 600 units to the inch: 8 inches by 6, of which the margins leave 7 by 5.
TEST(DrawGraph, KeepsToThePrintersMargins) {
  PlotClass plot = UnitPlot();
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  RecordingSurface sheet(4800, 3600, 600);
  sheet.Printer = true;
  ASSERT_TRUE(plot.DrawGraph(sheet, prompter, {0.5, 0.5, 0.5, 0.5}));
  const Lines lines = Segments(sheet);
  // The sheet counts as 203 by 152 mm, so half an inch is 300 units across and 301 down; 4 mm are 95 units, 2 mm are
  // 47, and a number of 8 points is 4 characters of 33 wide and 67 high.
  EXPECT_EQ(lines[0], "621 443 4310 443");
  EXPECT_TRUE(sheet.Only({"CreatePen"})[0].starts_with("CreatePen 0 6 0")) << "lines weigh as on the screen";

  EXPECT_FALSE(plot.DrawGraph(sheet, prompter, {4, 0.5, 4, 0.5}));
  EXPECT_TRUE(plot.PlotCreated);
  EXPECT_EQ(prompter.Last(),
            "refuse: The left and right margins specified are incorrect for the page width. Please check the margin "
            "settings in the Page Setup Dialog.");
}

TEST(CheckMargins, NamesTheFirstThatIsWrong) {
  const struct {
    DeviceRect margins;
    const char* text;  // without the advice
  } kCases[] = {
      {{900, 0, 0, 0}, "The left margin specified is more than the actual page width. "},
      {{0, 0, -1, 900}, "The right margin specified is more than the actual page width. "},
      {{0, 700, 0, 0}, "The top margin specified is more than the actual page height. "},
      {{0, 0, 0, -1}, "The bottom margin specified is more than the actual page height. "},
      {{400, 0, 400, 0}, "The left and right margins specified are incorrect for the page width. "},
      {{0, 300, 0, 300}, "The top and bottom margins specified are incorrect for the page height. "},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(CheckMargins(c.margins, 800, 600),
              std::string(c.text) + "Please check the margin settings in the Page Setup Dialog.");
  EXPECT_EQ(CheckMargins({399, 299, 400, 300}, 800, 600), std::nullopt);
}

TEST(ConvertMargins, KnowsTheUnits) {
  RecordingSurface sheet(4800, 3600, 600);
  sheet.Caps = {{DeviceCap::HORZSIZE, 200}, {DeviceCap::VERTSIZE, 120}};  // 24 and 30 units to the millimetre
  Settings settings;
  for (const auto& [key, text] : {std::pair{"mleft", "1"}, {"mtop", "2"}, {"mright", "0.5"}, {"mbottom", "0"}})
    settings.Set(key, text, "printsetup");
  const struct {
    const char* units;
    DeviceRect margins;
  } kCases[] = {{"inches", {610, 1524, 305, 0}}, {"cm", {240, 600, 120, 0}}, {"mm", {24, 60, 12, 0}}};
  for (const auto& c : kCases) {
    settings.Set("munits", c.units, "printsetup");
    EXPECT_EQ(ConvertMargins(PageSetup::Read(settings), sheet), c.margins) << c.units;
  }
  EXPECT_EQ(PageSetup::Read(Settings()).Left, 0.25);
}

TEST(DrawGraph, RefusesMarginsBeyondAllMeasure) {
  PlotClass plot = UnitPlot();
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  RecordingSurface sheet;
  sheet.Printer = true;
  for (const double huge : {1e6, 1e300}) {
    EXPECT_FALSE(plot.DrawGraph(sheet, prompter, {.Left = huge}));
    EXPECT_TRUE(prompter.Last().starts_with("refuse: The left margin specified is more"));
    EXPECT_FALSE(plot.DrawGraph(sheet, prompter, {.Right = -huge}));
    EXPECT_TRUE(prompter.Last().starts_with("refuse: The right margin specified is more"));
  }
  EXPECT_TRUE(sheet.Only({"LineTo"}).empty());
}

TEST(DrawGraph, LeavesATinyWindowEmpty) {
  PlotClass plot = UnitPlot();
  for (const auto& [width, height] : {std::pair{1, 1}, {60, 300}, {400, 40}}) {
    const RecordingSurface surface = Drawn(plot, RecordingSurface(width, height));
    EXPECT_TRUE(surface.Only({"LineTo", "TextOutA"}).empty()) << width << " by " << height;
  }
}

// Everything at once, in its order.
TEST(DrawGraph, DrawsFromThePageToTheFootNote) {
  PlotClass plot{Settings()};
  plot.PlotTitle = "Growth of x~>2~>";
  plot.X.AxisTitle = "Time";
  plot.Y.AxisTitle = "Height";
  plot.PlotData.push_back(PointSeries({0, 1, 2}, {0.5, 1.5, 1}, "Input Data", {0.25, 0.5, 0.125}));
  SeriesStyle& data = plot.PlotData[0].Style();
  data.ShowErrorBars = data.DisplayMarker = true;
  data.DisplayLine = false;
  data.MarkerStyle = 8;
  plot.PlotData.emplace_back(PointSeries({0, 2}, {0.25, 1.75}, "Model"));
  plot.PlotData[1].Style().DrawStyle = 3;
  plot.FootNote.Show = true;
  plot.FootNoteText = "Two lines\r\nof text";
  plot.X.NumMajorTicks = plot.Y.NumMajorTicks = plot.X.NumMinorTicks = plot.Y.NumMinorTicks = 2;
  plot.X.Max = plot.Y.Max = 2;
  plot.X.ShowMajorGrids = true;
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({}, prompter));
  RecordingSurface surface = QuarterMillimetres();
  ASSERT_TRUE(plot.DrawGraph(surface, prompter));
  EXPECT_EQ(plot.MetafileHandle, 1000U);
  EXPECT_EQ(plot.InitPlotWidth, 400);
  ExpectGolden("Plot.txt", surface.Text());
}

// 39 periods between 1 and 9: 100 points alone would miss most peaks by far.
TEST(DrawGraph, FollowsTheBendsOfACurveBetweenItsPoints) {
  const auto wave = [] {
    PlotClass plot = BarePlot();
    plot.PlotData.emplace_back(Curve("5+2.7*sin(a*x)", {39 * std::numbers::pi / 4}));
    return plot;
  };
  const struct {
    const char* what;
    void (*change)(PlotClass&);
    int peaks;
  } kCases[] = {
      {"as it is", [](PlotClass&) {}, 39},
      {"of few points", [](PlotClass& p) { p.PointsPerPlot = 37; }, 39},
      {"swapped", [](PlotClass& p) { p.SwapAxis = true; }, 39},
      {"logarithmic", [](PlotClass& p) { p.X.LogScale = p.Y.LogScale = true; }, 39},
      {"at the input alone", [](PlotClass& p) { p.PlotAtFittedOnly = true; }, 1},
  };
  for (const auto& c : kCases) {
    PlotClass plot = wave();
    c.change(plot);
    RecordingPrompter prompter;
    ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
    RecordingSurface surface = QuarterMillimetres();
    plot.RefreshPlot(surface, prompter);
    const std::size_t points = plot.PlotData[0].NumTablePoints();
    EXPECT_EQ(points, plot.PlotAtFittedOnly ? 9u : static_cast<std::size_t>(plot.PointsPerPlot)) << c.what;
    const PlotPicture& shown = plot.Shown();
    const std::int32_t top = plot.SwapAxis ? shown.Horizontal.ToDevice(7.7) : shown.Vertical.ToDevice(7.7);
    int peaks = 0;
    bool above = false;
    for (const std::string& call : surface.Only({"MoveToEx", "LineTo"})) {
      std::istringstream text(call.substr(call.find(' ')));
      std::int32_t x = 0, y = 0;
      text >> x >> y;
      if (!shown.Frame.Contains(x, y)) continue;
      const bool now = std::abs((plot.SwapAxis ? x : y) - top) <= 1;
      peaks += now && !above;
      above = now;
    }
    EXPECT_EQ(peaks, c.peaks) << c.what;
  }
}

}  // namespace
}  // namespace quorvex
