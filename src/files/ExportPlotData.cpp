#include "files/ExportPlotData.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/SaveFile.h"

namespace quorvex {
namespace {

constexpr const char* kNoPoint = "\"\"";  // also a cell where delimiters in a row count as one

// Where a row of the table stands: the independent variables, and how many points of a series were there before it.
struct Place {
  std::vector<double> X;
  std::size_t Repeated = 0;
  auto operator<=>(const Place&) const = default;
};
using Rows = std::map<Place, std::vector<std::optional<double>>>;

Rows RowsOf(const PlotPage& plot) {
  const std::size_t variables = plot.Axes().size() - 1;
  Rows rows;
  for (std::size_t column = 0; column < plot.PlotData.size(); ++column) {
    const PlotSeries& series = plot.PlotData[column];
    std::vector<SeriesTable> tables;
    for (std::size_t variable = 1; variable <= variables; ++variable)
      tables.push_back(series.CopyDataTo(static_cast<int>(variable)));
    std::map<std::vector<double>, std::size_t> met;
    for (std::size_t point = 0; point < tables[0].Y.size(); ++point) {
      Place place;
      for (const SeriesTable& table : tables) place.X.push_back(table.X[point]);
      place.Repeated = met[place.X]++;
      auto& row = rows[place];
      row.resize(plot.PlotData.size());
      row[column] = tables[0].Y[point];
    }
  }
  return rows;
}

std::string Quoted(std::string text) {
  std::ranges::replace(text, '"', '\'');
  return '"' + text + '"';
}

}  // namespace

std::string PlotDataText(const PlotPage& plot, ExportDelimiter delimiter) {
  const std::vector<const PlotAxis*> axes = plot.Axes();
  std::string text;
  const auto add = [&](const std::string& cell) {
    if (!text.empty() && !text.ends_with(NL)) text += static_cast<char>(delimiter);
    text += cell;
  };
  const auto number = [&](double value) { return LocalizeExpression(ShortestNumber(value), plot.Locale); };
  for (std::size_t axis = 0; axis + 1 < axes.size(); ++axis) add(Quoted(axes[axis]->AxisTitle));
  for (const PlotSeries& series : plot.PlotData) add(Quoted(series.Style().LegendText));
  text += NL;
  for (const auto& [place, values] : RowsOf(plot)) {
    for (const double x : place.X) add(number(x));
    for (const std::optional<double>& value : values) add(value ? number(*value) : kNoPoint);
    text += NL;
  }
  return text;
}

bool ExportPlotData(const PlotPage& plot, ExportDelimiter delimiter, Prompter& user) {
  // Only a comma can be both.
  if (plot.Locale.DecimalSeparator == static_cast<char>(delimiter)) {
    user.Refuse(
        "The system specified decimal seperator is a comma. Please choose another character for the delimiter when "
        "exporting this file.");
    return false;
  }
  const auto file = user.ChooseFileToSave("Export", "Data files (*.dat)", "dat");
  if (!file) return false;
  const int error = SaveFile(*file, PlotDataText(plot, delimiter), FileCare::Answer);
  if (error != 0) user.Refuse("Error writing to '" + *file + "'. " + FileErrorText(error));
  return error == 0;
}

}  // namespace quorvex
