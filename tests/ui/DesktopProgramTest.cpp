// The two programs side by side: which one runs a macro that asks for windows.

#include <gtest/gtest.h>

#include "Paths.h"
#include "batch/Program.h"

namespace quorvex {
namespace {

const std::string kMacro =
    "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\nHandShake = ShowProgress\n"
    "B_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n";
constexpr const char* kOffscreen = "DISPLAY=:987 QT_QPA_PLATFORM=offscreen";
constexpr const char* kOutOfReach = "DISPLAY=:987 QT_QPA_PLATFORM=xcb";
constexpr const char* kNone = "QT_QPA_PLATFORM=xcb";

TEST(DesktopProgram, TakesOverARunWithWindowsAndGivesItBackWithoutDisplay) {
  for (const std::string& first : {ConsoleProgram(), DesktopProgram()}) {
    for (const char* environment : {kOffscreen, kOutOfReach, kNone}) {
      Program program;
      program.Executable = first;
      program.Folder.Write("data.txt", "1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n");
      EXPECT_EQ(program.RunMacro(kMacro, environment), 0) << first << ' ' << environment;
      EXPECT_EQ(program.Out, "");
      // The offscreen platform tells on standard error what it lacks.
      if (environment != kOffscreen) {
        EXPECT_EQ(program.Err, "");
      }
      const std::string log = program.Folder.Read("run.log");
      EXPECT_TRUE(log.ends_with("Normal termination\r\n")) << log;
      EXPECT_EQ(log.find("not installed"), std::string::npos) << log;
      EXPECT_EQ(log.find("There is no display, so the run goes on") == std::string::npos, environment == kOffscreen)
          << log;
    }
  }
}

TEST(DesktopProgram, EndsWithTheStatusOfTheRun) {
  for (const char* environment : {kOffscreen, kOutOfReach}) {
    Program program;
    program.Executable = DesktopProgram();
    EXPECT_EQ(program.RunMacro(kMacro, environment), 110);  // no data file
    EXPECT_EQ(program.Err, "Exit Status 110\n");
  }
}

TEST(DesktopProgram, SpeaksToAWaitingProcess) {
  Program program("1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n");
  EXPECT_EQ(program.RunMacro("B_MACRO\nHandShake = UseDDE\n" + kMacro.substr(8), kOffscreen), 0);
  EXPECT_NE(program.Out.find("Solving Model 1UserModel\n"), std::string::npos) << program.Out;
  EXPECT_TRUE(program.Out.ends_with("Normal termination\n"));
}

TEST(DesktopProgram, AnswersAboutItselfWithoutADisplay) {
  Program program;
  program.Executable = DesktopProgram();
  EXPECT_EQ(program.Run("--version", kNone), 0);
  EXPECT_EQ(program.Out, "Quorvex 9.0.0\n");
  EXPECT_EQ(program.Run("", kNone), 1);
  EXPECT_EQ(program.Err, "There is no display for the main window; quorvex -runcfg FILE runs a macro without one.\n");
}

}  // namespace
}  // namespace quorvex
