#pragma once

#include "solve/GroupPick.h"

class QWidget;

namespace quorvex {

// Picks the groups of models to solve, and puts together the user's own group. False where the user cancels.
bool ShowGroups(QWidget* over, GroupPick& pick, Prompter& user);

}  // namespace quorvex
