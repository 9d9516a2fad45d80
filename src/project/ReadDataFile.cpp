#include "project/ReadDataFile.h"

#include <algorithm>
#include <numeric>

#include "core/Files.h"
#include "core/NumberText.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

// By the last of the first lines, since there may be words at the top.
DelimitedFormat FormatOf(std::string_view text, const LocaleText& locale) {
  constexpr int kLinesLookedAt = 20;
  std::string_view sample;
  for (int i = 0; i < kLinesLookedAt && !text.empty(); ++i)
    if (const std::string_view line = Trim(TakeLine(text)); !line.empty()) sample = line;
  DelimitedFormat format;
  format.DecimalSeparator = locale.DecimalSeparator;
  struct Candidate {
    char Character;
    DelimiterMask Mask;
  };
  std::vector<Candidate> candidates = {
      {'\t', kTabDelimiter}, {';', kSemicolonDelimiter}, {',', kCommaDelimiter}, {' ', kSpaceDelimiter}};
  if (locale.DecimalSeparator == ',') std::swap(candidates[2], candidates[3]);
  for (const Candidate& candidate : candidates) {
    if (sample.find(candidate.Character) == std::string_view::npos) continue;
    format.Delimiters = candidate.Mask;
    format.IgnoreConsecutive = candidate.Mask == kSpaceDelimiter;
    break;
  }
  return format;
}

// The texts of row 1 where all of it is texts.
std::vector<std::string> HeaderRow(const GridCells& cells) {
  std::vector<std::string> headers;
  for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
    if (!GridCells::IsText(cells.Cell(1, col))) return {};
    headers.push_back(cells.GridCellText(1, col));
  }
  return headers;
}

}  // namespace

Result<DataFile> ReadDataFile(const std::string& fileName, const LocaleText& locale) {
  MappedFile file;
  if (const int error = file.Open(fileName))
    return Failure{"Error importing data from '" + fileName + "'. " + FileErrorText(error)};
  DelimitedFormat format = FormatOf(file.Text(), locale);
  DataFile data;
  data.Cells = ParseDelimitedLines(file.Text(), format).Cells;
  data.Headers = HeaderRow(data.Cells);
  if (!data.Headers.empty()) {
    format.FirstLine = 2;
    data.Cells = ParseDelimitedLines(file.Text(), format).Cells;
  }
  if (data.Cells.GridLastRow() == 0) return Failure{"Error importing data from '" + fileName + "'. It holds no data."};
  return data;
}

std::size_t TakeData(Project& project, DataFile data) {
  const std::size_t room = project.Sheet.ColumnCount(), columns = data.Cells.GridLastCol();
  std::vector<std::size_t> kept(std::min(room, columns));
  std::iota(kept.begin(), kept.end(), std::size_t{1});
  data.Cells.MoveColumns(kept);
  project.Sheet.Cells = std::move(data.Cells);
  for (std::size_t col = 0; col < std::min(room, data.Headers.size()); ++col)
    project.Sheet.Headers[col] = data.Headers[col];
  project.Changed = true;
  return columns - kept.size();
}

}  // namespace quorvex
