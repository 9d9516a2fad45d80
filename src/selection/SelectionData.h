#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "selection/VarSelect.h"
#include "sheet/DataSheet.h"
#include "solve/GatherData.h"

namespace quorvex {

// The points that a search goes by: its candidates as columns, Y as it is fitted.
struct SelectionData {
  std::vector<std::string> Names;      // of the candidates
  std::vector<std::vector<double>> X;  // one column per candidate
  std::vector<bool> Always;            // those that are always in the model
  std::string YName;                   // with the transform, as in "Ln(Y)"
  std::vector<double> Y, SD;
  std::vector<double> sig;  // weights with mean 1
  bool Weighted = false;    // the sheet has standard deviations

  std::size_t N() const { return Y.size(); }
};

// The complete rows of a sheet for a search: refused where they are too few, asked about where others are left out.
std::optional<GatheredData> GatherForSelection(const DataSheet& sheet, const Settings& settings, Prompter& user);

// Transforms Y, adds squares and products, and leaves out what the user left out. `data` are in the sheet's order.
// Fails with the message for the user where a value cannot be transformed.
Result<SelectionData> PrepareSelection(const GatheredData& data, const DataSheet& sheet, const VarSelect& choices,
                                       const LocaleText& locale);

}  // namespace quorvex
