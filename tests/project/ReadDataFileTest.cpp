#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "project/ReadDataFile.h"

namespace quorvex {
namespace {

TEST(ReadDataFile, FindsSeparatorAndHeaders) {
  const LocaleText comma = {.DecimalSeparator = ',', .ListSeparator = ';'};
  const struct {
    const char* Content;
    LocaleText Locale;
    std::vector<std::string> Headers;
    double Last;  // of row 2, column 2
  } cases[] = {{"t\tp\n1\t2\n3\t4.5\n", {}, {"t", "p"}, 4.5},
               {"1,2\r\n3,4.5\r\n", {}, {}, 4.5},
               {"a, b;c\n1;2\n3;4.5\n", {}, {"a, b", "c"}, 4.5},
               {"  1   2\n  3   4.5\n", {}, {}, 4.5},
               {"1 2\n3 4,5\n", comma, {}, 4.5},
               {"temperature,pressure\n0,2\n3,4\n", comma, {"temperature", "pressure"}, 4},
               {"t 1\n1 2\n", {}, {}, 2}};
  TemporaryFolder folder;
  for (const auto& c : cases) {
    const auto data = ReadDataFile(folder.Write("data.txt", c.Content), c.Locale);
    ASSERT_TRUE(data) << c.Content;
    EXPECT_EQ(data->Headers, c.Headers) << c.Content;
    EXPECT_EQ(data->Cells.GridLastRow(), 2u) << c.Content;
    EXPECT_EQ(data->Cells.GridCellNumber(2, 2), c.Last) << c.Content;
  }
  const std::string empty = folder.Write("empty.txt", "\n \n");
  EXPECT_EQ(ReadDataFile(empty, {}).error(), "Error importing data from '" + empty + "'. It holds no data.");
  const std::string none = folder.Path("none.txt");
  EXPECT_EQ(ReadDataFile(none, {}).error(), "Error importing data from '" + none + "'. The file does not exist.");
}

TEST(TakeData, KeepsTheColumnsThatTheSheetHas) {
  TemporaryFolder folder;
  auto data = ReadDataFile(folder.Write("data.txt", "a,b,c\n1,2,3\n"), {});
  Project project(1, false, {});
  EXPECT_EQ(TakeData(project, std::move(*data)), 1u);
  EXPECT_EQ(project.Sheet.Headers, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(project.Sheet.Cells.GridLastCol(), 2u);
  EXPECT_TRUE(project.Changed);
}

}  // namespace
}  // namespace quorvex
