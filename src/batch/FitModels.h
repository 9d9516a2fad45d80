#pragma once

#include <string>

#include "batch/DiagnosisRows.h"
#include "batch/cfgSolve.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/DiagnosisChoices.h"
#include "engine/ModelCollection.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// Fits every model whose `Solve` is set, behind the progress form. False where there is none. A several-variable model
// that wants more variables than the data have loses its `Solve`. Models that fail stay unsolved; the log says why.
bool FitModels(cfgSolve& form, const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
               const Settings& settings, std::string& log);

// What the setup asks of a diagnosis.
DiagnosisChoices ChoicesOf(const MacroSetup& setup);

// Diagnoses what that has left, behind the same form; the log has the warnings, too. Gives nothing where it is aborted.
RunDiagnoses DiagnoseModels(cfgSolve& form, const ModelCollection& models, const SolveData& data,
                            const MacroSetup& setup, const Settings& settings, std::string& log);

}  // namespace quorvex
