#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "Fields.h"
#include "Golden.h"
#include "Projects.h"
#include "RecordingPrompter.h"
#include "SavedPlots.h"
#include "TemporaryFolder.h"
#include "files/PlotFile.h"
#include "plot/RecordingSurface.h"

namespace quorvex {
namespace {

constexpr const char* kUnreadable = "Error reading plot 'p.plt'.\r\nThe file is incompatible or appears corrupted.";

std::unique_ptr<PlotPage> Read(const std::string& text, const LocaleText& locale = {}) {
  Result<std::unique_ptr<PlotPage>> plot = ParsePlotFile(text, "p.plt", Settings(), locale);
  EXPECT_TRUE(plot) << plot.error();
  return plot ? std::move(*plot) : nullptr;
}

// What the plot shows, or why it shows nothing.
std::string Drawing(PlotPage& plot) {
  RecordingPrompter user;
  RecordingSurface surface(800, 600);
  if (plot.CreateGraph({.Regenerate = true}, user)) plot.DrawGraph(surface, user);
  std::string drawing = surface.Text() + user.Last();
  std::replace(drawing.begin(), drawing.end(), '"', '\'');  // as texts come back
  return drawing;
}

std::vector<std::unique_ptr<PlotPage>> FullPlots(const LocaleText& locale = {}) {
  std::vector<std::unique_ptr<PlotPage>> plots;
  plots.push_back(FullPlot2D(locale));
  plots.push_back(FullPlot3D(locale));
  return plots;
}

TEST(PlotFile, HasTheLayoutOfVersion9) {
  ExpectGolden("Plot2D.plt", PlotFileText(*FullPlot2D()));
  ExpectGolden("Plot3D.plt", PlotFileText(*FullPlot3D()));
}

TEST(PlotFile, ReadsBackWhatIsDrawnTheSame) {
  for (const LocaleText& locale : {LocaleText(), kCommaLocale})
    for (const auto& plot : FullPlots(locale)) {
      const std::string text = PlotFileText(*plot);
      const auto back = Read(text, locale);
      EXPECT_EQ(PlotFileText(*back), text);
      const std::string drawing = Drawing(*plot);
      EXPECT_GT(drawing.size(), 1000u) << drawing;
      EXPECT_EQ(Drawing(*back), drawing);
    }
}

}  // namespace
}  // namespace quorvex
