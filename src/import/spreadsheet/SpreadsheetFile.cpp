#include "import/spreadsheet/SpreadsheetFile.h"

#include <optional>
#include <string_view>
#include <utility>

#include "core/Files.h"
#include "import/ImportFailure.h"
#include "import/spreadsheet/SpreadsheetFormats.h"

namespace quorvex {
namespace {

SpreadsheetFault ReadContent(std::string_view bytes, const std::optional<std::string>& sheet,
                             SpreadsheetContent& content, const LongWork& work) {
  // Office Open XML behind a password is an encrypted package in a compound file, the format before it.
  constexpr std::string_view kCompoundFile = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
  constexpr std::string_view kEncryptedPackage{"E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e", 31};
  if (bytes.starts_with(kCompoundFile) && bytes.find(kEncryptedPackage) != std::string_view::npos)
    return SpreadsheetFault::Protected;
  SpreadsheetArchive archive(bytes, work);
  if (archive.Encrypted()) return SpreadsheetFault::Protected;
  const SpreadsheetFault fault = archive.Has("[Content_Types].xml") ? ReadOpenXml(archive, sheet, content)
                                                                    : ReadOpenDocument(archive, sheet, content);
  return fault == SpreadsheetFault::None && content.Names.empty() ? SpreadsheetFault::Damaged : fault;
}

Result<SpreadsheetContent> ReadFile(const std::string& file, const std::optional<std::string>& sheet,
                                    const LongWork& work) {
  WholeFile bytes;
  if (const int error = bytes.Read(file); error != 0) return ImportFailure(file, FileErrorText(error));
  SpreadsheetContent content;
  switch (ReadContent(bytes.Text(), sheet, content, work)) {
    case SpreadsheetFault::Damaged:
      return ImportFailure(file, "The file is damaged, or it is no spreadsheet of type .ods or .xlsx.");
    case SpreadsheetFault::Protected:
      return ImportFailure(file, "The file is protected by a password.");
    case SpreadsheetFault::Cancelled:
      return ImportFailure(file, "The import was cancelled.");
    case SpreadsheetFault::TooLarge:
      return ImportFailure(file, "The spreadsheet is too large.");
    case SpreadsheetFault::None:
      break;
  }
  return content;
}

}  // namespace

Result<std::vector<std::string>> ListSheets(const std::string& file, const LongWork& work) {
  Result<SpreadsheetContent> content = ReadFile(file, std::nullopt, work);
  if (!content) return Failure{content.error()};
  return std::move(content->Names);
}

Result<GridCells> ReadSheet(const std::string& file, const std::string& sheet, const LongWork& work) {
  Result<SpreadsheetContent> content = ReadFile(file, sheet, work);
  if (!content) return Failure{content.error()};
  if (!content->Found) return ImportFailure(file, "There is no sheet '" + sheet + "'.");
  content->Sheet.FindDatePatterns();
  return std::move(content->Sheet.Cells);
}

}  // namespace quorvex
