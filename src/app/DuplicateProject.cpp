#include "app/DuplicateProject.h"

#include <stdlib.h>

#include <filesystem>

#include "files/ProjectFile.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

// A folder that nobody else reads, gone with all that is in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    path_ = (error ? fs::path("/tmp") : folder) / "quorvex-XXXXXX";
    if (std::string made = path_; mkdtemp(made.data()) != nullptr) path_ = made;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string Path(const char* name) const { return path_ / name; }

 private:
  fs::path path_;
};

}  // namespace

Result<Project> DuplicateProject(const Project& project, const std::string& name) {
  const TemporaryFolder folder;
  const std::string file = folder.Path("duplicate.qvx");
  if (WriteProject(project, file) != 0) return Failure{"Error creating temporary file '" + file + "'."};
  Result<Project> copy = ReadProject(file, project.Locale);
  if (!copy) return copy;
  copy->FileName = name;
  copy->HasFile = false;
  copy->Changed = true;
  return copy;
}

}  // namespace quorvex
