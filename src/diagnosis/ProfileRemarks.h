#pragma once

#include <string>
#include <vector>

#include "diagnosis/Diagnosis.h"

namespace quorvex {

// What is to be said of a coefficient's profile limits, a sentence each: that they are not those by the standard error,
// an end at 95 % being off by more than a tenth of the distance between those; and why a side has no limit, or one that
// is an edge (ProfileCurve). Nothing without a profile.
std::vector<std::string> ProfileRemarks(const CoefficientDiagnosis& coefficient);

}  // namespace quorvex
