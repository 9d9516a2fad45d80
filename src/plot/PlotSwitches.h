#pragma once

#include "core/Prompter.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Something about a plot that the user turns on and off, or just does, where it has no state. One without a name
// separates groups.
struct PlotSwitch {
  const char* Name = nullptr;
  const char* Text = nullptr;  // for a menu
  bool (*IsOn)(const PlotPage& page) = nullptr;
  // May fail to, such as a logarithmic axis for what isn't positive; IsOn tells. The picture is to be drawn anew.
  void (*Turn)(PlotPage& page, bool on, Prompter& prompter) = nullptr;
  bool (*Applies)(const PlotPage& page) = nullptr;  // whether the plot has it at all; null: each has
  bool (*Matters)(const PlotPage& page) = nullptr;  // whether it shows as the plot is now; null: always
  const char* Menu = nullptr;                       // of several in a menu of that name just one is on
};

// A chain of members, from a plot of the class that has the first.
template <auto first, auto... rest>
auto& MemberOf(auto& object) {
  if constexpr (sizeof...(rest) == 0)
    return object.*first;
  else
    return MemberOf<rest...>(object.*first);
}

// The switch of such a member.
template <typename Plot, auto... members>
constexpr PlotSwitch MemberSwitch(const char* name, const char* text) {
  return {name, text, [](const PlotPage& page) -> bool { return MemberOf<members...>(static_cast<const Plot&>(page)); },
          [](PlotPage& page, bool on, Prompter&) { MemberOf<members...>(static_cast<Plot&>(page)) = on; }};
}

// That of an axis, by its place among the plot's.
template <std::size_t axis>
constexpr PlotSwitch LogScaleSwitch(const char* name, const char* text) {
  return {name, text, [](const PlotPage& page) { return page.Axes()[axis]->LogScale; },
          [](PlotPage& page, bool on, Prompter& prompter) { page.SetLogScale(*page.Axes()[axis], on, prompter); }};
}

inline constexpr PlotSwitch kLegendSwitch =
    MemberSwitch<PlotPage, &PlotPage::Legend, &PlotBox::Show>("ShowLegend", "&Legend");

// Of the error bars of data, where there are any.
bool HasErrorBars(const PlotSeries& series);
bool HasErrorBars(const PlotPage& page);
bool ShowsErrorBars(const PlotPage& page);
void ShowErrorBars(PlotPage& page, bool on, Prompter& prompter);
inline constexpr PlotSwitch kErrorBarSwitch = {"ShowErrorBars", "&Error Bars", ShowsErrorBars, ShowErrorBars,
                                               static_cast<bool (*)(const PlotPage&)>(HasErrorBars)};

}  // namespace quorvex
