#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "core/SolveData.h"
#include "engine/RankModels.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// What the layouts of a macro's output have in common: the same values under the same names, in the same order. Rows
// are separated by the macro's OutputDelimit.

// The program's version; the data file and the time.
std::array<std::string, 2> HeaderLines(const MacroSetup& setup);

// X, Y and, where the data are weighted, the standard deviation of point i (from 0).
std::string InputRow(const SolveData& data, std::size_t i, const MacroSetup& setup);

// A row per coefficient: value, standard error, half widths of the 68, 90, 95 and 99 percent limits.
std::vector<std::string> CoefficientRows(const ModelClass& model, const MacroSetup& setup);

// The statistics of a fit over N points, name and value.
std::vector<std::pair<std::string, std::string>> FitStatistics(const ModelClass& model, std::size_t N,
                                                               const MacroSetup& setup);

// The model's values, the signed residuals, Y minus the value, and the limits of the values that the macro asks for,
// row by row in the order of the data. Empty where the model has no value at some point, and where the macro asks for
// none of it; limits are NaN where there are none.
struct FittedRows {
  std::vector<double> Calculated, Error;
  std::vector<std::vector<double>> Limits;  // columns
};
// `pulse` is called every few hundred points, and may throw.
FittedRows TabulateFit(ModelClass& model, const SolveData& data, const MacroSetup& setup,
                       const std::function<void()>& pulse);

// What the macro asks for of the calculated values, the residuals and the limits: the names of the columns, none where
// it is nothing; and row i (from 0), with "N/A" for a limit that is not there.
std::vector<std::string> TableColumns(const MacroSetup& setup);
std::string TableRow(const FittedRows& rows, std::size_t i, const MacroSetup& setup);

}  // namespace quorvex
