#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "NullSurface.h"
#include "Require.h"
#include "core/QuietPrompter.h"
#include "files/PlotFile.h"

namespace quorvex {

// Opens the bytes as a plot file, with point and comma for decimals. What was opened can be written, is then the same
// plot for good, and is drawn or refused.
inline int FuzzPlotFile(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  const Settings settings;
  for (const LocaleText& locale : {LocaleText(), kComma}) {
    const auto plot = ParsePlotFile(bytes, "p.plt", settings, locale);
    if (!plot) {
      Require(!plot.error().empty(), "a refusal without words");
      continue;
    }
    const std::string text = PlotFileText(**plot);
    const auto again = ParsePlotFile(text, "p.plt", settings, locale);
    Require(static_cast<bool>(again), "a plot that was saved and cannot be opened");
    Require(PlotFileText(**again) == text, "a plot that saving changes");
    QuietPrompter user;
    for (const bool automatic : {false, true})
      for (const int unitsPerMillimetre : {4, 200}) {  // of a screen, and finer than any paper
        NullSurface surface(unitsPerMillimetre);
        if ((*plot)->CreateGraph({.Auto = automatic, .Regenerate = true, .AutoFormat = automatic}, user))
          (*plot)->RefreshPlot(surface, user);
      }
  }
  return 0;
}

}  // namespace quorvex
