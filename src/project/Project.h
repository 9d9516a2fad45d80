#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/InterpClass.h"
#include "engine/ModelCollection.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// The solver's limits as a project keeps them.
struct SolveLimits {
  double ResidualTolerance = Settings().ResidualTolerance;  // percent change of the merit function
  std::int32_t MaxIterations = Settings().MaxIterations;
  std::int32_t DivIterations = Settings().DivIterations;  // iterations allowed without improvement

  bool operator==(const SolveLimits&) const = default;
};

// The document: a data sheet, notes, and what was solved. A window shows one, files hold one, an unattended run makes
// one.
struct Project {
  // A project without models.
  Project(std::size_t independentVariables, bool hasStandardDeviation, const LocaleText& locale)
      : Locale(locale), Sheet(independentVariables, hasStandardDeviation) {}

  LocaleText Locale;                  // that its models' texts are written in
  std::string FileName = "Untitled";  // what it is called where it has no file
  bool HasFile = false;
  DataSheet Sheet;
  std::string Notes;
  SolveLimits Limits;
  ModelCollection Models;  // the catalogue and the user's; the solved list is those with `Solved`
  std::vector<InterpClass> Interpolations;
  bool Changed = false;       // the sheet, since it was last saved
  bool NotesChanged = false;  // the notes, since they were last saved

  bool IsSaved() const { return !Changed && !NotesChanged; }
  // A new one that nothing was done to.
  bool IsFresh() const { return !HasFile && IsSaved() && Sheet.Cells.GridLastRow() == 0; }
};

// A fresh project, with the catalogue of built-in models and one interpolation of each kind.
Project NewProject(std::size_t independentVariables, bool hasStandardDeviation, const LocaleText& locale);

// What an unattended run leaves behind, for a file: the points as its sheet (the standard deviations where they were
// weighted), copies of the user-defined and of the solved models. Costs a copy of the points and those models.
Project ProjectOfSolve(const SolveData& unsorted, bool weighted, const ModelCollection& models,
                       const SolveLimits& limits, const LocaleText& locale);

}  // namespace quorvex
