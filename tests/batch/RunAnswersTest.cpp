#include <gtest/gtest.h>

#include "app/DesktopDrawer.h"
#include "batch/Program.h"
#include "batch/RunMacro.h"

namespace quorvex {
namespace {

// Is aborted when a run is about to write its answers.
struct LateAbort : cfgSolve {
  std::string RequestWindows() override { return "No windows here."; }
  void DDEText(std::string_view text) override { Aborted |= text.starts_with("Writing solution file"); }
};

// As a row is written, and as the limits of rows are computed that are still to be written.
TEST(RunAnswers, LeavesTheOlderAnswersWhereItIsAborted) {
  std::string data;
  for (int i = 0; i < 300; ++i) data += std::to_string(i) + " " + std::to_string(2 * i + i % 3) + "\n";
  for (const std::string layout : {"Structured", "Spreadsheet"})
    for (const std::string table : {"DataFile", "CalcData", "Confidence"}) {
      SCOPED_TRACE(layout + ", " + table);
      Program files(data);
      files.Folder.Write("out.txt", "old");
      const std::string macro = files.Folder.Write(
          "macro.cfg",
          files.InFolder("B_MACRO\nHandShake = UseDDE\nDataFile = @data.txt\nOutputFile = @out.txt\n"
                         "LogFile = @run.log\nOutputFormat = " +
                         layout + "\nTableOutput = " + table + "\nB_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n"));
      Session session;
      LateAbort form;
      DesktopDrawer drawer;
      EXPECT_EQ(RunMacro(macro, session, form, drawer).Status, 450);
      EXPECT_EQ(files.Folder.Read("out.txt"), "old");
      EXPECT_NE(files.Log().find("Writing solution to @out.txt\n\nSOLUTION PROCESS ABORTED BY USER.\n"),
                std::string::npos)
          << files.Log();
      EXPECT_TRUE(files.Log().ends_with("Abnormal termination\nExit Status 450\n")) << files.Log();
    }
}

}  // namespace
}  // namespace quorvex
