#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/SolveData.h"
#include "engine/ModelClass.h"
#include "project/ProjectEditor.h"

namespace quorvex {

// How a coefficient takes part in the next fit.
enum class EstimateType { InitialEstimate, Constant, Range };
inline constexpr std::array<const char*, 3> kEstimateTypes = {"Initial Estimate", "Constant", "Range"};

// A coefficient as the dialog for initial estimates shows it, numbers in the locale's form. Final and Steps count for a
// range alone.
struct EstimateRow {
  std::string Name;
  EstimateType Type = EstimateType::InitialEstimate;
  std::string Initial, Final, Steps;
};

std::vector<EstimateRow> EstimateRows(const ModelClass& model, const LocaleText& locale);

// Those that the dialog begins with: of a model that has none yet, the program's own for the data.
std::vector<EstimateRow> FirstEstimates(const ModelClass& model, const SolveData& data, const LocaleText& locale);

// An initial value moved from `base` by `steps` steps of so many percent, as its cell shows it; 0 moves by parts of 1.
std::string MovedEstimate(double base, int steps, double percent, const LocaleText& locale);

// Why rows can't be taken; the cell is that of the grid: columns 3 to 5 are Initial, Final and Steps. Column 0 is a
// refusal of all rows together.
struct EstimateRefusal {
  std::string Message;
  std::size_t Row = 0;
  int Column = 0;
};

// The first thing that is wrong with the rows, or nothing; in their initial values alone, or in all of them.
std::optional<EstimateRefusal> CheckInitialValues(std::span<const EstimateRow> rows, const LocaleText& locale);
std::optional<EstimateRefusal> CheckEstimates(std::span<const EstimateRow> rows, const LocaleText& locale);

// The initial values of rows that have passed the check of them.
std::vector<double> InitialValues(std::span<const EstimateRow> rows, const LocaleText& locale);

// Gives the model of `project` the rows as its starts; a solution it has is dropped when the user agrees, and can be
// had back by undo. The rows have passed the check. False where the user does not agree.
bool SetEstimates(Project& project, ProjectEditor& editor, ModelClass& model, std::span<const EstimateRow> rows);

// Stores the initial values of the rows as rules of the model. False, after a word to the user or of the user, where
// nothing was stored.
bool SaveRules(Project& project, ModelClass& model, std::span<const EstimateRow> rows, Prompter& user);

}  // namespace quorvex
