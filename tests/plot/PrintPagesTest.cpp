#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "plot/PrintPages.h"

namespace quorvex {
namespace {

class Progress : public PrintProgress {
 public:
  std::vector<std::string> Shown;
  std::size_t CancelAt = 0;  // the text that is answered by Cancel; 0 none

  bool Show(const std::string& text) override {
    Shown.push_back(text);
    return Shown.size() != CancelAt;
  }
};

TEST(PrintPages, CountsThemAndStopsBetweenThem) {
  const struct {
    std::size_t CancelAt;
    int FailAt, Drawn;
    bool Printed;
    std::string Said;
  } kCases[] = {{0, 0, 3, true, ""},
                {1, 0, 0, false, "inform: Printing has been cancelled."},
                {3, 0, 2, false, "inform: Printing has been cancelled."},
                {0, 2, 2, false, "refuse: An error ocurred drawing the plot to the printer."}};
  for (const auto& c : kCases) {
    Progress progress;
    progress.CancelAt = c.CancelAt;
    RecordingPrompter user;
    int drawn = 0;
    EXPECT_EQ(PrintPages(
                  3, "Laser", progress, [&] { return ++drawn != c.FailAt; }, user),
              c.Printed);
    EXPECT_EQ(drawn, c.Drawn);
    EXPECT_EQ(user.Last(), c.Said);
    for (std::size_t i = 0; i < progress.Shown.size(); ++i)
      EXPECT_EQ(progress.Shown[i], "Printing page " + std::to_string(i + 1) + " of 3 on Laser");
  }
}

TEST(PrintPages, TellsOfAPrinterThatFailed) {
  EXPECT_EQ(PlotPrinterErrorText(76, "No folder"), "The following printer error occurred: Error number 76: No folder.");
  EXPECT_EQ(PrintErrorText(76, "No folder"), "The following error occurred: Error number 76 - No folder.");
}

}  // namespace
}  // namespace quorvex
