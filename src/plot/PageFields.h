#pragma once

#include <string>
#include <vector>

#include "plot/PlotPage.h"
#include "plot/PropertyField.h"

namespace quorvex {

// The fields that plots of two and three dimensions have in common.

PropertyField FontField(const std::string& control, const std::string& label, PlotFont& font, std::int32_t& color,
                        bool beside = false);

// A number in a range, with what is said of any other; and a whole one that `what` names, as in "The Axis Width must be
// in the range (1 - 5)."
PropertyField NumberField(const std::string& control, const std::string& label, const FieldPlace& place, double least,
                          double most, const std::string& outOfRange);
PropertyField RangeField(const std::string& control, const std::string& label, const FieldPlace& place, int least,
                         int most, const std::string& what);

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
std::vector<PropertyField> LineFields(SeriesStyle& style, int widest, bool hasBars);

}  // namespace quorvex
