#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "plot/StorePageSetup.h"

namespace quorvex {
namespace {

TEST(StorePageSetup, KeepsWhatWasTyped) {
  const LocaleText german{',', ';', '.', '.', ':'};
  Settings settings;
  RecordingPrompter user;
  PageSetupEntries entries = PageSetupEntries::Read(settings, german);
  EXPECT_EQ(entries.Left, "0,25");
  entries = {"1,5", "2", "0", "3", "cm", true, 1};
  ASSERT_TRUE(StorePageSetup(entries, german, settings, user));
  EXPECT_EQ(settings.Number("mleft", "printsetup"), 1.5);
  const PageSetupEntries read = PageSetupEntries::Read(settings, {});
  EXPECT_EQ(read.Left + '|' + read.Right + '|' + read.Top + '|' + read.Bottom, "1.5|2|0|3");
  EXPECT_EQ(read.Units, "cm");
  EXPECT_TRUE(read.PrintBackground);
  EXPECT_EQ(read.Orientation, 1);
}

TEST(StorePageSetup, RefusesTheFirstMarginThatIsNoNumber) {
  const struct {
    PageSetupEntries entries;
    const char* margin;
  } kCases[] = {{{"", "1", "", "", "mm"}, "Left"},
                {{"1", "x", "1mm", "", "mm"}, "Right"},
                {{"1", "1", "1,0", "?", "mm"}, "Top"},
                {{"1", "1", "1", "-", "mm"}, "Bottom"}};
  for (const auto& c : kCases) {
    Settings settings;
    RecordingPrompter user;
    EXPECT_FALSE(StorePageSetup(c.entries, {}, settings, user));
    EXPECT_EQ(user.Last(), std::string("refuse: Please enter a valid number for the ") + c.margin + " Margin");
    EXPECT_FALSE(settings.Has("munits", "printsetup"));
  }
}

}  // namespace
}  // namespace quorvex
