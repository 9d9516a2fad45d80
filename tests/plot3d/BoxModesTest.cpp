#include <gtest/gtest.h>

#include "plot/Plots.h"
#include "plot/RecordingHost.h"
#include "plot3d/BoxModes.h"

namespace quorvex {
namespace {

// A box of points in a window of 400 by 300 units, seen from X1-X2 140, X1-Y 30 degrees.
struct Window {
  explicit Window(bool legend = false) {
    DataClass points;
    points.GenerateTable({{0, 1}, {0, 1}}, {0, 1});
    Plot.PlotData.emplace_back(std::move(points), SeriesStyle{.LegendText = "point"});
    Plot.Legend.Show = legend;
    Plot.Legend.Left = 100;
    Plot.Legend.Top = 50;
    EXPECT_TRUE(Plot.CreateGraph({.Auto = true}, Messages));
    Host.RefreshPicture();
    Host.Done.clear();
  }

  PlotClass3D Plot{Settings()};
  RecordingPrompter Messages;
  RecordingHost Host{Plot, Messages};
  BoxModes Modes{Plot, Host};
};

const Events kTurned = {"refresh soon", "changed: Turn"};

TEST(BoxModes, TurnTheBoxByTheMouse) {
  Window window;
  window.Modes.MouseMove(false, 10, 10);
  window.Modes.MouseDown(2, 10, 10);
  window.Modes.MouseMove(true, 90, 90);
  EXPECT_EQ(window.Host.Take(), Events{}) << "not by the right button";
  window.Modes.MouseUp(2, 90, 90);

  window.Modes.MouseDown(1, 200, 150);
  window.Modes.MouseMove(true, 200, 150);
  EXPECT_EQ(window.Host.Take(), Events{}) << "not yet";
  window.Modes.MouseMove(true, 220, 165);  // a twentieth of the picture each way: 9 degrees
  EXPECT_EQ(window.Host.Take(), kTurned);
  EXPECT_EQ(*window.Plot.Angles(), (ViewAngles{149, 39}));
  window.Modes.MouseMove(true, 180, 150);
  EXPECT_EQ(*window.Plot.Angles(), (ViewAngles{131, 30}));
  window.Modes.MouseUp(1, 180, 150);
  window.Modes.MouseMove(true, 10, 10);
  EXPECT_EQ(*window.Plot.Angles(), (ViewAngles{131, 30})) << "let go";

  const struct {
    const char* what;
    void (*end)(BoxModes&);
  } kEnds[] = {{"a button that was let go elsewhere", [](BoxModes& modes) { modes.MouseMove(false, 0, 0); }},
               {"the focus", [](BoxModes& modes) { modes.LostFocus(); }},
               {"another size", [](BoxModes& modes) { modes.Resize(); }}};
  for (const auto& c : kEnds) {
    window.Modes.MouseDown(1, 200, 150);
    c.end(window.Modes);
    window.Modes.MouseMove(true, 300, 250);
    EXPECT_EQ(*window.Plot.Angles(), (ViewAngles{131, 30})) << c.what;
  }
}

TEST(BoxModes, TurnTheBoxByKeys) {
  constexpr int kLeft = PlotModes::kLeftArrow, kUp = PlotModes::kUpArrow, kRight = PlotModes::kRightArrow,
                kDown = PlotModes::kDownArrow, kEscape = 27;
  const struct {
    const char* what;
    ViewAngles from;
    int key;
    bool shift;
    ViewAngles to;
  } kCases[] = {
      {"right", {140, 30}, kRight, false, {145, 30}},
      {"left", {140, 30}, kLeft, false, {135, 30}},
      {"up", {140, 30}, kUp, false, {140, 25}},
      {"down", {140, 30}, kDown, false, {140, 35}},
      {"a degree", {140, 30}, kRight, true, {141, 30}},
      {"a degree down", {140, 30}, kDown, true, {140, 31}},
      {"past the full turn", {358, 30}, kRight, false, {3, 30}},
      {"onto it", {355, 30}, kRight, false, {0, 30}},
      {"and back", {3, 30}, kLeft, false, {358, 30}},
      {"no lower than the side", {140, 3}, kUp, false, {140, 0}},
      {"no farther than the other side", {140, 178}, kDown, false, {140, 180}},
      // What the viewer has in front goes right, though the picture stands on its head.
      {"over the top", {140, 120}, kRight, false, {135, 120}},
      {"over the top, down", {140, 120}, kDown, false, {140, 125}},
  };
  for (const auto& c : kCases) {
    Window window;
    window.Plot.SetAngles(c.from);
    EXPECT_TRUE(window.Modes.KeyDown(c.key, c.shift)) << c.what;
    EXPECT_EQ(*window.Plot.Angles(), c.to) << c.what;
    EXPECT_EQ(window.Host.Take(), kTurned) << c.what;
  }
  Window window;
  EXPECT_FALSE(window.Modes.KeyDown(kEscape, false));
  window.Plot.PlotCreated = false;
  EXPECT_FALSE(window.Modes.KeyDown(kRight, false)) << "nothing is shown";
  EXPECT_EQ(window.Host.Take(), Events{});
}

TEST(BoxModes, DragTheLegendInstead) {
  Window window(true);
  const ViewAngles before = *window.Plot.Angles();
  window.Modes.MouseDown(1, 110, 60);
  EXPECT_TRUE(window.Modes.Active());
  window.Modes.MouseMove(true, 210, 90);
  window.Modes.MouseUp(1, 215, 95);
  EXPECT_EQ(window.Plot.Legend.Left, 205);
  EXPECT_EQ(window.Plot.Legend.Top, 85);
  EXPECT_EQ(*window.Plot.Angles(), before);
  EXPECT_EQ(window.Host.Take().back(), "changed: Move Legend");
}

TEST(BoxModes, HaveNoFrameToMeasureIn) {
  Window window;
  window.Modes.Zoom(PlotModes::kMove, 0, 0);
  window.Modes.ShowCoords(PlotModes::kMove, 0, 0);
  EXPECT_FALSE(window.Modes.Measures());
  EXPECT_FALSE(window.Modes.Active());
  EXPECT_EQ(window.Host.Take(), Events{});
}

}  // namespace
}  // namespace quorvex
