#include "batch/RunReports.h"

#include <algorithm>
#include <ctime>
#include <memory>
#include <string_view>

#include "batch/DataReading.h"
#include "batch/FitModels.h"
#include "batch/WritePlot.h"
#include "core/DateText.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "engine/FitEach.h"
#include "engine/RankModels.h"
#include "engine/UserModel.h"
#include "import/ConnectString.h"
#include "macro/BatchStatus.h"
#include "project/Project.h"
#include "report/DescribeFit.h"
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

std::optional<std::string> RefuseReport(const std::string& name, MacroFiles& files) {
  std::optional<std::string> refusal = files.RefuseInput("report", name);
  return refusal ? refusal : files.RefuseOther(Writing::Report, name);
}

int ReportNameError(const std::string& name, const std::string& path, std::string& fault) {
  if (ReportFormatOf(name) != nullptr) return NoFileError("report", name, path, fault);
  fault = UnknownReport(name);
  return kBadFileName;
}

bool RunReports::GoOn() {
  form_.Yield();
  return !form_.Aborted;
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
  if (ShowsPictures(setup.ReportFile)) {
    std::size_t number = 0;
    for (const ReportPlot& plot : PlotsOfReport(source, session_.Preferences)) {
      const std::string& why = plot.WhyNot.empty() ? whyNone : plot.WhyNot;
      const Result<std::string> svg =
          !why.empty() ? Result<std::string>(Failure{why}) : drawer_.Draw(plot.Text, ".svg", [this] { return GoOn(); });
      if (!svg && why.empty()) log_.Line("Warning: " + NotDrawnText("of the report", svg.error()));
      PlacePicture(report, number++, plot, svg);
    }
  }
  int error = 0;
  for (std::string_view names = setup.ReportFile; !names.empty();) {
    const std::string name(TakeLine(names));
    if (const ReportFormat* format = ReportFormatOf(name); format != nullptr && format->IsPrinted && !whyNone.empty())
      continue;
    if (setup.UseDDE) form_.DDEText("Writing report file '" + name + " '");
    log_.Line("Writing report to " + name);
    const int failed = GoOn() ? WriteOne(name, report) : kNotDrawn;
    if (!GoOn() && (failed != 0 || !names.empty())) {
      LogAbort(log_.Text);
      return kNotDrawn;
    }
    if (failed != 0) error = failed;
  }
  return error;
}

int RunReports::WriteOne(const std::string& name, const FitReport& report) {
  std::string fault;
  int error = kAccessError;
  if (const std::optional<std::string> refusal = RefuseReport(name, files_)) {
    fault = *refusal;
  } else if (error = ReportNameError(name, files_.Place(name), fault); error == 0) {
    const ReportFormat& format = *ReportFormatOf(name);
    Result<std::string> content = format.Write(report);
    if (format.IsPrinted) content = drawer_.Draw(*content, std::string(kPrintedReport), [this] { return GoOn(); });
    error = content ? file_.Create(name) : kNotDrawn;
    if (error == 0) file_.Text().Write(*content);
    if (error == 0) error = file_.Commit();
    if (error != 0) fault = NoReportText(name, content ? FileErrorText(error) : content.error());
  }
  if (error == 0)
    files_.NoteWritten(Writing::Report, name);
  else if (!form_.Aborted)
    log_.Fault(fault);
  return error;
}

}  // namespace quorvex
