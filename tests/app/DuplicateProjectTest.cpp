#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "app/DuplicateProject.h"
#include "files/ProjectFile.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

TEST(DuplicateProject, HoldsTheSameWithoutAFile) {
  const TemporaryFolder folder;
  const TemporaryVariable temporary("TMPDIR", folder.Path("").c_str());
  Project project = LineProject();
  project.FileName = folder.Path("line.qvx");
  project.HasFile = true;
  project.Notes = "why\r\nand how";
  SolveModel(project, "a*x+b", 1);
  const Result<Project> copy = DuplicateProject(project, "Untitled 2");
  ASSERT_TRUE(copy) << copy.error();
  EXPECT_EQ(ProjectText(*copy), ProjectText(project));
  EXPECT_EQ(copy->FileName, "Untitled 2");
  EXPECT_FALSE(copy->HasFile || copy->IsSaved());
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path(""))) << "nothing is left behind";
}

TEST(DuplicateProject, SaysWhichFileCannotBeMade) {
  const TemporaryVariable temporary("TMPDIR", "/proc");
  EXPECT_EQ(DuplicateProject(LineProject(), "Untitled").error(),
            "Error creating temporary file '/proc/quorvex-XXXXXX/duplicate.qvx'.");
  const TemporaryVariable nowhere("TMPDIR", "/nowhere/at/all");
  EXPECT_TRUE(DuplicateProject(LineProject(), "Untitled")) << "there is another folder";
}

}  // namespace
}  // namespace quorvex
