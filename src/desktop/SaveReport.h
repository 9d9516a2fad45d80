#pragma once

#include "core/Prompter.h"
#include "core/Settings.h"
#include "project/Project.h"
#include "results/KeptDiagnoses.h"

class QWidget;

namespace quorvex {

// Asks for a file and writes the report on a solved model of the project into it, as the ending of its name says: with
// what is `known` of it, or what is known quickly, which a window over `parent` lets the user cancel. The user is told
// what became of it.
void SaveReport(const Project& project, ModelClass& model, const KeptDiagnoses& known, const SolveLimits& limits,
                Settings& settings, Prompter& user, QWidget* parent);

}  // namespace quorvex
