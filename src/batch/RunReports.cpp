#include "batch/RunReports.h"

#include <ctime>
#include <memory>
#include <string_view>

#include "batch/FitModels.h"
#include "batch/WritePlot.h"
#include "core/DateText.h"
#include "core/NumberText.h"
#include "engine/RankModels.h"
#include "engine/UserModel.h"
#include "import/ConnectString.h"
#include "project/Project.h"
#include "report/ReportFormat.h"

namespace quorvex {
namespace {

bool ShowsPictures(std::string_view names) {
  while (!names.empty())
    if (const ReportFormat* format = ReportFormatOf(TakeLine(names)); format != nullptr && format->ShowsPictures)
      return true;
  return false;
}

}  // namespace

std::string MacroWithoutPassword(std::string_view text, const MacroSetup& setup) {
  std::string shown;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    const std::size_t sign = line.find('=');
    const bool isSource = sign != std::string_view::npos && ContainsNoCase(line.substr(0, sign), "DataFile");
    shown += (isSource && !setup.SQLQuery.empty()
                  ? std::string(line.substr(0, sign + 1)) + MaskPassword(std::string(line.substr(sign + 1)))
                  : std::string(line)) +
             "\n";
  }
  return shown;
}

int RunReports::Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted,
                      const RunDiagnoses& diagnoses, const ReportedMacro& macro) {
  const std::vector<ModelClass*> ranked = RankModels(models, setup.SortKey);
  if (ranked.empty() || diagnoses.Models.empty()) {
    log_.Line("Warning: There is no solved model to report on.");
    return 0;
  }
  const SolveLimits limits{setup.RegressionTolerance, setup.MaxIterations, setup.UnchangedIterations};
  const Project project = ProjectOfSolve(unsorted, setup.Weighted, models, limits, session_.Locale);
  // Models stand by the names that they are shown by.
  const std::unique_ptr<ModelClass> best = ranked.front()->CopyTo();
  best->id = ShownName(*best);
  std::vector<Diagnosis> named = diagnoses.Models;
  for (Diagnosis& one : named)
    if (const ModelClass* model = models.Find(one.Id)) one.Id = ShownName(*model);
  const ReportSource source{.Model = *best,
                            .Sheet = project.Sheet,
                            .DataName = DataSourceText(setup),
                            .Date = DateText(std::time(nullptr)),
                            .Locale = session_.Locale,
                            .Limits = limits,
                            .Diagnoses = named,
                            .Circumstances = {ChoicesOf(setup), diagnoses.Warnings},
                            .Macro = macro.Text,
                            .MacroNote = macro.Note};
  FitReport report = DescribeFit(source, session_.Preferences);
  const std::string whyNone = ShowsPictures(setup.ReportFile) ? drawer_.WhyNone() : "";
  if (!whyNone.empty()) log_.Line("Warning: " + whyNone);
  if (ShowsPictures(setup.ReportFile)) PlacePictures(source, whyNone, report);
  const auto canBe = [&](const std::string& name) {
    const ReportFormat* format = ReportFormatOf(name);
    return format == nullptr || !format->IsPrinted || whyNone.empty();
  };
  return writer_.Write(
      setup, [&](const std::string& name) { return ContentOf(name, report); }, canBe);
}

void RunReports::PlacePictures(const ReportSource& source, const std::string& whyNone, FitReport& report) {
  std::size_t number = 0;
  for (const ReportPlot& plot : PlotsOfReport(source, session_.Preferences)) {
    const std::string& why = plot.WhyNot.empty() ? whyNone : plot.WhyNot;
    const Result<std::string> svg = !why.empty() ? Result<std::string>(Failure{why})
                                                 : drawer_.Draw(plot.Text, ".svg", [this] { return writer_.GoOn(); });
    if (!svg && why.empty()) log_.Line("Warning: " + NotDrawnText("of the report", svg.error()));
    PlacePicture(report, number++, plot, svg);
  }
}

Result<std::string> RunReports::ContentOf(const std::string& name, const FitReport& report) {
  const ReportFormat& format = *ReportFormatOf(name);
  Result<std::string> content = format.Write(report);
  if (format.IsPrinted)
    content = drawer_.Draw(*content, std::string(kPrintedReport), [this] { return writer_.GoOn(); });
  return content ? content : Result<std::string>(Failure{NoReportText(name, content.error())});
}

}  // namespace quorvex
