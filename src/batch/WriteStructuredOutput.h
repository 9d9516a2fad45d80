#pragma once

#include <vector>

#include "batch/MacroSetup.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// The solved models by the macro's sort key: RSS and StdErr ascending, R^2 and Ra^2 descending, ties in the order of
// the collection.
std::vector<ModelClass*> RankModels(const ModelCollection& models, int SortKey);

// Signed residuals Y minus the model's value, and the values, row by row in the order of the data. Empty where the
// model has no value at some point.
struct FittedRows {
  std::vector<double> Calculated, Error;
};
FittedRows TabulateFit(ModelClass& model, const SolveData& data);

// Writes the answers in the structured layout: nested B_ and E_ sections, indented. Returns 0 or the number of the
// file error.
int WriteStructuredOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup);

}  // namespace quorvex
