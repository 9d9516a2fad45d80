#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/SolveData.h"
#include "solve/SolvedList.h"

namespace quorvex {

// What of a run was not solved, and what its search began with.
struct FailedFit {
  SolvedItem Object;
  bool OwnEstimates = false;         // its user gave Values and Ranges; else they are the program's own for the data
  std::vector<double> Values = {};   // a number per coefficient
  std::vector<ICRange> Ranges = {};  // the same
  bool TriedHarder = false;          // to no avail
};

// Has a model begin its next fit as the failed one did.
void TakeStart(const FailedFit& fit, ModelClass& model);

// The failed model as it was when its search began: a copy, with the estimates and the input.
std::unique_ptr<ModelClass> AtItsStart(const FailedFit& fit, const SolveData& data);

// Why it failed, in plain words: for a model as diagnosis/WhyFailed.h says, with the failed object as its fit left it.
std::string WhyFailed(const FailedFit& fit, const SolveData& data, const LocaleText& locale);

}  // namespace quorvex
