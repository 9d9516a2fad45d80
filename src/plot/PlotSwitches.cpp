#include "plot/PlotSwitches.h"

#include <algorithm>

namespace quorvex {
namespace {

template <FrameAxis PlotClass::*axis>
constexpr PlotSwitch LogScaleSwitch(const char* name, const char* text) {
  return {name, text, [](const PlotClass& plot) { return (plot.*axis).LogScale; },
          [](PlotClass& plot, bool on, Prompter& prompter) { plot.SetLogScale(plot.*axis, on, prompter); }};
}

template <bool PlotClass::*field>
constexpr PlotSwitch PageSwitch(const char* name, const char* text) {
  return {name, text, [](const PlotClass& plot) { return plot.*field; },
          [](PlotClass& plot, bool on, Prompter&) { plot.*field = on; }};
}

template <FrameAxis PlotClass::*axis, bool FrameAxis::*field>
constexpr PlotSwitch AxisSwitch(const char* name, const char* text) {
  return {name, text, [](const PlotClass& plot) { return plot.*axis.*field; },
          [](PlotClass& plot, bool on, Prompter&) { plot.*axis.*field = on; }};
}

bool HasErrorBars(const PlotClass& plot) {
  return std::ranges::any_of(plot.PlotData,
                             [](const PlotSeries& series) { return !series.CopyMaXMinErrorDataTo().Max.empty(); });
}

bool ShowsErrorBars(const PlotClass& plot) {
  return std::ranges::any_of(plot.PlotData, [](const PlotSeries& series) { return series.Style().ShowErrorBars; });
}

void ShowErrorBars(PlotClass& plot, bool on, Prompter&) {
  for (PlotSeries& series : plot.PlotData)
    series.Style().ShowErrorBars = on && !series.CopyMaXMinErrorDataTo().Max.empty();
}

constexpr PlotSwitch kSwitches[] = {
    LogScaleSwitch<&PlotClass::X>("XLogScale", "Logarithmic &X Axis"),
    LogScaleSwitch<&PlotClass::Y>("YLogScale", "Logarithmic &Y Axis"),
    PageSwitch<&PlotClass::SwapAxis>("SwapAxis", "S&wap Axes"),
    PageSwitch<&PlotClass::Make2DSquare>("Make2DSquare", "S&quare Frame"),
    {},
    AxisSwitch<&PlotClass::X, &FrameAxis::ShowMajorGrids>("ShowXMajorGrids", "X &Grid"),
    AxisSwitch<&PlotClass::X, &FrameAxis::ShowMinorGrids>("ShowXMinorGrids", "X Mi&nor Grid"),
    AxisSwitch<&PlotClass::Y, &FrameAxis::ShowMajorGrids>("ShowYMajorGrids", "Y Gri&d"),
    AxisSwitch<&PlotClass::Y, &FrameAxis::ShowMinorGrids>("ShowYMinorGrids", "Y Min&or Grid"),
    AxisSwitch<&PlotClass::X, &FrameAxis::ShowExtraTicks>("ShowExtraXTicks", "X &Ticks on Both Sides"),
    AxisSwitch<&PlotClass::Y, &FrameAxis::ShowExtraTicks>("ShowExtraYTicks", "Y Tic&ks on Both Sides"),
    {},
    {"ShowLegend", "&Legend", [](const PlotClass& plot) { return plot.Legend.Show; },
     [](PlotClass& plot, bool on, Prompter&) { plot.Legend.Show = on; }},
    {"ShowErrorBars", "&Error Bars", ShowsErrorBars, ShowErrorBars, HasErrorBars},
};

}  // namespace

std::span<const PlotSwitch> PlotSwitches() { return kSwitches; }

}  // namespace quorvex
