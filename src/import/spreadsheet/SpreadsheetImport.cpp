#include "import/spreadsheet/SpreadsheetImport.h"

#include <algorithm>
#include <utility>

#include "core/NumberText.h"
#include "import/BlankMissingMarker.h"
#include "import/TextImport.h"
#include "import/spreadsheet/SpreadsheetFile.h"

namespace quorvex {

Result<std::unique_ptr<SpreadsheetImport>> SpreadsheetImport::Open(const std::string& file, const DataSheet& sheet,
                                                                   const LongWork& work) {
  Result<std::vector<std::string>> sheets = ListSheets(file, work);
  if (!sheets) return Failure{sheets.error()};
  Result<GridCells> first = ReadSheet(file, sheets->front(), work);
  if (!first) return Failure{first.error()};
  std::unique_ptr<SpreadsheetImport> import(new SpreadsheetImport(file, sheet));
  import->sheets_ = std::move(*sheets);
  import->chosen_ = import->sheets_.front();
  import->cells_ = std::make_shared<const GridCells>(std::move(*first));
  return import;
}

bool SpreadsheetImport::ChooseSheet(const std::string& name, Prompter& user) {
  const auto read = [file = Source, name](const LongWork& work) { return ReadSheet(file, name, work); };
  std::optional<Result<GridCells>> cells = Await<Result<GridCells>>(&user, ReadingText(), read);
  if (!cells) return false;
  if (!*cells) {
    user.Refuse(cells->error());
    return false;
  }
  cells_ = std::make_shared<const GridCells>(std::move(**cells));
  chosen_ = name;
  return true;
}

DecimalCommas SpreadsheetImport::Commas(const LocaleText& locale) const {
  if (locale.DecimalSeparator != '.' || StartRow(locale) > static_cast<double>(kMostSheetRows)) return {};
  return FindDecimalCommas(*cells_, static_cast<std::size_t>(StartRow(locale)), cells_->GridLastRow(),
                           OtherNumbers::Stored);
}

std::optional<DataImport::OtherReading> SpreadsheetImport::Offer(const LocaleText& locale) const {
  return DecimalCommaOffer(Commas(locale).Example);
}

void SpreadsheetImport::TakeOffer(const LocaleText& locale) {
  GridCells read = *cells_;
  ReadDecimalCommas(read, Commas(locale).Columns, 1, read.GridLastRow());
  cells_ = std::make_shared<const GridCells>(std::move(read));
}

SpreadsheetImport::Reading SpreadsheetImport::ReadRows(std::size_t first, std::size_t count,
                                                       const std::string& marker) const {
  return [cells = cells_, first, count, marker, limit = ColumnLimit](const LongWork&) {
    const std::size_t last = std::min(cells->GridLastRow(), first - 1 + count);
    const std::size_t columns = std::min(cells->GridLastCol(), limit);
    if (last < first) return GridCells();
    GridCells rows = cells->CopyRange({first, 1, last, columns});
    rows.DatePatterns = cells->DatePatterns;
    if (!marker.empty()) BlankMissingMarker(rows, marker);
    return rows;
  };
}

Result<std::unique_ptr<DataImport>> OpenImport(const std::string& file, const DataSheet& sheet,
                                               const LocaleText& locale, Prompter* user) {
  using Opened = Result<std::unique_ptr<DataImport>>;
  DataSheet shape(sheet.IndependentVariables, sheet.HasStandardDeviation);
  shape.Headers = sheet.Headers;
  const auto open = [file, shape, locale](const LongWork& work) {
    const auto opened = [](auto import) {
      return import ? Opened(std::move(*import)) : Opened(Failure{import.error()});
    };
    const std::string name = ToLower(file);
    if (name.ends_with(".ods") || name.ends_with(".xlsx")) return opened(SpreadsheetImport::Open(file, shape, work));
    return opened(TextImport::Open(file, shape, locale));
  };
  std::optional<Opened> import = Await<Opened>(user, "Reading '" + file + "'", open);
  return import ? std::move(*import) : Opened(Failure{});
}

std::unique_ptr<DataImport> ImportData(const std::string& file, const SheetEdit& edit) {
  if (!ConfirmOverwrite(edit)) return nullptr;
  Result<std::unique_ptr<DataImport>> import = OpenImport(file, edit.Sheet, edit.Locale, &edit.User);
  if (import) return std::move(*import);
  TellFailure(import.error(), edit.User);
  return nullptr;
}

}  // namespace quorvex
