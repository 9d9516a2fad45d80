#include "batch/WritePlot.h"

#include <memory>
#include <string_view>

#include "core/Files.h"
#include "core/NotingPrompter.h"
#include "core/NumberText.h"
#include "files/PlotDocument.h"
#include "files/PlotFile.h"
#include "files/PlotTemplate.h"
#include "plot/PictureMessages.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "solve/SolvedList.h"

namespace quorvex {
namespace {

constexpr std::string_view kPlotFile = ".plt";

constexpr int kBadFileName = 52;
constexpr int kNotWritten = -1;  // for no error of the file itself

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
                     const Settings& settings, const LocaleText& locale, std::vector<std::string>& warnings) {
  if (kind == ResultPlotKind::Model && sheet.IndependentVariables > kMostPlottedVariables)
    return Failure{kNoPlotOfManyVariables};
  if (solutions.empty()) return Failure{kNothingToPlot};
  if (kind == ResultPlotKind::Model && sheet.IndependentVariables == 1)
    return CurvesPage(solutions, sheet, settings, locale, warnings);
  if (solutions.size() > 1)
    warnings.emplace_back("Only one model at a time can be displayed on this kind of plot, which shows the best.");
  const Result<GatheredData> data = GatherData(sheet, PointOrder::OfSheet);
  if (!data) return Failure{data.error()};
  return PlotOfResults(kind, solutions.front(), *data, sheet, settings, locale);
}

}  // namespace

MacroPlot MakeMacroPlot(const ModelCollection& models, const SolveData& unsorted, const MacroSetup& setup,
                        Settings& settings, const LocaleText& locale) {
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
                              settings, locale, plot.Warnings);
  if (!page) return refuse(page.error());
  if (setup.PlotKind == static_cast<int>(ResultPlotKind::Model)) LeaveModelsOnly(**page, settings);
  std::optional<PlotDocument> document = NewPlotDocument(std::move(*page), settings, user);
  plot.Warnings.insert(plot.Warnings.end(), user.Notes().begin(), user.Notes().end());
  if (!document) return plot;
  if (!setup.PlotTemplate.empty()) {
    if (!ApplyPlotTemplate(document->Plot(), setup.PlotTemplate, false, user)) {
      plot.Error = kNotWritten;
      return refuse(user.Last());
    }
    if (!document->Plot().CreateGraph({.Regenerate = true}, user)) return refuse(user.Last());
  }
  plot.Text = PlotFileText(document->Plot());
  return plot;
}

std::string PlotEnding(const std::string& name) {
  if (const PictureFormat* const picture = PictureFormatOf(name)) return picture->Ending;
  return ToLower(name).ends_with(kPlotFile) ? std::string(kPlotFile) : "";
}

std::string UnknownEndingText(const std::string& name) {
  std::string endings;
  for (const PictureFormat& picture : PictureFormats()) endings.append(picture.Ending).append(", ");
  return "The plot '" + name + "' is not written: its name ends in none of " + endings.append(kPlotFile) + ".";
}

int WritePlot(const std::string& plotText, const std::string& name, PlotDrawer& drawer,
              const std::function<bool()>& goOn, ReplacementFile& file, std::string& fault) {
  const std::string ending = PlotEnding(name);
  if (ending.empty()) {
    fault = UnknownEndingText(name);
    return kBadFileName;
  }
  const Result<std::string> content =
      ending == kPlotFile ? Result<std::string>(plotText) : drawer.Draw(plotText, ending, goOn);
  if (!content) {
    fault = "The plot '" + name + "' cannot be drawn. " + content.error();
    return kNotWritten;
  }
  int error = file.Create(name);
  if (error == 0) file.Text().Write(*content);
  if (error == 0) error = file.Commit();
  if (error != 0) fault = "The plot '" + name + "' cannot be written. " + FileErrorText(error);
  return error;
}

}  // namespace quorvex
