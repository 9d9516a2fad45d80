#include "desktop/SaveReport.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <optional>

#include "core/DateText.h"
#include "core/NotingPrompter.h"
#include "core/SaveFile.h"
#include "core/ui/BusyCursor.h"
#include "core/ui/WaitWindow.h"
#include "files/PlotFile.h"
#include "macro/MacroFields.h"
#include "macro/MacroWriter.h"
#include "plot/ui/PlotOutput.h"
#include "report/DescribeFit.h"
#include "report/ReportFormat.h"
#include "report/ui/ReportPdf.h"
#include "results/PlotPoints.h"
#include "results/ui/DiagnosisRun.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

constexpr PictureSize kSizeOfPictures{800, 600, 96};
constexpr const char* kMacroNote =
    "Export the data of the project as data.txt, with tabs between its columns and without headings, beside the macro.";

// With all solved models, among which it is ranked, where it is the best of them and so the one that the macro reports
// on; else of it alone.
std::string MacroOf(const Project& project, const ModelClass& model, bool isBest, const DiagnosisChoices& choices,
                    bool weighted, const SolveLimits& limits, Settings settings) {
  if (limits.MaxIterations > 0) {
    settings.ResidualTolerance = limits.ResidualTolerance;
    settings.MaxIterations = limits.MaxIterations;
    settings.DivIterations = limits.DivIterations;
  }
  MacroFields fields = FieldsFor(project.Sheet.IndependentVariables, weighted, settings, project.Locale);
  fields.DataFile = "data.txt";
  fields.OutputFile = "answers.txt";
  fields.ReportFiles = "report.html";
  fields.StandardDeviations = model.GivenDeviation > 0 ? "Absolute" : "Relative";
  fields.Loss = kLossNames[static_cast<std::size_t>(model.Loss)];
  if (model.LossScaleGiven) fields.LossScale = LocalizeExpression(ShortestNumber(model.LossScale), project.Locale);
  fields.TryHarder = !model.FoundBy.empty();
  if (choices.ProfileLimits) fields.Limits = "Profile";
  if (choices.Bootstrap > 0) fields.Bootstrap = std::to_string(choices.Bootstrap);
  if (choices.ResampleCases) fields.BootstrapKind = "Cases";
  if (choices.CrossValidation > 0) fields.CrossValidation = std::to_string(choices.CrossValidation);
  fields.Models = isBest ? MacroModels::Solved : MacroModels::Ticked;
  fields.TickedModels = {model.id};
  std::string text = BuildMacroText(fields, project.Models, settings, project.Locale);
  std::erase(text, '\r');
  return text;
}

// What is quickly known of all solved models, while a window shows how far it is. Nothing where the user cancelled
// that, or, with a message, where it failed.
std::optional<std::vector<Diagnosis>> DiagnoseAll(const Project& project, const Settings& settings,
                                                  std::vector<std::string>& warnings, Prompter& user, QWidget* parent) {
  constexpr unsigned long kPatience = 20;  // milliseconds
  std::vector<const ModelClass*> solved;
  for (const auto& model : project.Models)
    if (model->Solved) solved.push_back(model.get());
  DiagnosisRun run(solved, GatherData(project.Sheet).Points, {}, settings.Integer("sortindex"), settings);
  run.start();
  {
    WaitWindow waiting("Looking at the solutions for the report", parent);
    while (!run.wait(kPatience))
      if (!waiting.Turn(run.Work())) run.Cancel();
  }
  if (!run.Fault.empty()) user.Refuse(run.Fault);
  if (run.Work().Cancelled() || !run.Fault.empty()) return std::nullopt;
  warnings = std::move(run.Warnings);
  return std::move(run.Answers);
}

// The picture of a plot, or why there is none.
Result<std::string> Picture(const ReportPlot& plot, const Settings& settings, const LocaleText& locale) {
  if (plot.Text.empty()) return Failure{plot.WhyNot};
  const Result<std::unique_ptr<PlotPage>> page = ParsePlotFile(plot.Text, "report", settings, locale);
  if (!page) return Failure{page.error()};
  NotingPrompter noting;
  std::optional<std::string> svg;
  if ((*page)->CreateGraph({.Regenerate = true}, noting)) svg = SvgPicture(**page, kSizeOfPictures, noting);
  return svg ? Result<std::string>(*svg) : Failure{noting.Last()};
}

}  // namespace

void SaveReport(const Project& project, ModelClass& model, const KeptDiagnoses& known, const SolveLimits& limits,
                Settings& settings, Prompter& user, QWidget* parent) {
  const std::optional<std::string> file = user.ChooseFileToSave("Save Report", ReportFilters(), "html", "report");
  if (!file) return;
  const ReportFormat* const format = ReportFormatOf(*file);
  if (format == nullptr) return user.Refuse(UnknownReport(*file));

  std::vector<Diagnosis> all = known.All();
  std::vector<std::string> warnings = known.Warnings(model.id);
  if (all.empty()) {
    std::optional<std::vector<Diagnosis>> said = DiagnoseAll(project, settings, warnings, user, parent);
    if (!said) return;
    all = std::move(*said);
  }
  const auto own = std::ranges::find(all, model.id, &Diagnosis::Id);
  if (own == all.end()) return user.Refuse("This model has no report: it is not solved.");

  int error = 0;
  {
    const BusyCursor busy;
    const DiagnosisChoices choices = known.Choices(model.id);
    const bool weighted = IsWeighted(GatherData(project.Sheet).Points);
    const ReportSource source{.Model = model,
                              .Sheet = project.Sheet,
                              .DataName = std::filesystem::path(project.FileName).filename().string(),
                              .Date = DateText(std::time(nullptr)),
                              .Locale = project.Locale,
                              .Limits = limits,
                              .Diagnoses = all,
                              .Which = static_cast<std::size_t>(own - all.begin()),
                              .Circumstances = {choices, warnings},
                              .Macro = MacroOf(project, model, own == all.begin(), choices, weighted, limits, settings),
                              .MacroNote = kMacroNote};
    FitReport report = DescribeFit(source, settings);
    std::size_t number = 0;
    if (format->ShowsPictures)
      for (const ReportPlot& plot : PlotsOfReport(source, settings))
        PlacePicture(report, number++, plot, Picture(plot, settings, project.Locale));
    Result<std::string> content = format->Write(report);
    if (format->IsPrinted) content = PdfOfReport(*content, settings, project.Locale);
    if (!content) return user.Refuse(NoReportText(*file, content.error()));
    error = SaveFile(*file, *content, FileCare::Answer);
  }
  if (error == 0)
    user.Inform("The file '" + *file + "' contains the " + format->Content + ".");
  else
    user.Refuse(NoReportText(*file, FileErrorText(error)));
}

}  // namespace quorvex
