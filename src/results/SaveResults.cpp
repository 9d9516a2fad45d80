#include "results/SaveResults.h"

#include <optional>

#include "core/LongWork.h"
#include "core/SaveFile.h"
#include "results/OpenDocumentTable.h"
#include "results/TableForms.h"

namespace quorvex {
namespace {

bool Told(int error, const std::string& file, Prompter& user) {
  if (error != 0) user.Refuse("Error writing to '" + file + "'. " + FileErrorText(error));
  return error == 0;
}

std::optional<std::string> ChooseTableFile(const TextTable& table, const std::string& name, Prompter& user,
                                           const std::string& title) {
  auto file = user.ChooseFileToSave(title, TableFilters(), "txt", name);
  if (!file || FormOfFile(*file).Write != WriteOpenDocument) return file;
  if (table.RowCount() * table.ColumnCount() <= kMostSpreadsheetCells) return file;
  user.Refuse("The table has too many cells for a spreadsheet. Please save it as comma-separated values.");
  return std::nullopt;
}

// Line by line; what was there stays where the work is cancelled. Returns 0 or the file error's number.
int WriteTable(const TextTable& table, const std::string& file, const LongWork& work) {
  ReplacementFile replacement(FileCare::Answer);
  if (const int error = replacement.Create(file)) return error;
  std::size_t lines = 0;
  FormOfFile(file).Write(table, [&](std::string_view line) {
    replacement.Text().Write(line);
    work.ShowProgress(++lines, table.RowCount() + 1);
    return !work.Cancelled();
  });
  return work.Cancelled() ? 0 : replacement.Commit();
}

}  // namespace

bool SaveEvaluation(const std::string& text, Prompter& user) {
  const auto file = user.ChooseFileToSave("Save As", "Text files (*.txt)", "txt", "Eval");
  return file && Told(SaveFile(*file, text, FileCare::Answer), *file, user);
}

bool SaveTable(const TextTable& table, const std::string& name, Prompter& user, const std::string& title) {
  const auto file = ChooseTableFile(table, name, user, title);
  return file && Told(WriteTable(table, *file, LongWork()), *file, user);
}

bool SaveTable(std::shared_ptr<const TextTable> table, const std::string& name, Prompter& user,
               const std::string& title) {
  const auto file = ChooseTableFile(*table, name, user, title);
  if (!file) return false;
  const auto error = Await<int>(&user, "Writing '" + *file + "'",
                                [table, name = *file](const LongWork& work) { return WriteTable(*table, name, work); });
  return error && Told(*error, *file, user);
}

}  // namespace quorvex
