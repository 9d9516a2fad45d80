#include "diagnosis/ProfileRemarks.h"

#include <cmath>

namespace quorvex {
namespace {

constexpr std::size_t kUsualLevel = 2;  // 95 %

// Whether both ends are within a tenth of the distance between those of the first, as far as they are known.
bool AreNear(const Interval& a, const Interval& b) {
  const double most = (a.Upper - a.Lower) / 10;
  return !(std::abs(a.Lower - b.Lower) > most || std::abs(a.Upper - b.Upper) > most);
}

}  // namespace

std::vector<std::string> ProfileRemarks(const CoefficientDiagnosis& coefficient) {
  std::vector<std::string> remarks;
  if (coefficient.Profile && !AreNear(coefficient.Symmetric[kUsualLevel], (*coefficient.Profile)[kUsualLevel]))
    remarks.emplace_back("its limits are not those by the standard error. Take the profile's.");
  for (const std::string& end : {coefficient.Curve.BelowEnds, coefficient.Curve.AboveEnds})
    if (!end.empty()) remarks.push_back(end);
  return remarks;
}

}  // namespace quorvex
