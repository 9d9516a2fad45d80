#pragma once

#include <string>
#include <vector>

#include "plot/PlotField.h"
#include "plot/PlotPage.h"

namespace quorvex {

// The fields that plots of two and three dimensions have in common.

PlotField FontField(const std::string& control, const std::string& label, PlotFont& font, std::int32_t& color,
                    bool beside = false);

// A whole number from `least` to `most`; `what` names it in the message, as in "The Axis Width".
template <typename Integer>
PlotField RangeField(const std::string& control, const std::string& label, Integer& place, int least, int most,
                     const std::string& what) {
  return {.Control = control,
          .Label = label,
          .Kind = FieldKind::Number,
          .Place = &place,
          .Least = static_cast<double>(least),
          .Most = static_cast<double>(most),
          .OutOfRange = what + " must be in the range (" + std::to_string(least) + " - " + std::to_string(most) + ")."};
}

// The titles of plot and axes. The user knows these by their names, which their controls' names end in.
FieldPage TitlePage(PlotPage& plot, const std::vector<std::string>& names);
// Scale and numbers of one of them; with what is said where a logarithmic scale cannot show its limits.
FieldGroup ScaleGroup(PlotAxis& axis, const std::string& name, const std::string& logRefusal);

inline FieldPage SeriesPage() {
  return {.Title = "S&eries", .Groups = {}, .CodeButtons = "cmdLegendFontShift", .OfSeries = true};
}
FieldPage LegendPage(PlotPage& plot);
FieldPage FootNotePage(PlotPage& plot);
FieldGroup PenGroup(PlotPage& plot);

// Of a series, with lines up to a width.
std::vector<PlotField> LineFields(SeriesStyle& style, int widest, bool hasBars);

}  // namespace quorvex
