#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "files/DetectFileType.h"

namespace quorvex {
namespace {

TEST(DetectFileType, TellsAFileByItsFirstFields) {
  const std::string version = "\"B_HEADER\"\n\"    Quorvex:  Version ";
  const struct {
    std::string text;
    FileType type;
  } kCases[] = {
      {"", {}},
      {"1,2,3\r\n4,5,6\r\n", {}},
      {std::string(100000, 'x'), {}},
      {version + "9.0\"\r\"filetype=regression\"\r\"standarddeviation=True\"\r\"columns=4\"\r",
       {"Quorvex:  Version 9.0", "regression", 2, true}},
      {version + "9.0\"\n\"filetype=regression\"\n\"standarddeviation=False\"\n\"columns=4\"\n",
       {"Quorvex:  Version 9.0", "regression", 3, false}},
      {"\xEF\xBB\xBF"
       "b_header\nQuorvex:  Version 6.1\nf\nTRUE\ncolumns=3\n",
       {"Quorvex:  Version 6.1", "regression", 1, true}},
      {version + "3.1\"\n\"x\"\n\"true\"\n", {"Quorvex:  Version 3.1", "regression", 1, true}},
      {version + "9.0 Plot\"\n\"PlotType: 2D\"\n", {"Quorvex:  Version 9.0", "plot", 1, false}},
      {version + "9.0 Plot\"\n\"PlotType: 3D\"\n", {"Quorvex:  Version 9.0", "plot", 2, false}},
      {version + "3.1 Plot\"\n", {"Quorvex:  Version 3.1", "plot", 1, false}},  // no third field is read
  };
  const TemporaryFolder folder;
  for (const auto& c : kCases)
    EXPECT_EQ(DetectFileType(folder.Write("any.plt", c.text)), c.type) << c.text.substr(0, 80);
}

TEST(DetectFileType, GivesUpOnAFileThatDoesNotTell) {
  const TemporaryFolder folder;
  EXPECT_EQ(DetectFileType(folder.Path("none")), std::nullopt);
  EXPECT_EQ(DetectFileType(folder.Path("")), std::nullopt);
  for (const char* text : {"B_HEADER", "B_HEADER\nQuorvex:  Version 9.0\n", "B_HEADER\nQuorvex:  Version 9.0 Plot\n",
                           "B_HEADER\nQuorvex:  Version 9.0\na\nb\nc\n", "B_HEADER\n\"Quorvex"})
    EXPECT_EQ(DetectFileType(folder.Write("any", text)), std::nullopt) << text;
}

}  // namespace
}  // namespace quorvex
