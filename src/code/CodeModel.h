#pragma once

#include <optional>
#include <string>
#include <vector>

#include "equation/DataStatistics.h"
#include "equation/Expression.h"

namespace quorvex {

class ModelClass;

// A value that whoever has the code can hold it against.
struct CodeProof {
  std::vector<double> X;  // one per independent variable
  double Y = 0;
};

// What every writer of code is told of a model, solved or not.
struct CodeModel {
  std::string Title;                 // what the user calls it: any text
  std::string Definition;            // as the user wrote it, in lines
  std::vector<std::string> Remarks;  // on the fit, a line each; any text
  const Expression& Compiled;
  std::vector<double> Values;  // of the coefficients, in the order of their names
  DataStatistics Statistics;   // of the input, for words such as "xmean"
  int Variables = 1;           // independent ones, of which the last ones may not occur
  std::optional<CodeProof> Proof;
};

// The proof is the model's value at the middle one of its input points, else at the nearest where it has one. The model
// outlives the answer.
CodeModel DescribeForCode(ModelClass& model);

}  // namespace quorvex
