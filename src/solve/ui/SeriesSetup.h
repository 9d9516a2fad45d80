#pragma once

#include <optional>

#include "solve/SeriesPick.h"

class QWidget;

namespace quorvex {

// Asks which columns of a file make the series. Nothing where the user cancels, or the file cannot be read.
std::optional<SeriesData> ShowSeriesSetup(QWidget* over, SeriesPick& pick, Prompter& user);

}  // namespace quorvex
