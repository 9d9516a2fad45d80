#include "desktop/SaveReport.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <optional>

#include "batch/MacroFields.h"
#include "batch/MacroWriter.h"
#include "core/DateText.h"
#include "core/NotingPrompter.h"
#include "core/SaveFile.h"
#include "core/ui/BusyCursor.h"
#include "files/PlotFile.h"
#include "plot/ui/PlotOutput.h"
#include "report/DescribeFit.h"
#include "report/ReportFormat.h"
#include "results/PlotPoints.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

constexpr PictureSize kSizeOfPictures{800, 600, 96};
constexpr const char* kMacroNote =
    "Export the data of the project as data.txt, with tabs between its columns and without headings, beside the macro.";

std::string MacroOf(const Project& project, const ModelClass& model, const DiagnosisChoices& choices, bool weighted,
                    const Settings& settings) {
  MacroFields fields = FieldsFor(project.Sheet.IndependentVariables, weighted, settings, project.Locale);
  fields.DataFile = "data.txt";
  fields.OutputFile = "answers.txt";
  fields.ReportFiles = "report.html";
  fields.StandardDeviations = model.GivenDeviation > 0 ? "Absolute" : "Relative";
  fields.Loss = kLossNames[static_cast<std::size_t>(model.Loss)];
  if (choices.ProfileLimits) fields.Limits = "Profile";
  if (choices.Bootstrap > 0) fields.Bootstrap = std::to_string(choices.Bootstrap);
  if (choices.ResampleCases) fields.BootstrapKind = "Cases";
  if (choices.CrossValidation > 0) fields.CrossValidation = std::to_string(choices.CrossValidation);
  fields.Models = MacroModels::Ticked;
  fields.TickedModels = {model.id};
  return BuildMacroText(fields, project.Models, settings, project.Locale);
}

// The picture of a plot, or in `whyNot` why there is none.
std::string Picture(const ReportPlot& plot, const Settings& settings, std::string& whyNot) {
  whyNot = plot.WhyNot;
  if (plot.Text.empty()) return "";
  const Result<std::unique_ptr<PlotPage>> page = ParsePlotFile(plot.Text, "report", settings, {});
  if (!page) {
    whyNot = page.error();
    return "";
  }
  NotingPrompter noting;
  std::optional<std::string> svg;
  if ((*page)->CreateGraph({.Regenerate = true}, noting)) svg = SvgPicture(**page, kSizeOfPictures, noting);
  if (!svg) whyNot = noting.Last();
  return svg.value_or("");
}

}  // namespace

void SaveReport(const Project& project, ModelClass& model, const KeptDiagnoses& known, const SolveLimits& limits,
                Settings& settings, Prompter& user) {
  const std::optional<std::string> file = user.ChooseFileToSave("Export Report", ReportFilters(), "html", "report");
  if (!file) return;
  const ReportFormat* const format = ReportFormatOf(*file);
  if (format == nullptr) return user.Refuse(UnknownReport(*file));

  int error = 0;
  {
    const BusyCursor busy;
    std::vector<Diagnosis> all = known.All();
    std::vector<std::string> warnings = known.Warnings(model.id);
    if (all.empty()) {
      SolveForm unattended;
      warnings.clear();
      all = Diagnose(project.Models, GatherData(project.Sheet).Points, {}, settings.Integer("sortindex"), settings,
                     unattended, warnings);
    }
    const auto own = std::ranges::find(all, model.id, &Diagnosis::Id);
    if (own == all.end()) return user.Refuse("This model has no report: it is not solved.");
    const DiagnosisChoices choices = known.Choices(model.id);
    const ReportSource source{
        .Model = model,
        .Sheet = project.Sheet,
        .DataName = std::filesystem::path(project.FileName).filename().string(),
        .Date = DateText(std::time(nullptr)),
        .Limits = limits,
        .Diagnoses = all,
        .Which = static_cast<std::size_t>(own - all.begin()),
        .Circumstances = {choices, warnings},
        .Macro = MacroOf(project, model, choices, IsWeighted(GatherData(project.Sheet).Points), settings),
        .MacroNote = kMacroNote};
    FitReport report = DescribeFit(source, settings);
    std::size_t number = 0;
    for (const ReportPlot& plot : format->ShowsPictures ? PlotsOfReport(source, settings) : std::vector<ReportPlot>()) {
      std::string whyNot;
      const std::string svg = Picture(plot, settings, whyNot);
      PlacePicture(report, number++, svg, whyNot);
    }
    error = SaveFile(*file, format->Write(report), FileCare::Answer);
  }
  if (error == 0)
    user.Inform("The file '" + *file + "' contains the " + format->Content + ".");
  else
    user.Refuse("The report '" + *file + "' cannot be written. " + FileErrorText(error));
}

}  // namespace quorvex
