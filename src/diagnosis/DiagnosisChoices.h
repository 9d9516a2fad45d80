#pragma once

#include <cstdint>

namespace quorvex {

// What a diagnosis is to compute beyond what the solution and its derivatives tell.
struct DiagnosisChoices {
  bool ProfileLimits = false;  // by the profile likelihood
  int Bootstrap = 0;           // samples; 0 for none
  bool ResampleCases = false;  // whole points; else the residuals
  int CrossValidation = 0;     // parts that are left out in turn; 0 for none
  std::uint64_t Seed = 20240229;

  bool operator==(const DiagnosisChoices&) const = default;
};

}  // namespace quorvex
