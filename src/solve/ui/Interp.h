#pragma once

#include <vector>

#include "engine/InterpClass.h"

class QWidget;

namespace quorvex {

// Picks the interpolations to solve: one at least, or none where the user cancels.
std::vector<InterpClass*> ChooseInterpolations(QWidget* over, std::vector<InterpClass>& curves);

}  // namespace quorvex
