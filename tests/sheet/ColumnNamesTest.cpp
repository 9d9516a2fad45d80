#include <gtest/gtest.h>

#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

TEST(ColumnNames, AreTheHeadingsAndToldApart) {
  EXPECT_EQ(ColumnNames({" t ", "", "rate", "  ", "rate ", "Rate"}),
            (Texts{"t", "Column 2", "rate (column 3)", "Column 4", "rate (column 5)", "Rate"}));
  DataSheet sheet(3, true);
  sheet.Headers = {"wind", "X2", "", "ozone", "StDev"};
  EXPECT_EQ(ColumnName(sheet, 3), "Column 3");
  EXPECT_EQ(ColumnName(sheet, 6), "");
  EXPECT_EQ(VariableNames(sheet), (Texts{"X1 (wind)", "X2", "X3 (Column 3)"}));
  EXPECT_EQ(VariableNames(DataSheet(1, false)), Texts{"X"});
}

}  // namespace
}  // namespace quorvex
