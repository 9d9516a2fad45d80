#pragma once

#include <string>
#include <string_view>

#include "batch/DiagnosisRows.h"
#include "batch/NamedOutputs.h"
#include "batch/PlotDrawer.h"
#include "core/Session.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "macro/MacroLog.h"
#include "macro/MacroSetup.h"
#include "report/DescribeFit.h"
#include "report/FitReport.h"

namespace quorvex {

// The macro behind a report, as the report tells it.
struct ReportedMacro {
  std::string Text, Note;
};

// The text of a macro without the password of its connection.
std::string MacroWithoutPassword(std::string_view text, const MacroSetup& setup);

// The reports of a macro's runs, each on the best of the models.
class RunReports {
 public:
  RunReports(Session& session, cfgSolve& form, PlotDrawer& drawer, MacroFiles& files, MacroLog& log)
      : session_(session), drawer_(drawer), log_(log), writer_(kReportOutputs, form, files, log) {}

  // Writes the reports that the setup asks for, on the models and the points of a run as their source has them, with
  // the diagnoses of all models. Returns what NamedWriter does. Without a solved model there is none, and that is no
  // error; nor is it that nobody draws, without which the pictures are missing, and PDF documents.
  int Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted,
            const RunDiagnoses& diagnoses, const ReportedMacro& macro);

 private:
  void PlacePictures(const ReportSource& source, const std::string& whyNone, FitReport& report);
  Result<std::string> ContentOf(const std::string& name, const FitReport& report);

  Session& session_;
  PlotDrawer& drawer_;
  MacroLog& log_;
  NamedWriter writer_;
};

}  // namespace quorvex
