#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "plot/AskResolution.h"

namespace quorvex {
namespace {

TEST(AskResolution, TakesARememberedNumberOfTheRange) {
  const std::string asked = "text: Resolution of the picture, 72 to 1200 dots per inch:|",
                    refused = "refuse: Please enter a resolution from 72 to 1200 dots per inch.";
  const LocaleText german{',', ';', '.', '.', ':'};
  Settings settings;
  RecordingPrompter user;
  const PictureSize screen{601, 450, 120};
  EXPECT_FALSE(AskResolution(screen, settings, {}, user));
  EXPECT_EQ(user.Said, std::vector<std::string>{asked + "120"});
  EXPECT_TRUE(settings.Changes().empty());

  for (const char* typed : {"", "71.9", "1200.1", "1e9", "-300", "nan", "300 dpi"}) {
    user.Text = typed;
    EXPECT_FALSE(AskResolution(screen, settings, {}, user)) << typed;
    EXPECT_EQ(user.Last(), refused);
  }
  user.Text = " 300 ";
  const auto chosen = AskResolution(screen, settings, {}, user);
  ASSERT_TRUE(chosen);
  EXPECT_EQ(chosen->Width, 1503);  // 601 * 2.5 = 1502.5
  EXPECT_EQ(chosen->Height, 1125);
  EXPECT_EQ(chosen->PixelsPerInch, 300);
  EXPECT_EQ(user.Last(), asked + "120");

  for (const auto& [typed, stored] : {std::pair{"72", "72"}, {"1200", "1200"}, {"96,5", "96.5"}}) {
    user.Text = typed;
    ASSERT_TRUE(AskResolution(screen, settings, german, user));
    EXPECT_EQ(settings.Text("pngresolution"), stored);
  }
  user.Text.reset();
  EXPECT_FALSE(AskResolution(screen, settings, german, user));
  EXPECT_EQ(user.Last(), asked + "96,5");
}

}  // namespace
}  // namespace quorvex
