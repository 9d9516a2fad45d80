#pragma once

#include <string>
#include <vector>

#include "diagnosis/Diagnosis.h"

namespace quorvex {

// What is to be said of a coefficient's profile limits, a sentence each: why a side has no limit, or one that is an
// edge (ProfileCurve). Nothing without a profile. That they differ from the symmetric ones is the verdict's to say.
std::vector<std::string> ProfileRemarks(const CoefficientDiagnosis& coefficient);

}  // namespace quorvex
