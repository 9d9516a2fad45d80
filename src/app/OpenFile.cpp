#include "app/OpenFile.h"

#include <filesystem>

#include "files/DetectFileType.h"

namespace quorvex {
namespace {

// A pipe or a device may have no end, and a pipe that nobody writes to none yet.
bool MayBeEndless(const std::string& fileName) {
  std::error_code failure;
  const std::filesystem::file_status file = std::filesystem::status(fileName, failure);
  return std::filesystem::exists(file) && !std::filesystem::is_regular_file(file);
}

}  // namespace

OpenAs HowToOpen(const std::string& fileName, NamedBy by, Prompter& user) {
  const std::optional<FileType> type = MayBeEndless(fileName) ? std::nullopt : DetectFileType(fileName);
  if (!type) {
    user.Refuse("Could not obtain file description for '" + fileName + "'.");
    return OpenAs::Unknown;
  }
  if (type->Kind == "plot") return OpenAs::Plot;
  if (type->Kind == "regression") return OpenAs::Project;
  if (by == NamedBy::CommandLine)
    user.Refuse("The command line argument file name '" + fileName +
                "' does not have a Quorvex extension. Please specify a new project type, then the file can be "
                "imported.");
  return OpenAs::Data;
}

}  // namespace quorvex
