#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "files/Templates.h"

namespace quorvex {
namespace {

class TemplateFile : public testing::Test {
 protected:
  TemporaryFolder folder;
  Typist user;
  Settings settings;
  PlotClass plot = DistinctPlot();
  PlotClass3D box = DistinctBox();
};

TEST_F(TemplateFile, IsAppliedToItsKindOfPlotAlone) {
  const std::string flat = folder.Write("a.QV2", "plot_title_text = applied"), solid = folder.Write("a.qv3", "");
  EXPECT_FALSE(ApplyPlotTemplate(plot, solid, true, user));
  EXPECT_EQ(user.Last(), "refuse: You cannot apply a 3D Template to a 2D Plot.");
  EXPECT_FALSE(ApplyPlotTemplate(box, flat, true, user));
  EXPECT_EQ(user.Last(), "refuse: You cannot apply a 2D Template to a 3D Plot.");
  EXPECT_EQ(box.PlotTitle, "plot title");
  EXPECT_TRUE(ApplyPlotTemplate(plot, flat, true, user));
  EXPECT_EQ(plot.PlotTitle, "applied");
  // Any other name will do.
  EXPECT_TRUE(ApplyPlotTemplate(box, folder.Write("template", "plot_title_text = applied"), true, user));
  EXPECT_EQ(box.PlotTitle, "applied");
  EXPECT_EQ(user.Said.size(), 2u);
}

TEST_F(TemplateFile, AsksOnlyWhereItMay) {
  const std::string file = folder.Write("a.qv2", "plot_title_text = prompt\nx_axis_title_text = set");
  EXPECT_TRUE(ApplyPlotTemplate(plot, file, false, user));
  EXPECT_TRUE(user.Said.empty());
  EXPECT_EQ(plot.PlotTitle + plot.X.AxisTitle, "plot titleset");
  EXPECT_TRUE(ApplyPlotTemplate(plot, file, true, user));
  EXPECT_EQ(user.Last(), "text: Enter the plot title:|plot title");
}

TEST_F(TemplateFile, ChangesNothingWhereItCannotBeRead) {
  for (const std::string& file :
       {folder.Path("none.qv2"), folder.Path(""), folder.Write("vast", std::string(2 << 20, 'x'))}) {
    EXPECT_FALSE(ApplyPlotTemplate(plot, file, true, user));
    EXPECT_EQ(user.Last(), "refuse: Error applying plot template '" + file + "'.");
  }
  std::string garbage;
  for (int i = 0; i < 100000; ++i) garbage += static_cast<char>(i * 7919 >> 5);
  EXPECT_TRUE(ApplyPlotTemplate(plot, folder.Write("garbage", garbage), true, user));
  EXPECT_EQ(Saved(plot), Saved(DistinctPlot()));
}

TEST_F(TemplateFile, MayHaveAnyLineEndsAndEncoding) {
  const char* const texts[] = {"plot_title_text = \xE9\rx_axis_title_text = b",
                               "\xEF\xBB\xBFplot_title_text = \xC3\xA9\n\nx_axis_title_text = b\n",
                               "PLOT_TITLE_TEXT=\xC3\xA9\r\n  X_Axis_Title_Text  =  b  \r\n"};
  for (const char* text : texts) {
    PlotClass fresh = DistinctPlot();
    EXPECT_TRUE(ApplyPlotTemplate(fresh, folder.Write("a.qv2", text), true, user));
    EXPECT_EQ(fresh.PlotTitle + fresh.X.AxisTitle,
              "\xC3\xA9"
              "b");
  }
}

TEST_F(TemplateFile, IsSavedAndMayBecomeTheDefault) {
  const std::string refusal =
      "refuse: An error in the current plot settings prohibits the plot template from being saved with the plots "
      "current state. Check the plot settings in the Graph Properties window.";
  EXPECT_FALSE(UpdatePlotTemplate(plot, Everything(plot), settings, user));
  EXPECT_EQ(user.Last(), refusal);
  plot.PlotCreated = box.PlotCreated = true;
  EXPECT_FALSE(UpdatePlotTemplate(plot, Everything(plot), settings, user));
  EXPECT_EQ(user.Last(), "save: Save Template|2D Template files (*.qv2)|qv2|Template.qv2");

  user.File = folder.Path("missing/a.qv2");
  EXPECT_FALSE(UpdatePlotTemplate(plot, Everything(plot), settings, user));
  EXPECT_EQ(user.Last(), "refuse: Error saving plot template to '" + *user.File + "'.");

  user.File = folder.Path("a.qv2");
  user.Answer = false;
  EXPECT_TRUE(UpdatePlotTemplate(plot, Everything(plot), settings, user));
  EXPECT_EQ(user.Last(), "ask: Do you want to make this the default template?");
  EXPECT_EQ(settings.Text("template2d"), "");
  EXPECT_EQ(folder.Read("a.qv2"), Saved(plot));
  user.Answer = true;
  EXPECT_TRUE(UpdatePlotTemplate(plot, {"Lines"}, settings, user));
  EXPECT_EQ(settings.Text("template2d"), folder.Path("a.qv2"));
  EXPECT_EQ(folder.Read("a.qv2"), TemplateText(plot, {"Lines"}));

  user.File = std::nullopt;
  EXPECT_FALSE(UpdatePlotTemplate(box, Everything(box), settings, user));
  EXPECT_EQ(user.Last(), "save: Save Template|3D Template files (*.qv3)|qv3|Template.qv3");
  user.File = folder.Path("a.qv3");
  EXPECT_TRUE(UpdatePlotTemplate(box, Everything(box), settings, user));
  EXPECT_EQ(settings.Text("template3d"), folder.Path("a.qv3"));
}

TEST_F(TemplateFile, ThatNewPlotsGetIsAppliedOrOfferedForRemoval) {
  ApplyDefaultTemplate(plot, settings, user);
  EXPECT_TRUE(user.Said.empty());

  settings.Set("template2d", folder.Write("a.qv2", "plot_title_text = default\nx_axis_title_text = prompt"));
  ApplyDefaultTemplate(plot, settings, user);
  ApplyDefaultTemplate(box, settings, user);
  EXPECT_EQ(plot.PlotTitle, "default");
  EXPECT_EQ(box.PlotTitle, "plot title");
  EXPECT_EQ(user.Said, std::vector<std::string>{"text: Enter the X axis title:|X title"});

  const std::string gone = folder.Path("gone.qv2");
  settings.Set("template2d", gone);
  user.Answer = false;
  ApplyDefaultTemplate(plot, settings, user);
  EXPECT_EQ(user.Last(),
            "ask: Could not find the plot template '" + gone + "'. Do you want to remove it as a default template?");
  EXPECT_EQ(settings.Text("template2d"), gone);
  user.Answer = true;
  ApplyDefaultTemplate(plot, settings, user);
  EXPECT_EQ(settings.Text("template2d"), "");
}

}  // namespace
}  // namespace quorvex
