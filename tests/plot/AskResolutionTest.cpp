#include <gtest/gtest.h>

#include <deque>

#include "RecordingPrompter.h"
#include "plot/AskResolution.h"

namespace quorvex {
namespace {

// Types one answer after the other, and cancels behind the last.
class TypingPrompter : public RecordingPrompter {
 public:
  std::deque<std::string> Answers;
  std::optional<std::string> AskText(const std::string& text, const std::string& initial) override {
    Text.reset();
    if (!Answers.empty()) {
      Text = Answers.front();
      Answers.pop_front();
    }
    return RecordingPrompter::AskText(text, initial);
  }
};

TEST(AskResolution, TakesARememberedNumberOfTheRange) {
  const std::string asked = "text: Resolution of the picture, 72 to 1200 dots per inch:|",
                    refused = "refuse: Please enter a resolution from 72 to 1200 dots per inch.";
  const LocaleText german{',', ';', '.', '.', ':'};
  Settings settings;
  TypingPrompter user;
  const PictureSize screen{601, 450, 120};
  EXPECT_FALSE(AskResolution(screen, settings, {}, user));
  EXPECT_EQ(user.Said, std::vector<std::string>{asked + "120"});
  EXPECT_TRUE(settings.Changes().empty());

  user.Said.clear();
  user.Answers = {"", "71.9", "1200.1", "1e9", "-300", "nan", "300 dpi", " 300 "};
  const auto chosen = AskResolution(screen, settings, {}, user);
  ASSERT_TRUE(chosen);
  EXPECT_EQ(chosen->Width, 1503);  // 601 * 2.5 = 1502.5
  EXPECT_EQ(chosen->Height, 1125);
  EXPECT_EQ(chosen->PixelsPerInch, 300);
  EXPECT_EQ(std::ranges::count(user.Said, refused), 7);
  EXPECT_EQ(user.Last(), asked + "300 dpi") << "what was typed stays to be mended";

  for (const auto& [typed, stored] : {std::pair{"72", "72"}, {"1200", "1200"}, {"96,5", "96.5"}}) {
    user.Answers = {typed};
    ASSERT_TRUE(AskResolution(screen, settings, german, user));
    EXPECT_EQ(settings.Text("pngresolution"), stored);
  }
  EXPECT_FALSE(AskResolution(screen, settings, german, user));
  EXPECT_EQ(user.Last(), asked + "96,5");
}

}  // namespace
}  // namespace quorvex
