#pragma once

#include <QWidget>

#include "engine/ModelClass.h"

namespace quorvex {

class quorvexWindow;

// Shows an entry of a project's solved list, from 0, in the project's results window, which follows the project and
// closes with it.
void ShowResults(quorvexWindow& window, int position);

// Asks over a window for the initial estimates of a model of the project.
void SpecifyEstimates(quorvexWindow& window, QWidget* over, ModelClass& model);

}  // namespace quorvex
