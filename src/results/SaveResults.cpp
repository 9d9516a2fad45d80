#include "results/SaveResults.h"

#include "core/NumberText.h"
#include "core/SaveFile.h"

namespace quorvex {
namespace {

bool Write(const std::string& file, const std::string& text, Prompter& user) {
  const int error = SaveFile(file, text, FileCare::Answer);
  if (error != 0) user.Refuse("Error writing to '" + file + "'. " + FileErrorText(error));
  return error == 0;
}

}  // namespace

bool SaveEvaluation(const std::string& text, Prompter& user) {
  const auto file = user.ChooseFileToSave("Save As", "Text files (*.txt)", "txt", "Eval");
  return file && Write(*file, text, user);
}

bool SaveTable(const TextTable& table, const std::string& name, Prompter& user) {
  const auto file = user.ChooseFileToSave("Save As", "Text files (*.txt);;HTML files (*.html *.htm)", "txt", name);
  if (!file) return false;
  const std::string lower = ToLower(*file);
  const bool html = lower.ends_with(".html") || lower.ends_with(".htm");
  return Write(*file, html ? Html(table) : TabSeparated(table), user);
}

}  // namespace quorvex
