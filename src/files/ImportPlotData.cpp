#include "files/ImportPlotData.h"

#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "core/Files.h"
#include "files/DetectFileType.h"
#include "files/FileVersion.h"
#include "files/PlotFile.h"
#include "files/ProjectFile.h"
#include "files/RawData.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "solve/GatherData.h"
#include "solve/SolvedList.h"

namespace quorvex {
namespace {

using SeriesList = std::vector<PlotSeries>;

// Why there is nothing to draw of the solutions of an older project.
constexpr const char* kOldSolutions =
    "Due to the solver enhancements in the software, the plot information cannot be read.";

// Why a file of that kind, with more or fewer variables than the plot, is refused.
Failure OtherVariables(const std::string& fileName, const std::string& kind, std::size_t variables,
                       std::size_t wanted) {
  const auto dimensions = [](std::size_t of) { return of == 1 ? std::string("2D") : std::string("3D"); };
  return {"'" + fileName + "' is a " + dimensions(variables) + " " + kind + " file which cannot be imported into a " +
          dimensions(wanted) + " plot."};
}

Result<SeriesList> SeriesOfPlot(const std::string& fileName, std::size_t variables, const Settings& settings,
                                const LocaleText& locale) {
  Result<std::unique_ptr<PlotPage>> plot = OpenPlotFile(fileName, settings, locale);
  if (!plot) return Failure{plot.error()};
  const std::size_t own = (*plot)->Axes().size() - 1;
  if (own != variables) return OtherVariables(fileName, "plot", own, variables);
  return std::move((*plot)->PlotData);
}

// The points, then the solutions that have a value throughout them; `leftOut` gets the names of the others.
Result<SeriesList> SeriesOfProject(const std::string& fileName, std::size_t variables, const Settings& settings,
                                   const LocaleText& locale, std::vector<std::string>& leftOut) {
  Result<Project> project = ReadProject(fileName, locale);
  if (!project) return Failure{project.error()};
  const std::size_t own = project->Sheet.IndependentVariables;
  if (own != variables && (own == 1 || variables == 1)) return OtherVariables(fileName, "project", own, variables);
  if (own > kMostPlottedVariables) return Failure{kNoPlotOfManyVariables};
  const SolveData points = GatherData(project->Sheet, PointOrder::OfSheet).Points;
  if (points.N() == 0) return SeriesList();

  const std::vector<SolvedItem> solutions = SolvedItems(*project, 0);
  const std::vector<std::string> titles = AxisTitles(project->Sheet);
  if (variables == 1) {
    auto plot = SolutionsPlot(solutions, points, titles[0], titles[1], settings, locale, leftOut);
    if (!plot) return Failure{plot.error()};
    return std::move(plot->PlotData);
  }
  auto plot = ScatterPlot(points, titles, settings, locale);
  if (!plot) return Failure{plot.error()};
  for (const SolvedItem& solution : solutions) {
    auto surface = SurfacePlot(solution.Model->CopyTo(), solution.Name(), points, titles, settings, locale);
    if (surface)
      plot->PlotData.push_back(std::move(surface->PlotData.back()));
    else
      leftOut.push_back(solution.Name());
  }
  return std::move(plot->PlotData);
}

Result<SeriesList> SeriesOfData(const std::string& fileName, std::size_t variables, const Settings& settings,
                                const LocaleText& locale) {
  WholeFile file;
  if (file.Read(fileName) != 0) return SeriesList();
  Result<PlotSeries> series = ReadRawData(file.Text(), fileName, variables, settings, locale);
  SeriesList list;
  if (series) list.push_back(std::move(*series));
  return list;
}

Result<SeriesList> SeriesOfFile(const std::string& fileName, std::size_t variables, const Settings& settings,
                                const LocaleText& locale, std::vector<std::string>& leftOut) {
  const std::optional<FileType> type = DetectFileType(fileName);
  if (!type || type->Kind == "other") return SeriesOfData(fileName, variables, settings, locale);
  if (type->Version == kAncientVersion || (type->Kind == "plot" && VersionNamed(type->Version) != 0))
    return SeriesOfPlot(fileName, variables, settings, locale);
  const int version = VersionNamed(type->Version);
  if (version != 0 && version < kOldestProject) return Failure{kOldSolutions};
  if (version != 0) return SeriesOfProject(fileName, variables, settings, locale, leftOut);
  return Failure{"'" + fileName + "' is not compatible with Quorvex version " +
                 std::string(kFileVersion.substr(kVersionPrefix.size()))};
}

}  // namespace

bool ImportPlotData(PlotPage& plot, const std::string& fileName, const Settings& settings, Prompter& user) {
  std::vector<std::string> leftOut;
  Result<SeriesList> list = SeriesOfFile(fileName, plot.Axes().size() - 1, settings, plot.Locale, leftOut);
  if (!list) {
    user.Refuse(list.error());
    return false;
  }
  if (list->empty()) {
    user.Refuse(NoDataIn(fileName).Message +
                " Either there is no data available in this file, or the file is corrupt.");
    return false;
  }
  std::move(list->begin(), list->end(), std::back_inserter(plot.PlotData));
  if (!leftOut.empty()) user.Inform(NoCurveText(leftOut));
  return true;
}

}  // namespace quorvex
