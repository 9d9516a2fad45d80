#pragma once

#include <string>

#include "core/Prompter.h"
#include "plot/PlotPage.h"

namespace quorvex {

enum class ExportDelimiter : char { Comma = ',', Tab = '\t', Space = ' ' };

// The points of all series of a plot as a table: the independent variables in ascending order, and a column for each
// series, in which a pair of quotes stands where the series has no point. Headings are quoted, numbers in the form of
// the plot's locale, exact to the last bit.
std::string PlotDataText(const PlotPage& plot, ExportDelimiter delimiter);

// Asks for a file and writes the table. Refused, and false, where numbers with the locale's decimal separator would be
// cut apart, and where the file cannot be written.
bool ExportPlotData(const PlotPage& plot, ExportDelimiter delimiter, Prompter& user);

}  // namespace quorvex
