#include "files/FileSave.h"

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
  project.Changed = project.NotesChanged = false;
  return true;
}

}  // namespace

bool IsUntitled(const Project& project) { return project.FileName.find("Untitled") != std::string::npos; }

bool FileSave(Project& project, Prompter& user) {
  return IsUntitled(project) ? FileSaveAs(project, user) : SaveTo(project.FileName, project, user);
}

bool FileSaveAs(Project& project, Prompter& user) {
  const auto name = user.ChooseFileToSave("Save As", "Project files (*.qvx)", "qvx");
  return name && SaveTo(*name, project, user);
}

bool MayClose(Project& project, Prompter& user) {
  if (!project.Changed && !project.NotesChanged) return true;
  const auto answer = user.AskOrCancel(project.Changed ? "Save changes to project '" + project.FileName + "'?"
                                                       : "The notes for project '" + project.FileName +
                                                             "' have changed. Save Changes?");
  return answer && (!*answer || FileSave(project, user));
}

}  // namespace quorvex
