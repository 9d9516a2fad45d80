#include "macro/ParameterFile.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"

namespace quorvex {
namespace {

std::vector<std::string> ColumnNames(std::string_view header) {
  std::vector<std::string> names;
  for (;;) {
    const auto comma = header.find(',');
    std::string name(Trim(header.substr(0, comma)));
    std::erase(name, '"');
    names.push_back(std::move(name));
    if (comma == std::string_view::npos) return names;
    header.remove_prefix(comma + 1);
  }
}

// Takes the next field off the front of `rest`, with the comma or line end behind it. False where a quote stays open.
bool TakeField(std::string_view& rest, std::string& field) {
  constexpr std::string_view kEnds = ",\r\n";
  field.clear();
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
  if (rest.starts_with('"')) {
    for (;;) {
      rest.remove_prefix(1);
      const auto quote = rest.find('"');
      if (quote == std::string_view::npos) return false;
      field += rest.substr(0, quote);
      rest.remove_prefix(quote + 1);
      if (!rest.starts_with('"')) break;
      // Two quotes within a quoted field stand for one.
      field += '"';
    }
    // What stands between the closing quote and the comma is no part of the field.
    rest.remove_prefix(std::min(rest.find_first_of(kEnds), rest.size()));
  } else {
    const auto end = std::min(rest.find_first_of(kEnds), rest.size());
    field = Trim(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  rest.remove_prefix(rest.starts_with("\r\n") ? 2 : rest.empty() ? 0 : 1);
  return true;
}

}  // namespace

Result<ParameterTable> ReadParameterFile(const std::string& name) {
  WholeFile file;
  if (const int error = file.Read(name); error != 0) return Failure{FileErrorText(error)};
  std::string text = DecodeText(file.Text());
  // What ends the file ends its last field, which may be empty.
  text.erase(text.find_last_not_of(" \t\r\n") + 1);
  text += '\n';
  std::string_view rest = text, header;
  while (header.empty() && !rest.empty()) header = Trim(TakeLine(rest));
  if (header.empty()) return Failure{"The file is empty."};

  ParameterTable table;
  table.Names = ColumnNames(header);
  std::string field;
  std::vector<std::string> row;
  // Blank lines between and behind the rows hold no field.
  const auto skipBlankLines = [&] {
    while (row.empty() && !rest.empty() && (rest[0] == '\r' || rest[0] == '\n')) rest.remove_prefix(1);
  };
  for (skipBlankLines(); !rest.empty(); skipBlankLines()) {
    const char* const start = rest.data();
    if (!TakeField(rest, field)) {
      const auto line = 1 + std::count(std::as_const(text).data(), start, '\n');
      return Failure{"Line " + std::to_string(line) + ": a quote is not closed."};
    }
    row.push_back(std::move(field));
    if (row.size() < table.Names.size()) continue;
    table.Rows.push_back(std::move(row));
    row.clear();
  }
  if (!row.empty())
    return Failure{"The last row has " + std::to_string(row.size()) + " of " + std::to_string(table.Names.size()) +
                   " values."};
  if (table.Rows.empty()) return Failure{"The file has no row below its names."};
  return table;
}

}  // namespace quorvex
