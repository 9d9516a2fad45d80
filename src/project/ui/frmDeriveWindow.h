#pragma once

#include "project/DeriveClass.h"

class QWidget;

namespace quorvex {

// Asks which columns of a project a new one shall have. `hasStandardDeviation`: the present one has some to copy. False
// where the user cancels.
bool ShowDeriveWindow(QWidget* over, DeriveClass& derive, bool hasStandardDeviation, Prompter& user);

}  // namespace quorvex
