#include "batch/MacroFiles.h"

#include <filesystem>
#include <system_error>

namespace quorvex {

// By which a file that exists is known, whatever name leads to it. What it is on the disk is no such name: a file that
// is replaced is another one, and the next may get its place.
std::string MacroFiles::FullName(const std::string& file) {
  std::error_code error;
  const std::filesystem::path name = std::filesystem::canonical(Place(file), error);
  return error ? "" : name.string();
}

void MacroFiles::NoteInput(const std::string& name, const char* what) {
  if (const auto file = IdentityOfFile(ResolvePath(name))) inputs_.emplace(*file, what);
}

void MacroFiles::NoteWritten(Writing kind, const std::string& file) {
  if (const std::string name = watchesKinds_ ? FullName(file) : ""; !name.empty()) written_[name] = kind;
}

std::optional<std::string> MacroFiles::RefuseInput(const std::string& role, const std::string& file,
                                                   const std::string& path) const {
  const auto identity = IdentityOfFile(path);
  const auto input = identity ? inputs_.find(*identity) : inputs_.end();
  if (input == inputs_.end()) return std::nullopt;
  return "The " + role + " '" + file + "' is the " + input->second + " of this macro and is not overwritten.";
}

std::optional<std::string> MacroFiles::RefuseOther(Writing kind, const std::string& file) {
  const auto other = written_.empty() ? written_.end() : written_.find(FullName(file));
  if (other == written_.end() || other->second == kind) return std::nullopt;
  return kind == Writing::Plot ? "The plot '" + file + "' is the output file of this macro and is not overwritten."
                               : "The output '" + file + "' is a plot of this macro and is not overwritten.";
}

}  // namespace quorvex
