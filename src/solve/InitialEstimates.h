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
// range alone, an empty Minimum or Maximum is none.
struct EstimateRow {
  std::string Name;
  EstimateType Type = EstimateType::InitialEstimate;
  std::string Initial, Final, Steps;
  std::string Minimum = {}, Maximum = {};
};

std::vector<EstimateRow> EstimateRows(const ModelClass& model, const LocaleText& locale);

// Those that the dialog begins with: of a model that has none yet, the program's own for the data.
std::vector<EstimateRow> FirstEstimates(const ModelClass& model, const SolveData& data, const LocaleText& locale);

// The initial value of `row` moved from `base` by `steps` steps of so many percent, as its cell shows it, to its bounds
// at most; 0 moves by parts of 1.
std::string MovedEstimate(const EstimateRow& row, double base, int steps, double percent, const LocaleText& locale);

// Why rows can't be taken; the cell is that of the grid: columns 3 to 7 are Initial, Final, Steps, Minimum and
// Maximum. Column 0 is a refusal of all rows together.
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

// Gives the model of `project` the rows as its starts and bounds; a solution it has is dropped when the user agrees,
// and can be had back by undo. The rows have passed the check. False where the user does not agree.
bool SetEstimates(Project& project, ProjectEditor& editor, ModelClass& model, std::span<const EstimateRow> rows);

// Stores the initial values of the rows as rules of the model. False, after a word to the user or of the user, where
// nothing was stored.
bool SaveRules(Project& project, ModelClass& model, std::span<const EstimateRow> rows, Prompter& user);

}  // namespace quorvex
