#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"

namespace quorvex {

// What stands in the place of the version in files of a program before this one.
inline constexpr std::string_view kAncientVersion = "Scanvue Version 2.2";

// The whole plot file of version 9.0: settings and series, so that it opens with no project beside it. Reading it back
// gives an equal plot, to the bit of every number; only double quotes in texts come back as apostrophes, and what the
// format has no room for as new plots have it.
std::string PlotFileText(const PlotPage& plot);

// Saves the plot, the file that was there before being kept with "~" behind its name. Refused, and false, where the
// plot could not be created with its present settings, or the file cannot be written.
bool SavePlot(const PlotPage& plot, const std::string& fileName, Prompter& user);

// Opens a plot file of version 8.1 or later, or any other file as data: the first two columns of its numbers as a
// series. The plot is ready for CreateGraph({.Regenerate = true}). Its models' texts are in the form of `locale`, and
// what the file has no field for is as `settings` have it. Fails with the sentence for the user; a count in the file is
// never trusted further than the data that follow it.
Result<std::unique_ptr<PlotPage>> OpenPlotFile(const std::string& fileName, const Settings& settings,
                                               const LocaleText& locale);

// The same from the bytes of the file that is called `fileName`.
Result<std::unique_ptr<PlotPage>> ParsePlotFile(std::string_view bytes, const std::string& fileName,
                                                const Settings& settings, const LocaleText& locale);

}  // namespace quorvex
