#include "sheet/DatabaseImport.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "core/NumberText.h"
#include "sheet/BlankMissingMarker.h"
#include "sheet/CopyCells.h"
#include "sheet/ImportFailure.h"
#include "sheet/OdbcSource.h"

namespace quorvex {
namespace {

// A value as it stands in a connect string: in braces where it holds a character that means something there, with a
// closing brace doubled.
std::string Braced(std::string_view value) {
  if (value.find_first_of("[]{}(),;?*=!@ ") == std::string_view::npos) return std::string(value);
  std::string braced = "{";
  for (const char c : value) braced += c == '}' ? "}}" : std::string(1, c);
  return braced + '}';
}

// Takes the value at the start of `rest`, with the semicolon behind it.
std::string TakeValue(std::string_view& rest) {
  std::string value;
  std::size_t at = 0;
  if (rest.starts_with('{')) {
    for (at = 1; at < rest.size(); value += rest[at++])
      if (rest[at] == '}' && (++at == rest.size() || rest[at] != '}')) break;
  }
  const std::size_t end = std::min(rest.find(';', at), rest.size());
  value += Trim(rest.substr(at, end - at));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return value;
}

}  // namespace

std::string ConnectString(std::string_view source, std::string_view user, std::string_view password) {
  std::string text(Trim(source));
  const auto append = [&](const char* key, std::string_view value) {
    if (value.empty()) return;
    if (!text.empty() && !text.ends_with(';')) text += ';';
    text += key + Braced(value);
  };
  append("Uid=", user);
  append("Pwd=", password);
  return text;
}

std::string SourceName(std::string_view connectString) {
  constexpr std::string_view kTelling[] = {"DSN", "Database", "Server", "Driver"};
  std::array<std::string, std::size(kTelling)> values;
  while (!connectString.empty()) {
    const std::size_t equals = std::min(connectString.find('='), connectString.size() - 1);
    const std::string_view key = Trim(connectString.substr(0, equals));
    connectString.remove_prefix(equals + 1);
    const std::string value = TakeValue(connectString);
    for (std::size_t i = 0; i < values.size(); ++i)
      if (EqualNoCase(key, kTelling[i]) && values[i].empty()) values[i] = value;
  }
  for (const std::string& value : values)
    if (!value.empty()) return value;
  return "database";
}

Result<std::vector<std::string>> DatabaseImport::Tables() const {
  Result<std::vector<std::string>> tables = ListTables(connectString_);
  if (!tables) return ImportFailure(Source, tables.error());
  return tables;
}

Result<GridCells> DatabaseImport::ReadRows(std::size_t first, std::size_t count, const std::string& marker) {
  Result<GridCells> rows = QueryDatabase(connectString_, Query(), kOdbcLibrary, first - 1 + count);
  if (!rows) return ImportFailure(Source, rows.error());
  if (!marker.empty()) BlankMissingMarker(*rows, marker);
  if (first == 1) return rows;
  GridCells wanted;
  if (const std::size_t last = rows->GridLastRow(); last >= first)
    CopyCells(*rows, {first, 1, last, rows->GridLastCol()}, wanted, 1, 1);
  return wanted;
}

std::string DatabaseImport::IncompleteQuestion() const {
  return "You did not assign columns to all variables, so there will be no data imported to them. Do you want to "
         "continue?";
}

}  // namespace quorvex
