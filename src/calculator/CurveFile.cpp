#include "calculator/CurveFile.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "calculator/Operations.h"
#include "core/Files.h"
#include "import/ReadPoints.h"

namespace quorvex {

std::string EntryText(const StackEntry& entry) {
  if (const auto* number = std::get_if<Numberclass>(&entry)) return ShortestNumber(number->Value()).append(NL);
  const SeriesTable table = std::get<PlotSeries>(entry).CopyDataTo();
  std::string text;
  for (std::size_t i = 0; i < table.X.size(); ++i)
    text.append(ShortestNumber(table.X[i]) + '\t' + ShortestNumber(table.Y[i])).append(NL);
  return text;
}

Result<StackEntry> ReadEntry(const std::string& fileName, const LocaleText& locale) {
  const Failure noData{"Error importing data from '" + fileName + "'."};
  WholeFile file;
  if (file.Read(fileName) != 0) return noData;
  std::string_view rest = file.Text();
  const std::string_view line = TakeLine(rest);
  const auto point = NumericText(line), local = NumericText(line, locale.DecimalSeparator);
  if (rest.empty() && (point || local)) return StackEntry(Numberclass(point ? *point : *local, locale));
  std::vector<std::vector<double>> points = ReadPoints(file.Text(), 1, locale).Columns;
  if (points.empty()) return noData;
  const std::string name = std::filesystem::path(fileName).filename().string();
  return StackEntry(NewCurve(std::move(points[0]), std::move(points[1]), name));
}

}  // namespace quorvex
