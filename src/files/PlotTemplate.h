#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"

namespace quorvex {

// A plot template is a text that carries the look of a plot without its data, a line for each of the keys that
// PlotTemplateFormat lists: "x_axis_major_ticks = 10", "plot_title_color = (255, 0, 0)". "null" leaves the plot's field
// alone, and "prompt" asks the user for it. Numbers have a decimal point whatever the locale.

struct TemplateLine {
  std::string Key;         // in lower case
  std::string_view Value;  // as it stands
};
// Nothing for a line without "=", for one that begins or ends with it, and for the value "null".
std::optional<TemplateLine> ParseTemplateLine(std::string_view line);

// Sets what the lines say. Unknown keys, values that are none for their field and keys of series that the plot doesn't
// have are passed over, and an axis whose minimum came out above its maximum keeps its limits. Fields whose value is
// "prompt" are asked for; without a user they stay. CreateGraph and RefreshPlot, which the plot needs then, are the
// caller's.
void ApplyTemplateText(PlotPage& plot, std::string_view text, Prompter* user);

// The same with the content of a file. False, and the user hears why, where the file is a template of the other kind of
// plot or cannot be read.
bool ApplyPlotTemplate(PlotPage& plot, const std::string& fileName, bool promptAllowed, Prompter& user);

// Applies the template that the settings name for new plots of this kind, once their series are in place. One that
// isn't there is offered for removal.
void ApplyDefaultTemplate(PlotPage& plot, Settings& settings, Prompter& user);

// Names out of PlotTemplateFormat::Groups.
using TemplateSelection = std::set<std::string>;

// The template of a plot, with "null" for what is not in the groups selected, what the plot doesn't have and texts that
// no line can hold: empty ones and such as "null" itself. Blanks around a text are not kept.
std::string TemplateText(const PlotPage& plot, const TemplateSelection& selection);

// Writes it to a file. Returns 0 or the file error's number.
int SavePlotTemplate(const PlotPage& plot, const std::string& fileName, const TemplateSelection& selection);

// The text of a template, to be edited; and saved, whatever it says. Nothing or false, and refused, where the file
// cannot be read or written.
std::optional<std::string> ReadTemplateText(const std::string& fileName, Prompter& user);
bool SaveTemplateText(const std::string& fileName, const std::string& text, Prompter& user);

// The command of a plot's window: asks for the file and, after writing it, whether it is for new plots, too. False
// where nothing was saved.
bool UpdatePlotTemplate(const PlotPage& plot, const TemplateSelection& selection, Settings& settings, Prompter& user);

}  // namespace quorvex
