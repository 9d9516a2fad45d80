#include "app/OpenFile.h"

#include <filesystem>
#include <sstream>

#include "core/NumberText.h"
#include "files/DetectFileType.h"
#include "import/DataImport.h"

namespace quorvex {
namespace {

// A pipe or a device may have no end, and a pipe that nobody writes to none yet.
bool MayBeEndless(const std::string& fileName) {
  std::error_code failure;
  const std::filesystem::file_status file = std::filesystem::status(fileName, failure);
  return std::filesystem::exists(file) && !std::filesystem::is_regular_file(file);
}

bool HasNameOfData(const std::string& fileName) {
  std::istringstream patterns(kDataFiles);
  for (std::string pattern; patterns >> pattern;)
    if (ToLower(fileName).ends_with(pattern.substr(1))) return true;
  return ToLower(fileName).ends_with(".xls");  // no such file is read, and the import tells what to save it as
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
  if (by == NamedBy::User || HasNameOfData(fileName)) return OpenAs::Data;
  user.Refuse("The command line argument file name '" + fileName +
              "' does not have a Quorvex extension. Please specify a new project type, then the file can be "
              "imported.");
  return OpenAs::DataOfAKind;
}

}  // namespace quorvex
