#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "results/SaveResults.h"

namespace quorvex {
namespace {

TEST(SaveEvaluation, WritesTheFileOrSaysWhyNot) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  EXPECT_FALSE(SaveEvaluation("a\r\n", user));
  EXPECT_EQ(user.Said, std::vector<std::string>{"save: Save As|Text files (*.txt)|txt|Eval"});
  user.File = folder.Path("Eval.txt");
  EXPECT_TRUE(SaveEvaluation("a\r\n", user));
  EXPECT_EQ(folder.Read("Eval.txt"), "a\r\n");
  user.File = folder.Path("missing/Eval.txt");
  EXPECT_FALSE(SaveEvaluation("a", user));
  EXPECT_EQ(user.Last(), "refuse: Error writing to '" + *user.File + "'. The folder does not exist.");
}

TEST(SaveTable, WritesTheFormThatTheNameAsksFor) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  Report report;
  report.Add(RowKind::Line, {"Y = ", "a*x"});
  for (const char* name : {"a.txt", "a.HTML", "a.htm", "a"}) {
    user.File = folder.Path(name);
    EXPECT_TRUE(SaveTable(report, "Fit Information", user));
    const bool html = std::string(name).size() > 1 && name[2] != 't';
    EXPECT_EQ(folder.Read(name), html ? Html(report) : TabSeparated(report)) << name;
  }
}

}  // namespace
}  // namespace quorvex
