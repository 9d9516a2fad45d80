// The box and its axes, on recording surfaces.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

#include "Golden.h"
#include "plot3d/Boxes.h"
#include "plot3d/TurnedBox.h"

namespace quorvex {
namespace {

// Texts as they lie on the page.
struct PlacedText {
  std::string Text;
  TurnedBox Box;
  int angle;

  bool Overlaps(TurnedBox other) const {
    other.Width -= 2;  // both are drawn at whole units
    other.Height -= 2;
    return Box.Overlaps(other);
  }
};

class TextSurface : public RecordingSurface {
 public:
  using RecordingSurface::RecordingSurface;
  std::vector<PlacedText> Texts;

  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override {
    const int escapement = Objects().Font().Escapement;
    const DeviceExtent size = GetTextExtentPoint32A(text);
    const double turn = escapement * std::numbers::pi / 1800;
    TurnedBox box{{}, 1.0 * size.cx, 1.0 * size.cy, {std::cos(turn), -std::sin(turn)}};
    const Direction down = box.Across();
    box.Middle = {x + (box.Along.x * size.cx + down.x * size.cy) / 2,
                  y + (box.Along.y * size.cx + down.y * size.cy) / 2};
    Texts.push_back({std::string(text), box, escapement / 10});
    RecordingSurface::TextOutA(x, y, text);
  }
};

PlotClass3D TitledPlot() {
  PlotClass3D plot = BarePlot3D();
  plot.PlotTitle = "Surface";
  plot.X.AxisTitle = "Temperature [K]";
  plot.Y.AxisTitle = "Concentration";
  plot.Z.AxisTitle = "Yield";
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
  return plot;
}

template <typename Surface>
Surface DrawnAt(PlotClass3D& plot, double xy, double z, Surface surface) {
  RecordingPrompter prompter;
  plot.UpdateViewAngle(xy, z);
  EXPECT_TRUE(plot.DrawGraph(surface, prompter));
  EXPECT_TRUE(prompter.Said.empty());
  EXPECT_EQ(surface.ObjectCount(), 0U) << "pens, brushes, fonts and regions left behind";
  return surface;
}

TEST(DrawBox, KeepsNumbersAndTitlesReadableAtEveryAngle) {
  PlotClass3D plot = TitledPlot(), wordy = TitledPlot();
  for (std::string* title : {&wordy.PlotTitle, &wordy.X.AxisTitle, &wordy.Y.AxisTitle, &wordy.Z.AxisTitle})
    for (int i = 0; i < 4; ++i) *title += *title;
  const struct {
    PlotClass3D& plot;
    std::int32_t width, height;
    int step;            // of the angles
    std::size_t fewest;  // texts at any angle
  } kPages[] = {{plot, 800, 600, 5, 12},   {plot, 400, 300, 5, 8},    {plot, 300, 500, 5, 6},
                {wordy, 800, 600, 15, 12}, {wordy, 1600, 400, 15, 9}, {wordy, 300, 500, 15, 6}};
  for (const auto& page : kPages)
    for (int xy = 0; xy <= 360; xy += page.step)
      for (int z = 0; z <= 180; z += page.step) {
        const auto where = testing::Message() << page.width << " wide, at " << xy << " and " << z;
        const TextSurface drawn = DrawnAt(page.plot, xy, z, TextSurface(page.width, page.height));
        EXPECT_GE(drawn.Texts.size(), page.fewest) << where;
        for (std::size_t i = 0; i < drawn.Texts.size(); ++i) {
          const auto& [text, box, angle] = drawn.Texts[i];
          const double across = box.Reach({1, 0}) - 1, down = box.Reach({0, 1}) - 1;
          EXPECT_TRUE(box.Middle.x >= across && box.Middle.y >= down && box.Middle.x <= page.width - across &&
                      box.Middle.y <= page.height - down)
              << where << ": " << text;
          EXPECT_TRUE(angle > -90 && angle <= 90) << where << ": " << text;
          for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(drawn.Texts[k].Overlaps(box)) << where << ": " << text << ", " << drawn.Texts[k].Text;
        }
      }
}

// Of numbers that would crowd each other each second one is shown, or each third, but not now this and now that.
TEST(DrawBox, ThinsNumbersOutEvenly) {
  PlotClass3D plot = TitledPlot();
  plot.X.Take({-5, 5, 10});  // half of the numbers are wider than the others
  for (const char* format : {"0.0", "0.000", "0.00000"})
    for (std::int32_t width = 160; width <= 900; width += 4) {
      RecordingPrompter prompter;
      plot.X.LabelString = format;
      ASSERT_TRUE(plot.CreateGraph({}, prompter));
      std::vector<std::ptrdiff_t> shown;  // the places of X1's numbers among them all
      for (const PlacedText& text : DrawnAt(plot, 180, 0, TextSurface(width, 400)).Texts)
        if (const auto label = std::ranges::find(plot.X.Labels, text.Text); label != plot.X.Labels.end())
          shown.push_back(label - plot.X.Labels.begin());
      for (std::size_t i = 2; i < shown.size(); ++i)
        EXPECT_EQ(shown[i] - shown[i - 1], shown[1] - shown[0]) << format << " at " << width;
    }
}

TEST(DrawBox, LeavesOutNumbersRatherThanThePlot) {
  PlotClass3D plot = TitledPlot();
  const std::string zeros(400, '0');
  for (const std::string& format : {"0." + zeros, zeros, "0 " + zeros}) {
    RecordingPrompter prompter;
    plot.Z.LabelString = format;
    ASSERT_TRUE(plot.CreateGraph({}, prompter));
    RecordingSurface surface(800, 600);
    plot.RefreshPlot(surface, prompter);
    EXPECT_GT(plot.Shown().Frame.width(), 400) << format;
    const std::string drawn = surface.Text();
    EXPECT_NE(drawn.find(plot.X.Labels[0]), std::string::npos);
    EXPECT_EQ(drawn.find(plot.Z.Labels[0]), std::string::npos);
  }
}

TEST(DrawBox, LeavesOutAnAxisSeenFromItsEnd) {
  PlotClass3D plot = TitledPlot();
  const struct {
    double xy, z;
    const char* missing;
  } kCases[] = {{0, 0, "Concentration"}, {90, 0, "Temperature [K]"}, {30, 90, "Yield"}};
  for (const auto& c : kCases) {
    std::set<std::string> texts;
    for (const PlacedText& text : DrawnAt(plot, c.xy, c.z, TextSurface(800, 600)).Texts) texts.insert(text.Text);
    for (const std::string title : {"Temperature [K]", "Concentration", "Yield"})
      EXPECT_EQ(texts.contains(title), title != c.missing) << c.missing << ", " << title;
  }
}

TEST(DrawBox, FillsTheFacesAwayFromTheViewer) {
  PlotClass3D plot = BarePlot3D();
  plot.BoxXY = {true, 1};
  plot.BoxYZ = {true, 2};
  plot.BoxXZ = {true, 3};
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  for (double xy = 3; xy < 360; xy += 30)
    for (const double z : {35.0, 145.0}) {
      RecordingSurface surface(600, 600);
      plot.UpdateViewAngle(xy, z);
      plot.RefreshPlot(surface, prompter);
      const BoxProjection box(plot.View(), plot.Shown().Frame, {plot.X.Limits(), plot.Y.Limits(), plot.Z.Limits()}, 1);
      // The corner that lies on all three faces is the farthest, and the front edges meet in the opposite one.
      const double a = xy * kViewPi / 180, b = z * kViewPi / 180;
      const auto nearness = [&](const BoxView::Ends& at) {
        return std::cos(b) * (std::sin(a) * at[0] + std::cos(a) * at[1]) + std::sin(b) * at[2];
      };
      BoxView::Ends far = {-1, -1, -1};
      for (const int p : {-1, 1})
        for (const int q : {-1, 1})
          for (const int r : {-1, 1})
            if (nearness({p, q, r}) < nearness(far)) far = {p, q, r};
      const auto place = [](DevicePoint point) { return std::to_string(point.x) + " " + std::to_string(point.y); };
      const std::vector<std::string> faces = surface.Only({"CreatePolygonRgn"});
      ASSERT_EQ(faces.size(), 3U);
      for (const std::string& face : faces)
        EXPECT_NE(face.find(place(box.Corner(far))), std::string::npos) << xy << ", " << z << ": " << face;
      const BoxView::Ends near = {-far[0], -far[1], -far[2]};
      const std::vector<std::string> lines = surface.Only({"MoveToEx", "LineTo"});
      ASSERT_GE(lines.size(), 6U);
      for (std::size_t i = lines.size() - 6; i < lines.size(); i += 2)
        EXPECT_TRUE((lines[i] + lines[i + 1]).find(place(box.Corner(near))) != std::string::npos) << xy << ", " << z;
    }
}

TEST(DrawBox, DrawsTheWholePictureInItsOrder) {
  PlotClass3D plot = TitledPlot();
  plot.BoxXY.Shade = true;
  for (BoxAxis* axis : {&plot.X, &plot.Y, &plot.Z}) {
    axis->NumMajorTicks = 2;
    axis->NumMinorTicks = 2;
    axis->Grids[0] = {true, true};
  }
  plot.X.TickColor = 0x0000FF;
  plot.Z.Grids[1].Major = true;
  plot.MinorGridLineStyle = 2;
  plot.FootNote.Show = true;
  plot.FootNoteText = "From the side";
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({}, prompter));
  ExpectGolden("BoxOfAPlot.txt", DrawnAt(plot, 140, 30, RecordingSurface(400, 300)).Text());
}

TEST(DrawBox, MakesThePictureSquare) {
  PlotClass3D plot = TitledPlot();
  RecordingPrompter prompter;
  plot.Make3DSquare = true;
  for (const auto& [width, height] : {std::pair{700, 400}, {400, 700}}) {
    RecordingSurface surface(width, height);
    plot.RefreshPlot(surface, prompter);
    EXPECT_EQ(plot.Shown().Frame.width(), plot.Shown().Frame.height());
    EXPECT_GT(plot.Shown().Frame.width(), 200);
  }
}

}  // namespace
}  // namespace quorvex
