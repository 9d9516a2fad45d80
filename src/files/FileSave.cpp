#include "files/FileSave.h"

#include <optional>
#include <utility>

#include "core/Files.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

bool SaveTo(const std::string& fileName, Project& project, Prompter& user) {
  if (const int error = WriteProject(project, fileName)) {
    user.Refuse("Error saving project to '" + fileName + "'. " + FileErrorText(error));
    return false;
  }
  project.FileName = fileName;
  project.HasFile = true;
  project.Changed = project.NotesChanged = false;
  return true;
}

// The project as its file has it; one without a file as it began.
Result<Project> StoredProject(const Project& project) {
  if (project.HasFile) return ReadProject(project.FileName, project.Locale);
  const DataSheet& sheet = project.Sheet;
  return NewProject(sheet.IndependentVariables, sheet.HasStandardDeviation, project.Locale);
}

// Saves either the data or the notes, and leaves the other as it is in the file.
bool SavePart(Project& project, bool data, Prompter& user) {
  Result<Project> stored = StoredProject(project);
  if (!stored) {
    user.Refuse(stored.error());
    return false;
  }
  if (!data) {
    stored->Notes = project.Notes;
    return FileSave(*stored, user);
  }
  std::swap(project.Notes, stored->Notes);
  const bool saved = FileSave(project, user);
  // Where saving fails the project stays open, with its own notes.
  if (!saved) std::swap(project.Notes, stored->Notes);
  return saved;
}

}  // namespace

bool FileSave(Project& project, Prompter& user) {
  return project.HasFile ? SaveTo(project.FileName, project, user) : FileSaveAs(project, user);
}

bool FileSaveAs(Project& project, Prompter& user) {
  const auto name = user.ChooseFileToSave("Save As", "Project files (*.qvx)", "qvx");
  return name && SaveTo(*name, project, user);
}

bool MayClose(Project& project, Prompter& user) {
  std::optional<bool> saveData = false, saveNotes = false;
  if (project.Changed) saveData = user.AskOrCancel("Save changes to project '" + project.FileName + "'?");
  if (saveData && project.NotesChanged)
    saveNotes = user.AskOrCancel("The notes for project '" + project.FileName + "' have changed. Save Changes?");
  if (!saveData || !saveNotes) return false;
  if (!*saveData && !*saveNotes) return true;
  // Something has changed and is not to be saved: only the other part goes into the file.
  if (*saveData < project.Changed || *saveNotes < project.NotesChanged) return SavePart(project, *saveData, user);
  return FileSave(project, user);
}

}  // namespace quorvex
