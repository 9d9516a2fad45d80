#pragma once

#include <optional>
#include <string>

#include "batch/DiagnosisRows.h"
#include "batch/MacroFiles.h"
#include "batch/PlotDrawer.h"
#include "batch/cfgSolve.h"
#include "core/SaveFile.h"
#include "core/Session.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "macro/MacroLog.h"
#include "macro/MacroSetup.h"
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
      : session_(session), form_(form), drawer_(drawer), files_(files), log_(log) {}

  // Writes the reports that the setup asks for, on the models and the points of a run as their source has them, with
  // the diagnoses of all models. Returns 0, or the number of the file error of the last one that could not be written,
  // or kNotDrawn; the others are there. Without a solved model there is none, and that is no error; nor is it that
  // nobody draws, without which the pictures are missing, and PDF documents.
  int Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted,
            const RunDiagnoses& diagnoses, const ReportedMacro& macro);

 private:
  int WriteOne(const std::string& name, const FitReport& report);
  bool GoOn();

  Session& session_;
  cfgSolve& form_;
  PlotDrawer& drawer_;
  MacroFiles& files_;
  MacroLog& log_;
  ReplacementFile file_{FileCare::Answer};
};

// Why a report may not be written over what the macro reads or writes; nothing where it may.
std::optional<std::string> RefuseReport(const std::string& name, MacroFiles& files);

// Why a report can't have that name: its ending is none, or it is a pipe or a device. Returns 0 or the number of the
// file error, and a sentence in `fault`.
int ReportNameError(const std::string& name, const std::string& path, std::string& fault);

}  // namespace quorvex
