#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "core/Result.h"
#include "core/SolveData.h"
#include "project/Project.h"

namespace quorvex {

// An entry of the solved list: a model or an interpolation. It looks into the project that holds them.
struct Solution {
  ModelClass* Model = nullptr;           // one of the two is null
  InterpClass* Interpolation = nullptr;  // takes one independent variable

  const std::string& Name() const { return Model ? Model->id : Interpolation->id; }
  int NumIndependentVar() const { return Model ? Model->NumIndependentVar() : 1; }

  // The value at x, one number per independent variable. False, with a text in `ErrString`, where there is none.
  bool Evaluate(std::span<const double> x, double& y, std::string& ErrString) const;
  // The range of the input along a variable, from 1.
  std::pair<double, double> InputRange(int variable) const;

  bool operator==(const Solution&) const = default;
};

// What is solved in the project: the models, the best first by the sort key, then the interpolations.
std::vector<Solution> SolvedList(Project& project, int SortKey);

// The points that the project's results are told of, in the order of its sheet.
struct ResultData {
  SolveData Points;               // with weights
  std::vector<std::size_t> Rows;  // of the sheet, from 1, that the points stand in
  std::size_t MissingPoints = 0;  // rows in which some of X and Y is there and some is not
};

// Fails where a cell of a point holds a text, in the words of LoadGridData.
Result<ResultData> LoadResultData(const DataSheet& sheet);

}  // namespace quorvex
