#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
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

// Why rows can't be taken; the cell is that of the grid: columns 3 to 5 are Initial, Final and Steps. Column 0 is a
// refusal of all rows together.
struct EstimateRefusal {
  std::string Message;
  std::size_t Row = 0;
  int Column = 0;
};

// The first thing that is wrong with the rows, or nothing.
std::optional<EstimateRefusal> CheckEstimates(std::span<const EstimateRow> rows, const LocaleText& locale);

// Gives the model of `project` the rows as its starts; a solution it has is dropped when the user agrees, and can be
// had back by undo. The rows have passed the check. False where the user does not agree.
bool SetEstimates(Project& project, ProjectEditor& editor, ModelClass& model, std::span<const EstimateRow> rows);

// Stores the initial values of the rows as rules of the model. False, after a word to the user or of the user, where
// nothing was stored.
bool SaveRules(Project& project, ModelClass& model, std::span<const EstimateRow> rows, Prompter& user);

}  // namespace quorvex
