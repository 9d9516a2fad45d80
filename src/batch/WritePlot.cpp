#include "batch/WritePlot.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string_view>
#include <system_error>

#include "core/Files.h"
#include "core/NotingPrompter.h"
#include "core/NumberText.h"
#include "core/QuietPrompter.h"
#include "files/PlotDocument.h"
#include "files/PlotFile.h"
#include "files/PlotTemplate.h"
#include "macro/BatchStatus.h"
#include "plot/PictureMessages.h"
#include "results/PlotPoints.h"
#include "results/ProfilePlot.h"
#include "results/ResultPlots.h"
#include "solve/SolvedList.h"

namespace quorvex {
namespace {

using Page = Result<std::unique_ptr<PlotPage>>;

Page CurvesPage(const std::vector<SolvedItem>& solutions, const DataSheet& sheet, const Settings& settings,
                const LocaleText& locale, std::vector<std::string>& warnings) {
  const Result<PlotPoints> data = SolutionPoints(solutions, sheet);
  if (!data) return Failure{data.error()};
  std::vector<std::string> leftOut;
  Page page =
      PageOf(SolutionsPlot(solutions, data->Points, data->Titles[0], data->Titles[1], settings, locale, leftOut));
  if (leftOut.empty()) return page;
  if (leftOut.size() == solutions.size()) return Failure{NoCurveText(leftOut)};
  warnings.push_back(NoCurveText(leftOut));
  return page;
}

Page PageOfSolutions(ResultPlotKind kind, std::vector<SolvedItem> solutions, const DataSheet& sheet,
                     const Settings& settings, const LocaleText& locale, std::vector<std::string>& warnings,
                     SolveForm& form) {
  if (kind == ResultPlotKind::Model && sheet.IndependentVariables > kMostPlottedVariables)
    return Failure{kNoPlotOfManyVariables};
  if (solutions.empty()) return Failure{kNothingToPlot};
  if (kind == ResultPlotKind::Model && sheet.IndependentVariables == 1)
    return CurvesPage(solutions, sheet, settings, locale, warnings);
  if (solutions.size() > 1)
    warnings.emplace_back("Only one model at a time can be displayed on this kind of plot, which shows the best.");
  const GatheredData data = GatherData(sheet, PointOrder::OfSheet);
  if (kind == ResultPlotKind::Profile)  // which takes many fits
    return PageOf(ProfilesPlot(*solutions.front().Model, data.Points, settings, locale, form));
  return PlotOfResults(kind, solutions.front(), data, sheet, settings, locale);
}

// Creates a plot that failed with all of its models, without those that have no value somewhere on its scales. Why that
// fails, too, in a sentence; else empty.
std::string CreateWithoutFailing(PlotPage& plot, std::vector<std::string>& warnings) {
  QuietPrompter nobody;
  const auto canBe = [&](const std::vector<PlotSeries>& series) {
    const std::unique_ptr<PlotPage> trial = plot.Clone();
    trial->PlotData = series;
    return trial->CreateGraph({.Regenerate = true}, nobody);
  };
  std::vector<PlotSeries> kept;
  std::copy_if(plot.PlotData.begin(), plot.PlotData.end(), std::back_inserter(kept),
               [](const PlotSeries& series) { return series.Model() == nullptr; });
  const std::size_t others = kept.size();
  if (!canBe(kept)) return kPlotFailure;
  std::vector<std::string> failing;
  for (const PlotSeries& series : plot.PlotData) {
    if (series.Model() == nullptr) continue;
    std::vector<PlotSeries> alone(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(others));
    alone.push_back(series);
    if (canBe(alone))
      kept.push_back(series);
    else
      failing.push_back(series.Model()->id);
  }
  if (kept.size() == others && !failing.empty()) return NoCurveText(failing);
  plot.PlotData = std::move(kept);
  if (!plot.CreateGraph({.Regenerate = true}, nobody)) return kPlotFailure;
  warnings.push_back(NoCurveText(failing));
  return "";
}

}  // namespace

MacroPlot MakeMacroPlot(const ModelCollection& models, const SolveData& unsorted, const MacroSetup& setup,
                        Settings& settings, const LocaleText& locale, SolveForm& form) {
  Project project = ProjectOfSolve(unsorted, setup.Weighted, models, {}, locale);
  std::vector<SolvedItem> solutions = SolvedItems(project, setup.SortKey);
  if (const auto most = static_cast<std::size_t>(setup.PlotModels); solutions.size() > most) solutions.resize(most);

  MacroPlot plot;
  NotingPrompter user;
  const auto refuse = [&](const std::string& why) {
    plot.Warnings.push_back(why);
    return plot;
  };
  Page page = PageOfSolutions(static_cast<ResultPlotKind>(setup.PlotKind), std::move(solutions), project.Sheet,
                              settings, locale, plot.Warnings, form);
  if (!page) return refuse(page.error());
  if (setup.PlotKind == static_cast<int>(ResultPlotKind::Model)) {
    ShowBands(**page, static_cast<BandKind>(setup.PlotBands), kBandLevel, plot.Warnings);
    LeaveModelsOnly(**page, settings);
  }
  std::optional<PlotDocument> document = NewPlotDocument(std::move(*page), settings, user);
  // That a template of the preferences leaves nothing to be drawn is told further on, where another one doesn't help.
  std::copy_if(user.Notes().begin(), user.Notes().end(), std::back_inserter(plot.Warnings),
               [](const std::string& note) { return note != kPlotFailure; });
  if (!document) {
    plot.Fault = kPlotFailure;
    return plot;
  }
  if (!setup.PlotTemplate.empty()) {
    if (!ApplyPlotTemplate(document->Plot(), setup.PlotTemplate, false, user)) {
      plot.Fault = TemplateFault(setup.PlotTemplate);
      if (plot.Fault.empty()) plot.Fault = user.Last();
      return plot;
    }
    document->Plot().CreateGraph({.Regenerate = true}, user);
  }
  if (!document->Plot().PlotCreated) plot.Fault = CreateWithoutFailing(document->Plot(), plot.Warnings);
  if (plot.Fault.empty()) plot.Text = PlotFileText(document->Plot());
  return plot;
}

std::string TemplateFault(const std::string& name) {
  if (access(ResolvePath(name).c_str(), R_OK) == 0) return "";
  return "The plot template '" + name + "' cannot be read. " + FileErrorText(FileErrorNumber(errno));
}

std::string NotDrawnText(const std::string& names, const std::string& why) {
  return "The plot '" + names + "' cannot be drawn. " + why;
}

Result<std::string> PlotContent(const std::string& plotText, const std::string& name, PlotDrawer& drawer,
                                const std::function<bool()>& goOn) {
  const std::string ending = PlotEnding(name);
  if (ending == kPlotFileEnding) return plotText;
  Result<std::string> picture = drawer.Draw(plotText, ending, goOn);
  return picture ? picture : Result<std::string>(Failure{NotDrawnText(name, picture.error())});
}

}  // namespace quorvex
