#include "batch/MacroFiles.h"

#include <filesystem>
#include <system_error>

namespace quorvex {

// What it is on the disk is no such name: a file that is replaced is another one, and the next may get its place.
std::string MacroFiles::FullName(const std::string& file) {
  const std::string place = Place(file);
  std::error_code error;
  if (std::filesystem::is_symlink(place, error)) {
    const std::filesystem::path name = std::filesystem::canonical(place, error);
    if (!error) return name.string();
  }
  const auto slash = place.rfind('/') + 1;  // 0 without a folder
  const std::string folder = slash == 0 ? "." : place.substr(0, slash);
  if (folder != folder_) {
    folder_ = folder;
    fullFolder_ = std::filesystem::canonical(folder, error).string();
    if (error) fullFolder_.clear();
  }
  return fullFolder_.empty() ? "" : fullFolder_ + '/' + place.substr(slash);
}

void MacroFiles::NoteInput(const std::string& name, const char* what) {
  if (const auto file = IdentityOfFile(ResolvePath(name, listings_))) inputs_.emplace(*file, what);
}

void MacroFiles::NoteWritten(Writing kind, const std::string& file) {
  if (const std::string name = watchesKinds_ ? FullName(file) : ""; !name.empty()) written_[name] = kind;
}

std::optional<std::string> MacroFiles::RefuseInput(const std::string& role, const std::string& file,
                                                   const std::string& path) {
  const auto refused = [&](const char* what) {
    return "The " + role + " '" + file + "' is the " + what + " of this macro and is not overwritten.";
  };
  const auto identity = IdentityOfFile(path);
  if (const auto input = identity ? inputs_.find(*identity) : inputs_.end(); input != inputs_.end())
    return refused(input->second);
  if (const auto input = toCome_.empty() ? toCome_.end() : toCome_.find(FullName(path)); input != toCome_.end())
    return refused(input->second);
  return std::nullopt;
}

std::optional<std::string> MacroFiles::RefuseOther(Writing kind, const std::string& file) {
  const auto other = written_.empty() ? written_.end() : written_.find(FullName(file));
  if (other == written_.end() || other->second == kind) return std::nullopt;
  constexpr const char* kRoles[] = {"output", "plot", "code", "report"};
  constexpr const char* kWhats[] = {"the output file", "a plot", "the code", "a report"};
  return std::string("The ") + kRoles[static_cast<std::size_t>(kind)] + " '" + file + "' is " +
         kWhats[static_cast<std::size_t>(other->second)] + " of this macro and is not overwritten.";
}

}  // namespace quorvex
