#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "files/FileSave.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

class SavingAProject : public testing::Test {
 protected:
  SavingAProject() { project.Changed = project.NotesChanged = true; }

  TemporaryFolder folder;
  RecordingPrompter user;
  Project project{1, false, {}};
};

TEST_F(SavingAProject, AsksForANameOnceAndKeepsTheFileBefore) {
  EXPECT_FALSE(FileSave(project, user));  // no name chosen
  EXPECT_TRUE(project.Changed);
  EXPECT_EQ(user.Last(), "save: Save As|Project files (*.qvx)|qvx");

  user.File = folder.Path("a.qvx");
  EXPECT_TRUE(FileSave(project, user));
  EXPECT_FALSE(project.Changed || project.NotesChanged);
  EXPECT_EQ(project.FileName, folder.Path("a.qvx"));

  const std::string before = folder.Read("a.qvx");
  project.Notes = "more";
  EXPECT_TRUE(FileSave(project, user));
  EXPECT_EQ(user.Said.size(), 2u);
  EXPECT_EQ(folder.Read("a.qvx~"), before);
  EXPECT_EQ(ReadProject(folder.Path("a.qvx"), {})->Notes, "more");
}

TEST_F(SavingAProject, KeepsNameAndChangesWhereItFails) {
  const std::string name = folder.Path("missing/a.qvx");
  user.File = name;
  EXPECT_FALSE(FileSave(project, user));
  EXPECT_EQ(user.Last(), "refuse: Error saving project to '" + name + "'. The folder does not exist.");
  EXPECT_TRUE(project.Changed && IsUntitled(project));
}

TEST_F(SavingAProject, AsksBeforeItCloses) {
  project.FileName = folder.Path("a.qvx");
  const std::string notes = "ask: The notes for project '" + project.FileName + "' have changed. Save Changes?";
  const struct {
    bool Changed, NotesChanged, Cancel, Answer;
    std::string Said;
    bool Closes, Saved;
  } cases[] = {{false, false, false, true, "", true, false},
               {true, true, true, true, "ask: Save changes to project '" + project.FileName + "'?", false, false},
               {true, true, false, false, "ask: Save changes to project '" + project.FileName + "'?", true, false},
               {false, true, false, false, notes, true, false},
               {false, true, false, true, notes, true, true}};
  for (const auto& c : cases) {
    user = {};
    user.Cancel = c.Cancel;
    user.Answer = c.Answer;
    project.Changed = c.Changed;
    project.NotesChanged = c.NotesChanged;
    EXPECT_EQ(MayClose(project, user), c.Closes);
    EXPECT_EQ(user.Last(), c.Said);
    EXPECT_EQ(!folder.Read("a.qvx").empty(), c.Saved);
  }
  // A project that the user wanted saved, and that could not be, stays open.
  project.FileName = "Untitled";
  project.Changed = true;
  EXPECT_FALSE(MayClose(project, user));
}

}  // namespace
}  // namespace quorvex
