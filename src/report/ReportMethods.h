#pragma once

#include <string>
#include <vector>

#include "diagnosis/Diagnosis.h"
#include "engine/ModelClass.h"

namespace quorvex {

// The sources of the methods behind a report, those that were used alone, an entry each.
std::vector<std::string> MethodsOf(const ModelClass& model, const Diagnosis& diagnosis,
                                   const DiagnosisChoices& choices);

}  // namespace quorvex
