#include <gtest/gtest.h>

#include "plot/FrameModes.h"
#include "plot/Plots.h"
#include "plot/RecordingHost.h"

namespace quorvex {
namespace {

// A plot in its window. Its frame is 52 24 368 257, and the axes run from 0 to 1 where nothing else is said.
struct Window {
  explicit Window(void (*change)(PlotClass&) = [](PlotClass&) {}) {
    Plot.PlotData.emplace_back(PointSeries({0, 0.25, 0.5, 0.75, 1}, {0, 0.25, 0.5, 0.75, 1.5}, "curve"));
    Plot.X.Max = Plot.Y.Max = 1;
    change(Plot);
    EXPECT_TRUE(Plot.CreateGraph({}, Messages));
    Host.RefreshPicture();
    Host.Done.clear();
  }

  PlotClass Plot = BarePlot();
  RecordingPrompter Messages;
  RecordingHost Host{Plot, Messages};
  FrameModes Modes{Plot, Host, Messages};
};

TEST(Zoom, TakesTheBoxForTheLimits) {
  Window window;
  FrameModes& modes = window.Modes;
  modes.Zoom(0, 0, 0);
  EXPECT_EQ(window.Host.Take(), (Events{"menu off", "up arrow"}));
  modes.MouseMove(false, 100, 100);
  modes.MouseDown(1, 289, 82.25);  // three quarters across, three quarters up
  modes.MouseUp(1, 290, 83);       // a click, not a drag
  EXPECT_EQ(window.Host.Take(), Events{});
  modes.MouseMove(false, 200, 150);
  EXPECT_EQ(window.Host.Take(), Events{"band 200 82 289 150"});
  modes.MouseDown(1, 131, 198.75);
  EXPECT_EQ(window.Host.Take(), (Events{"no overlay", "arrow", "menu on", "refresh", "changed: Zoom"}));
  for (const PlotAxis* axis : {&window.Plot.X, &window.Plot.Y}) {
    EXPECT_DOUBLE_EQ(axis->Min, 0.25);
    EXPECT_DOUBLE_EQ(axis->Max, 0.75);
    EXPECT_EQ(axis->NumMajorTicks, 10) << "ticks stay";
    EXPECT_EQ(axis->Labels.front(), "0.75");
  }
  EXPECT_FALSE(modes.Active());
}

TEST(Zoom, KnowsSwappedAndLogarithmicAxes) {
  {
    Window window([](PlotClass& plot) { plot.SwapAxis = true; });
    window.Modes.Zoom(0, 0, 0);
    window.Modes.MouseDown(1, 131, 257);
    window.Modes.MouseUp(1, 368, 140.5);  // let go elsewhere: the same as a second click
    EXPECT_DOUBLE_EQ(window.Plot.Y.Min, 0.25);
    EXPECT_DOUBLE_EQ(window.Plot.Y.Max, 1);
    EXPECT_DOUBLE_EQ(window.Plot.X.Min, 0);
    EXPECT_DOUBLE_EQ(window.Plot.X.Max, 0.5);
  }
  Window window([](PlotClass& plot) {
    plot.X.LogScale = true;
    plot.X.Min = 1;
    plot.X.Max = 1e4;
  });
  window.Modes.Zoom(0, 0, 0);
  window.Modes.MouseDown(1, 52 + 316 * 0.3, 100);
  window.Modes.MouseDown(1, 52 + 316 * 0.6, 100);  // no height: Y stays
  EXPECT_EQ(window.Plot.X.Limits(), (AxisLimits{10, 1000, 2, true})) << "decades around 15.8 to 251";
  EXPECT_EQ(window.Plot.Y.Limits(), (AxisLimits{0, 1, 10}));
}

// A box beyond the frame covers no more than what is shown, and whole decades may be those of before.
TEST(Zoom, StaysWithinWhatIsShownAndTellsOnlyOfAChange) {
  for (const bool log : {false, true}) {
    Window window = log ? Window([](PlotClass& plot) {
      plot.X.LogScale = true;
      plot.X.Min = 1;
      plot.X.Max = 1e4;
    })
                        : Window();
    const AxisLimits x = window.Plot.X.Limits(), y = window.Plot.Y.Limits();
    window.Modes.Zoom(0, 0, 0);
    window.Modes.MouseDown(1, 5, 2);
    window.Modes.MouseUp(1, 398, 290);
    EXPECT_EQ(window.Plot.X.Limits(), x) << log;
    EXPECT_EQ(window.Plot.Y.Limits(), y) << log;
    EXPECT_EQ(window.Host.Take().back(), "refresh") << log;
  }
}

// From 0 to 1 the step asks for one decimal. A twentieth of that, in ten steps, asks for three.
TEST(Zoom, KeepsLabelsTellingOnlyWherePatternsAreAutomatic) {
  for (const bool automatic : {true, false}) {
    Window window;
    ASSERT_TRUE(window.Plot.CreateGraph({.AutoFormat = automatic}, window.Messages));
    EXPECT_EQ(window.Plot.AutoFormatted(), automatic);
    window.Modes.Zoom(0, 0, 0);
    window.Modes.MouseDown(1, 52 + 316 * 0.27, 257 - 233 * 0.27);
    window.Modes.MouseUp(1, 52 + 316 * 0.32, 257 - 233 * 0.32);
    EXPECT_EQ(window.Plot.X.LabelString, automatic ? "0.000" : "0.00");
    EXPECT_EQ(window.Plot.X.Labels[2], automatic ? "0.310" : "0.31");
  }
}

TEST(Zoom, EndsWithoutAnEffect) {
  const struct {
    const char* what;
    void (*end)(FrameModes&);
    Events done;
  } kCases[] = {
      {"right button", [](FrameModes& m) { m.MouseDown(2, 5, 5); }, {"no overlay", "arrow", "menu on", "refresh"}},
      {"middle button", [](FrameModes& m) { m.MouseDown(4, 5, 5); }, {"no overlay", "arrow", "menu on", "refresh"}},
      {"focus lost", [](FrameModes& m) { m.LostFocus(); }, {"no overlay", "arrow", "menu on"}},
      {"resized", [](FrameModes& m) { m.Resize(); }, {"no overlay", "arrow", "menu on", "no frame"}},
  };
  for (const auto& c : kCases)
    for (const bool bandOpen : {false, true}) {
      Window window;
      window.Modes.Zoom(0, 0, 0);
      if (bandOpen) window.Modes.MouseDown(1, 100, 100);
      window.Host.Take();
      c.end(window.Modes);
      EXPECT_EQ(window.Host.Take(), c.done) << c.what;
      window.Modes.MouseDown(1, 50, 50);
      EXPECT_EQ(window.Host.Take(), Events{}) << c.what;
      EXPECT_EQ(window.Plot.X.Limits(), (AxisLimits{0, 1, 10})) << c.what;
    }
}

TEST(Zoom, NeedsAPicture) {
  PlotClass plot = BarePlot();
  RecordingPrompter prompter;
  RecordingHost host(plot, prompter);
  FrameModes modes(plot, host, prompter);
  modes.Zoom(0, 0, 0);
  modes.ShowCoords(0, 0, 0);
  EXPECT_FALSE(modes.Active());
  EXPECT_EQ(host.Take(), Events{});
}

TEST(ShowCoords, TellsPointerOrPoint) {
  Window window;
  window.Modes.ShowCoords(0, 0, 0);
  EXPECT_EQ(window.Host.Take(), (Events{"frame", "menu off", "cross"}));
  window.Modes.MouseMove(false, 289, 198.75);
  EXPECT_EQ(window.Host.Take(), (Events{"mark 283 193 295 205", "7.500000E-01 | 2.500000E-01"}));
  window.Modes.MouseMove(false, 211, 142);  // near the middle one
  EXPECT_EQ(window.Host.Take(), (Events{"hit 205 136 217 148", "5.000000E-01 | 5.000000E-01"}));
  window.Modes.MouseDown(1, 211, 142);
  EXPECT_EQ(window.Host.Take(), Events{});
  window.Modes.MouseDown(2, 211, 142);
  EXPECT_EQ(window.Host.Take(), (Events{"no overlay", "arrow", "menu on", "no frame"}));
  window.Modes.MouseMove(false, 0, 0);
  EXPECT_EQ(window.Host.Take(), Events{});
}

TEST(ShowCoords, KnowsSwappedAndLogarithmicAxes) {
  Window window([](PlotClass& plot) {
    plot.SwapAxis = true;
    plot.Y.LogScale = true;  // across
    plot.Y.Min = 0.01;
    plot.Y.Max = 100;
  });
  window.Modes.ShowCoords(0, 0, 0);
  const DeviceRect& frame = window.Plot.Shown().Frame;
  window.Host.Take();
  window.Modes.MouseMove(false, frame.left + frame.width() * 0.75, frame.bottom);
  EXPECT_EQ(window.Host.Take().back(), "0.000000E+00 | 1.000000E+01");
}

TEST(KeyDown, WalksAlongTheCurve) {
  Window window;
  const auto last = [&] {
    const Events done = window.Host.Take();
    return done.empty() ? "nothing" : done.back();
  };
  window.Modes.KeyDown(39, false);
  EXPECT_EQ(last(), "nothing") << "not in this mode";
  window.Modes.ShowCoords(0, 0, 0);
  window.Modes.MouseMove(false, 300, 200);
  last();
  window.Modes.KeyDown(39, false);
  EXPECT_EQ(last(), "nothing") << "no point is close";

  window.Modes.MouseMove(false, 210, 140);
  last();
  window.Modes.KeyDown(39, false);
  EXPECT_EQ(window.Host.Take(), (Events{"hit 283 76 295 88", "7.500000E-01 | 7.500000E-01"}));
  window.Modes.KeyDown(39, false);
  EXPECT_EQ(last(), "nothing") << "the next one is above the axis";
  window.Plot.Y.Max = 2;
  for (int i = 0; i < 2; ++i) window.Modes.KeyDown(39, false);
  EXPECT_TRUE(last().starts_with("1.0")) << "the last one";
  for (const char* x : {"7.5", "5.0", "2.5", "0.0"}) {
    window.Modes.KeyDown(37, false);
    EXPECT_TRUE(last().starts_with(x));
  }
  window.Modes.KeyDown(37, false);
  EXPECT_EQ(last(), "0.000000E+00 | 0.000000E+00") << "the first one";
  window.Modes.KeyDown(65, false);
  EXPECT_EQ(last(), "nothing");
}

// Ten pixels a press, one with Shift, from the middle of the frame, which is at 210 140.5.
TEST(KeyDown, ZoomsWithoutAMouse) {
  Window window;
  FrameModes& modes = window.Modes;
  const auto press = [&](int key, int times, bool shift = false) {
    for (int i = 0; i < times; ++i) EXPECT_TRUE(modes.KeyDown(key, shift));
  };
  modes.Zoom(0, 0, 0);
  window.Host.Take();
  press(PlotModes::kLeftArrow, 1);
  EXPECT_EQ(window.Host.Take(), Events{"mark 194 134 206 146"});
  press(PlotModes::kLeftArrow, 12);
  press(PlotModes::kLeftArrow, 1, true);  // 131 is a quarter across
  press(PlotModes::kDownArrow, 100);      // no farther than the frame
  press(PlotModes::kReturn, 1);
  press(PlotModes::kRightArrow, 100);
  press(PlotModes::kUpArrow, 100);
  EXPECT_EQ(window.Host.Take().back(), "band 79 24 368 257");
  press(PlotModes::kReturn, 1);
  EXPECT_EQ(window.Host.Take().back(), "changed: Zoom");
  EXPECT_NEAR(window.Plot.X.Min, 27 / 316.0, 1e-12);
  EXPECT_EQ(window.Plot.X.Max, 1);
  EXPECT_EQ(window.Plot.Y.Min, 0);
  EXPECT_FALSE(modes.Active());
}

TEST(KeyDown, ReadsCurvesWithoutAMouse) {
  Window window([](PlotClass& plot) {
    std::vector<double> x, y;
    for (int i = 0; i <= 40; ++i) x.push_back(i / 40.0), y.push_back(0.9);
    plot.PlotData.emplace_back(PointSeries(std::move(x), std::move(y), "level"));
    plot.PlotData.push_back(plot.PlotData[0]);
    plot.PlotData[2].Style().DisplayLine = plot.PlotData[2].Style().DisplayMarker = false;
  });
  window.Modes.ShowCoords(0, 0, 0);
  const struct {
    int key;
    bool shift;
    const char* read;
  } kSteps[] = {{PlotModes::kUpArrow, false, "5.000000E-01 | 5.000000E-01"},  // next to the middle
                {PlotModes::kDownArrow, false, "5.000000E-01 | 9.000000E-01"},
                {PlotModes::kRightArrow, false, "5.250000E-01 | 9.000000E-01"},
                {PlotModes::kRightArrow, true, "7.750000E-01 | 9.000000E-01"},
                {PlotModes::kDownArrow, false, "7.500000E-01 | 7.500000E-01"},  // past what is hidden
                {PlotModes::kUpArrow, false, "7.500000E-01 | 9.000000E-01"}};
  for (const auto& step : kSteps) {
    EXPECT_TRUE(window.Modes.KeyDown(step.key, step.shift));
    EXPECT_EQ(window.Host.Take().back(), step.read);
  }
}

// The legend is 5 letters of 5, 5 gaps of 8 and a sample of 32 wide, 11 and 2 gaps of 8 high.
void WithLegend(PlotClass& plot) {
  plot.Legend.Show = true;
  plot.Legend.Left = 100;
  plot.Legend.Top = 50;
}

TEST(BoxDrag, TakesTheLegendElsewhereByKeys) {
  Window window(WithLegend);
  FrameModes& modes = window.Modes;
  EXPECT_FALSE(modes.MoveFootNote()) << "there is none";
  EXPECT_TRUE(modes.MoveLegend());
  EXPECT_FALSE(modes.MoveLegend()) << "it moves already";
  modes.KeyDown(PlotModes::kRightArrow, false);
  modes.KeyDown(PlotModes::kDownArrow, true);
  modes.MouseMove(false, 5, 5);  // a mouse that is touched
  EXPECT_EQ(window.Host.Take(), (Events{"box 100 50 197 77", "menu off", "box 110 50 207 77", "box 110 51 207 78"}));
  modes.KeyDown(PlotModes::kReturn, false);
  EXPECT_EQ(window.Host.Take(), (Events{"no overlay", "menu on", "refresh", "changed: Move Legend"}));
  EXPECT_EQ(window.Plot.Shown().Legend, (DeviceRect{110, 51, 207, 78}));
  EXPECT_TRUE(modes.MoveLegend());
  for (int i = 0; i < 100; ++i) modes.KeyDown(PlotModes::kLeftArrow, false);
  EXPECT_EQ(window.Host.Take().back(), "box 0 51 97 78") << "within the picture";
  modes.LostFocus();
  EXPECT_EQ(window.Plot.Legend.Left, 110);
  EXPECT_FALSE(modes.Active());
}

TEST(BoxDrag, TakesTheLegendElsewhere) {
  Window window(WithLegend);
  ASSERT_EQ(window.Plot.Shown().Legend, (DeviceRect{100, 50, 197, 77}));
  window.Modes.MouseDown(2, 110, 60);
  window.Modes.MouseDown(1, 98, 60);
  EXPECT_EQ(window.Host.Take(), Events{});

  window.Modes.MouseDown(1, 110, 60);
  window.Modes.MouseMove(true, 210, 90);
  EXPECT_EQ(window.Host.Take(), (Events{"box 100 50 197 77", "box 200 80 297 107"}));
  RecordingSurface during;
  window.Plot.RefreshPlot(during, window.Messages);
  EXPECT_TRUE(during.Calls.empty());
  window.Modes.MouseUp(1, 215, 95);
  EXPECT_EQ(window.Host.Take(), (Events{"no overlay", "refresh", "changed: Move Legend"}));
  EXPECT_EQ(window.Plot.Legend.Left, 205);
  EXPECT_EQ(window.Plot.Shown().Legend, (DeviceRect{205, 85, 302, 112}));

  // Where the window is twice as wide as at first, so are the places in it.
  window.Host.Width = 800;
  window.Host.RefreshPicture();
  EXPECT_EQ(window.Plot.Shown().Legend.left, 410);
  window.Modes.MouseDown(1, 410, 85);
  window.Modes.MouseUp(1, 300, -40);
  EXPECT_EQ(window.Plot.Legend.Left, 150);
  EXPECT_EQ(window.Plot.Legend.Top, 2) << "not beyond the edge";
}

TEST(BoxDrag, EndsWithoutTheButton) {
  Window window(WithLegend);
  window.Plot.FootNote.Show = true;
  window.Plot.FootNoteText = "note";
  window.Plot.FootNote.Left = 150;
  window.Plot.FootNote.Top = 200;
  window.Host.RefreshPicture();
  const DeviceRect note = window.Plot.Shown().FootNote;
  window.Host.Take();
  window.Modes.MouseDown(1, note.left + 1, note.top + 1);
  window.Modes.MouseMove(false, 10, 10);
  EXPECT_EQ(window.Host.Take().back(), "no overlay");
  EXPECT_FALSE(window.Plot.FootNote.Dragging);
  EXPECT_EQ(window.Plot.FootNote.Left, 150);

  window.Modes.MouseDown(1, note.left + 1, note.top + 1);
  window.Modes.MouseUp(1, note.left + 11, note.top + 6);
  EXPECT_EQ(window.Plot.FootNote.Left, 160);
  EXPECT_EQ(window.Plot.FootNote.Top, 205);
  EXPECT_EQ(window.Plot.Legend.Left, 100);

  window.Plot.Legend.Show = window.Plot.FootNote.Show = false;
  window.Host.RefreshPicture();
  window.Host.Take();
  window.Modes.MouseDown(1, 110, 60);
  EXPECT_EQ(window.Host.Take(), Events{});
}

}  // namespace
}  // namespace quorvex
