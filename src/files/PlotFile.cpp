#include "files/PlotFile.h"

#include <optional>
#include <utility>

#include "core/Files.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "files/BandRecord.h"
#include "files/FileVersion.h"
#include "files/PlotSeriesRecord.h"
#include "files/PlotSettingsRecord.h"
#include "files/RawData.h"
#include "plot/PictureMessages.h"

namespace quorvex {
namespace {

constexpr const char* kData = "DATA";
constexpr std::string_view kBeginHeader = "B_HEADER", kPlotSuffix = " Plot";
constexpr std::string_view kFramePlot = "PlotType: 2D", kBoxPlot = "PlotType: 3D";

std::size_t VariablesOf(const PlotPage& plot) { return plot.Axes().size() - 1; }

template <typename Plot>
std::string TextOf(const Plot& plot, std::string_view type) {
  RecordWriter io(plot.Locale);
  io.Mark(kBeginHeader);
  io(std::string(kFileVersion) + std::string(kPlotSuffix));
  io.Mark(type);
  io.Mark("E_HEADER");
  WritePlotSettings(io, plot);
  Section(io, kData, [&] {
    for (const PlotSeries& series : plot.PlotData) WritePlotSeries(io, series, VariablesOf(plot));
  });
  WriteBands(io, plot);
  return io.Text();
}

// All behind the header. Nothing where the file is not what it says.
template <typename Plot>
std::unique_ptr<PlotPage> ReadPlot(RecordReader& io, const Settings& settings, const LocaleText& locale) {
  auto plot = std::make_unique<Plot>(settings, locale);
  ReadPlotSettings(io, *plot);
  Section(io, kData, [&] {
    while (io.GoesOn(kData))
      if (std::optional<PlotSeries> series = ReadPlotSeries(io, VariablesOf(*plot), locale))
        plot->PlotData.push_back(std::move(*series));
  });
  if (io.Good() && !io.AtEnd() && io.Begins(kBands)) ReadBands(io, *plot);
  if (!io.Good()) return nullptr;
  return plot;
}

// Why a plot of an older version is refused.
constexpr const char* kOldPlot =
    "This is a plot file from a version of Quorvex older then version 6.0.\r\n"
    "Due to the solver enhancements in the software, the plot file cannot be read.\r\n"
    "Please re-solve the project to create plots from this solution.";
constexpr const char* kAncientPlot =
    "Due to the solver enhancements in the software, the plot file cannot be read.  Please re-solve the project to "
    "create plots from this solution.";

// The version that a text such as "Quorvex:  Version 9.0 Plot" names; 0 where it names none.
int PlotVersion(std::string_view text) {
  if (!text.ends_with(kPlotSuffix)) return 0;
  return VersionNamed(text.substr(0, text.size() - kPlotSuffix.size()));
}

Failure Unreadable(const std::string& fileName) {
  return {"Error reading plot '" + fileName + "'." + std::string(NL) +
          "The file is incompatible or appears corrupted."};
}

}  // namespace

std::string PlotFileText(const PlotPage& plot) {
  if (const auto* frame = dynamic_cast<const PlotClass*>(&plot)) return TextOf(*frame, kFramePlot);
  return TextOf(dynamic_cast<const PlotClass3D&>(plot), kBoxPlot);
}

bool SavePlot(const PlotPage& plot, const std::string& fileName, Prompter& user) {
  if (!CanBe("saved", plot, user)) return false;
  const int error = SaveFile(fileName, PlotFileText(plot));
  if (error != 0) user.Refuse("Error saving plot to '" + fileName + "'. " + FileErrorText(error));
  return error == 0;
}

Result<std::unique_ptr<PlotPage>> ParsePlotFile(std::string_view bytes, const std::string& fileName,
                                                const Settings& settings, const LocaleText& locale) {
  FieldReader in(DecodeText(bytes));
  if (in.AtEnd() || !in.Sees(kBeginHeader)) return RawDataPlot(bytes, fileName, settings, locale);
  in.Next();
  const std::string version(Trim(in.Text())), type(Trim(in.Text()));
  if (!in.Good()) return Unreadable(fileName);
  if (version == kAncientVersion) return Failure{kAncientPlot};
  const int number = PlotVersion(version);
  if (number == 0) return NoDataIn(fileName);
  if (number < kOldestPlot) return Failure{kOldPlot};

  RecordReader io(in, number, locale);
  io.Mark("E_HEADER");
  std::unique_ptr<PlotPage> plot;
  if (type == kFramePlot)
    plot = ReadPlot<PlotClass>(io, settings, locale);
  else if (type == kBoxPlot)
    plot = ReadPlot<PlotClass3D>(io, settings, locale);
  if (plot == nullptr) return Unreadable(fileName);
  return plot;
}

Result<std::unique_ptr<PlotPage>> OpenPlotFile(const std::string& fileName, const Settings& settings,
                                               const LocaleText& locale) {
  WholeFile file;
  if (file.Read(fileName) != 0) return Unreadable(fileName);
  return ParsePlotFile(file.Text(), fileName, settings, locale);
}

}  // namespace quorvex
