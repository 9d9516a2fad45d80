#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Result.h"
#include "engine/ModelSetup.h"
#include "project/ProjectEditor.h"

namespace quorvex {

// The quantities of a model's coefficients that are to be reported, as its user writes them: "name = expression", one a
// line. Reading leaves out empty lines, and fails with a sentence that names the first line which is wrong.
std::string QuantitiesText(const std::vector<DerivedQuantity>& quantities);
Result<std::vector<DerivedQuantity>> ReadQuantities(std::string_view text);

// Makes them those of the model, with a step of undo. False, and nothing changed, where the user was told what is
// wrong.
bool ReportQuantities(ProjectEditor& editor, ModelClass& model, std::string_view text, Prompter& user);

}  // namespace quorvex
