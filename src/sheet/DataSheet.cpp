#include "sheet/DataSheet.h"

#include <cassert>

#include "core/SolveData.h"

namespace quorvex {

DataSheet::DataSheet(std::size_t independentVariables, bool hasStandardDeviation)
    : IndependentVariables(independentVariables),
      HasStandardDeviation(hasStandardDeviation),
      Headers(DefaultHeaders(independentVariables, hasStandardDeviation)),
      Formats(Headers.size()) {
  assert(independentVariables >= 1 && independentVariables <= kMostIndependentVariables);
}

std::vector<std::string> DefaultHeaders(std::size_t independentVariables, bool hasStandardDeviation) {
  std::vector<std::string> headers;
  for (std::size_t v = 1; v <= independentVariables; ++v)
    headers.push_back(independentVariables == 1 ? "X" : "X" + std::to_string(v));
  headers.push_back("Y");
  if (hasStandardDeviation) headers.push_back("StDev");
  return headers;
}

}  // namespace quorvex
