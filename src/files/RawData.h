#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Any file that is none of the program's own, taken as data for a plot: the points that ReadPoints finds in it. Fails
// with NoDataIn where it finds none.
Result<PlotSeries> ReadRawData(std::string_view bytes, const std::string& fileName, std::size_t variables,
                               const Settings& settings, const LocaleText& locale);

// A new plot of two dimensions with these data.
Result<std::unique_ptr<PlotPage>> RawDataPlot(std::string_view bytes, const std::string& fileName,
                                              const Settings& settings, const LocaleText& locale);

// Why a file has nothing that a plot could show.
Failure NoDataIn(const std::string& fileName);

}  // namespace quorvex
