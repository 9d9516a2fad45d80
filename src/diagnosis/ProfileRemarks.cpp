#include "diagnosis/ProfileRemarks.h"

namespace quorvex {

std::vector<std::string> ProfileRemarks(const CoefficientDiagnosis& coefficient) {
  std::vector<std::string> remarks;
  for (const std::string& end : {coefficient.Curve.BelowEnds, coefficient.Curve.AboveEnds})
    if (!end.empty()) remarks.push_back(end);
  return remarks;
}

}  // namespace quorvex
