#include <gtest/gtest.h>

#include <deque>
#include <optional>

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

  const std::string name = folder.Path("Untitled a.qvx");
  user.File = name;
  EXPECT_TRUE(FileSave(project, user));
  EXPECT_FALSE(project.Changed || project.NotesChanged);
  EXPECT_EQ(project.FileName, name);

  const std::string before = folder.Read("Untitled a.qvx");
  project.Notes = "more";
  EXPECT_TRUE(FileSave(project, user));
  EXPECT_EQ(user.Said.size(), 2u);
  EXPECT_EQ(folder.Read("Untitled a.qvx~"), before);
  Result<Project> opened = ReadProject(name, {});
  EXPECT_EQ(opened->Notes, "more");
  EXPECT_TRUE(FileSave(*opened, user));
  EXPECT_EQ(user.Said.size(), 2u);
}

TEST_F(SavingAProject, KeepsNameAndChangesWhereItFails) {
  const std::string name = folder.Path("missing/a.qvx");
  user.File = name;
  EXPECT_FALSE(FileSave(project, user));
  EXPECT_EQ(user.Last(), "refuse: Error saving project to '" + name + "'. The folder does not exist.");
  EXPECT_TRUE(project.Changed && !project.HasFile);
}

// Answers each question in turn; nothing is Cancel.
class AnsweringPrompter : public RecordingPrompter {
 public:
  std::deque<std::optional<bool>> Answers;

  std::optional<bool> AskOrCancel(const std::string& text) override {
    Ask(text);
    const auto answer = Answers.empty() ? std::nullopt : Answers.front();
    if (!Answers.empty()) Answers.pop_front();
    return answer;
  }
};

TEST_F(SavingAProject, AsksForDataAndNotesApartBeforeItCloses) {
  std::filesystem::create_directory(folder.Path("Untitled Folder"));
  const std::string name = folder.Path("Untitled Folder/Untitled a.qvx");
  const std::string data = "ask: Save changes to project '" + name + "'?";
  const std::string notes = "ask: The notes for project '" + name + "' have changed. Save Changes?";
  using Said = std::vector<std::string>;
  const struct {
    bool Changed, NotesChanged;
    std::deque<std::optional<bool>> Answers;
    Said Asked;
    bool Closes, NewData, NewNotes;
  } cases[] = {
      {false, false, {}, {}, true, false, false},
      {true, false, {std::nullopt}, {data}, false, false, false},
      {true, false, {true}, {data}, true, true, false},
      {false, true, {false}, {notes}, true, false, false},
      {false, true, {true}, {notes}, true, false, true},
      {true, true, {std::nullopt}, {data}, false, false, false},
      {true, true, {true, std::nullopt}, {data, notes}, false, false, false},
      {true, true, {false, false}, {data, notes}, true, false, false},
      {true, true, {true, true}, {data, notes}, true, true, true},
      {true, true, {true, false}, {data, notes}, true, true, false},
      {true, true, {false, true}, {data, notes}, true, false, true},
  };
  for (const auto& c : cases) {
    for (const bool untitled : {false, true}) {
      Project edited = NewProject(1, false, {});
      edited.Sheet.Cells.SetGridCellNumber(1, 1, 1);
      edited.Notes = "old";
      std::filesystem::remove(name);
      if (!untitled) WriteProject(edited, name);
      edited.FileName = untitled ? "Untitled" : name;
      edited.HasFile = !untitled;
      if (c.Changed) edited.Sheet.Cells.SetGridCellNumber(1, 1, 2);
      if (c.NotesChanged) edited.Notes = "new";
      edited.Changed = c.Changed;
      edited.NotesChanged = c.NotesChanged;
      AnsweringPrompter prompter;
      prompter.Answers = c.Answers;
      prompter.File = name;
      EXPECT_EQ(MayClose(edited, prompter), c.Closes);
      const Result<Project> saved = ReadProject(name, {});
      if (untitled) {
        EXPECT_EQ(bool(saved), c.NewData || c.NewNotes);
      } else {
        EXPECT_EQ(prompter.Said, c.Asked);
      }
      if (!saved) continue;
      const double old = untitled && c.Changed ? 0 : 1;  // an unsaved project has no older data
      EXPECT_EQ(saved->Sheet.Cells.GridCellNumber(1, 1), c.NewData ? 2 : old);
      EXPECT_EQ(saved->Notes, c.NewNotes ? "new" : untitled && c.NotesChanged ? "" : "old");
    }
  }
}

TEST_F(SavingAProject, StaysOpenWhereItCouldNotBeSaved) {
  AnsweringPrompter prompter;  // chooses no file
  project.Notes = "mine";
  for (const std::deque<std::optional<bool>>& answers : {std::deque<std::optional<bool>>{true, true}, {true, false}}) {
    project.Changed = project.NotesChanged = true;
    prompter.Answers = answers;
    EXPECT_FALSE(MayClose(project, prompter));
    EXPECT_EQ(project.Notes, "mine");
  }
  project.FileName = folder.Path("gone.qvx");
  project.HasFile = true;
  prompter.Answers = {false, true};
  EXPECT_FALSE(MayClose(project, prompter));
  EXPECT_TRUE(prompter.Last().starts_with("refuse: ")) << prompter.Last();
}

}  // namespace
}  // namespace quorvex
