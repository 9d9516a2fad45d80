#pragma once

#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "macro/MacroStatements.h"

namespace quorvex {

// What a value may be besides a parameter, as a user is told: "best, all, a number from 1".
std::string WordsOf(const ChoiceValue& choice);

// Why a statement with that value hardly does what it was meant to, as "'SortKey = Rms' is none of RSS, R^2, Ra^2,
// StdErr."; empty where it does. The reader goes on with each of them, so a run doesn't tell.
std::string ValueFault(const MacroStatement& statement, std::string_view value, const LocaleText& locale);

}  // namespace quorvex
