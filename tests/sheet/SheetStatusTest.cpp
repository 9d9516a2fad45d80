#include <gtest/gtest.h>

#include "sheet/SheetStatus.h"

namespace quorvex {
namespace {

TEST(SheetStatus, CountsRowsAndNamesColumns) {
  DataSheet sheet(2, true);
  EXPECT_EQ(SheetStatus(sheet, 1, 1), "X1, row 1   |   no data");
  EXPECT_EQ(
      EmptySheetHint(sheet),
      "Type your measurements into the columns X1, X2, Y and StDev, or open one of the examples of the Help menu.");
  sheet.Cells.SetGridCellNumber(1, 1, 1);
  EXPECT_EQ(SheetStatus(sheet, 2, 3), "Y, row 2   |   1 row of data");
  EXPECT_EQ(EmptySheetHint(sheet), "");
  sheet.Cells.SetGridCellNumber(12, 1, 1);
  EXPECT_EQ(SheetStatus(sheet, 12, 1), "X1, row 12   |   12 rows of data");
}

}  // namespace
}  // namespace quorvex
