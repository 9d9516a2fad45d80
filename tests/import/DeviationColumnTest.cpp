#include <gtest/gtest.h>

#include "import/DeviationColumn.h"

namespace quorvex {
namespace {

TEST(NamesDeviation, KnowsTheUsualHeadings) {
  for (const char* heading : {"sd", "SD", "error", "y error", "Std. dev. (mV)", "standard deviation", "counts_sd",
                              "sigma_y", "Error of y", "StDev", "\xCF\x83", "dy [%]"})
    EXPECT_TRUE(NamesDeviation(heading)) << heading;
  for (const char* heading : {"", "y", "error rate", "trend", "sdx", "Column 3", "(sd)", "errors per day", ",;"})
    EXPECT_EQ(NamesDeviation(heading), std::string_view(heading) == "(sd)") << heading;
}

TEST(DeviationColumn, LeavesColumnsForXAndY) {
  EXPECT_EQ(DeviationColumn({"t", "y", "sd"}), 3u);
  EXPECT_EQ(DeviationColumn({"t", "error", "y"}), 2u);
  EXPECT_EQ(DeviationColumn({"sd", "y", "t"}), 0u);
  EXPECT_EQ(DeviationColumn({"y", "sd"}), 0u);
  EXPECT_EQ(DeviationColumn({}), 0u);
}

}  // namespace
}  // namespace quorvex
