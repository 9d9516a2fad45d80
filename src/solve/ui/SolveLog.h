#pragma once

#include <string>

class QWidget;

namespace quorvex {

// Shows the account of a solve.
void ShowSolveLog(QWidget* over, const std::string& log, std::size_t from = 0);

}  // namespace quorvex
