// The box and its axes, on recording surfaces.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

#include "Golden.h"
#include "plot3d/Boxes.h"

namespace quorvex {
namespace {

// Texts as they lie on the page, by their turned corners.
struct PlacedText {
  std::string Text;
  double left, top, right, bottom;
  int angle;

  bool Overlaps(const PlacedText& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
};

class TextSurface : public RecordingSurface {
 public:
  using RecordingSurface::RecordingSurface;
  std::vector<PlacedText> Texts;

  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override {
    const int escapement = Objects().Font().Escapement;
    const DeviceExtent size = GetTextExtentPoint32A(text);
    const double turn = escapement * std::numbers::pi / 1800, c = std::cos(turn), s = std::sin(turn);
    PlacedText placed{std::string(text), 1e9, 1e9, -1e9, -1e9, escapement / 10};
    for (const double along : {0.0, 1.0 * size.cx})
      for (const double down : {0.0, 1.0 * size.cy}) {
        const double px = x + along * c + down * s, py = y - along * s + down * c;
        placed = {placed.Text,
                  std::min(placed.left, px),
                  std::min(placed.top, py),
                  std::max(placed.right, px),
                  std::max(placed.bottom, py),
                  placed.angle};
      }
    Texts.push_back(placed);
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
  PlotClass3D plot = TitledPlot();
  const struct {
    std::int32_t width, height;
    std::size_t fewest;  // texts at any angle
  } kPages[] = {{800, 600, 12}, {400, 300, 8}, {300, 500, 6}};
  for (const auto& page : kPages)
    for (int xy = 0; xy <= 360; xy += 5)
      for (int z = 0; z <= 180; z += 5) {
        const auto where = testing::Message() << page.width << " wide, at " << xy << " and " << z;
        const TextSurface drawn = DrawnAt(plot, xy, z, TextSurface(page.width, page.height));
        EXPECT_GE(drawn.Texts.size(), page.fewest) << where;
        for (std::size_t i = 0; i < drawn.Texts.size(); ++i) {
          const PlacedText& text = drawn.Texts[i];
          EXPECT_TRUE(text.left >= -1 && text.top >= -1 && text.right <= page.width + 1 &&
                      text.bottom <= page.height + 1)
              << where << ": " << text.Text;
          EXPECT_TRUE(text.angle > -90 && text.angle <= 90) << where << ": " << text.Text;
          for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(text.angle % 90 == 0 && drawn.Texts[k].angle % 90 == 0 && text.Overlaps(drawn.Texts[k]))
                << where << ": " << text.Text << ", " << drawn.Texts[k].Text;
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
