#include "sheet/SpreadsheetImport.h"

#include <algorithm>
#include <utility>

#include "core/NumberText.h"
#include "sheet/BlankMissingMarker.h"
#include "sheet/SpreadsheetFile.h"
#include "sheet/TextImport.h"

namespace quorvex {

Result<std::unique_ptr<SpreadsheetImport>> SpreadsheetImport::Open(const std::string& file, const DataSheet& sheet) {
  Result<std::vector<std::string>> sheets = ListSheets(file);
  if (!sheets) return Failure{sheets.error()};
  std::unique_ptr<SpreadsheetImport> import(new SpreadsheetImport(file, sheet));
  import->sheets_ = std::move(*sheets);
  if (const std::string failure = import->ChooseSheet(import->sheets_.front()); !failure.empty())
    return Failure{failure};
  return import;
}

std::string SpreadsheetImport::ChooseSheet(const std::string& name) {
  Result<GridCells> cells = ReadSheet(Source, name);
  if (!cells) return cells.error();
  cells_ = std::move(*cells);
  chosen_ = name;
  return "";
}

Result<GridCells> SpreadsheetImport::ReadRows(std::size_t first, std::size_t count, const std::string& marker) {
  const std::size_t last = std::min(cells_.GridLastRow(), first - 1 + count);
  if (last < first) return GridCells();
  GridCells rows = cells_.CopyRange({first, 1, last, cells_.GridLastCol()});
  if (!marker.empty()) BlankMissingMarker(rows, marker);
  return rows;
}

Result<std::unique_ptr<DataImport>> OpenImport(const std::string& file, const DataSheet& sheet,
                                               const LocaleText& locale) {
  using Opened = Result<std::unique_ptr<DataImport>>;
  const auto opened = [](auto import) { return import ? Opened(std::move(*import)) : Opened(Failure{import.error()}); };
  const std::string name = ToLower(file);
  if (name.ends_with(".ods") || name.ends_with(".xlsx")) return opened(SpreadsheetImport::Open(file, sheet));
  return opened(TextImport::Open(file, sheet, locale));
}

std::unique_ptr<DataImport> ImportData(const std::string& file, const SheetEdit& edit) {
  if (!ConfirmOverwrite(edit)) return nullptr;
  Result<std::unique_ptr<DataImport>> import = OpenImport(file, edit.Sheet, edit.Locale);
  if (import) return std::move(*import);
  edit.User.Refuse(import.error());
  return nullptr;
}

}  // namespace quorvex
