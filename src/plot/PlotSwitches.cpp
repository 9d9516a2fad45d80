#include "plot/PlotSwitches.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "plot/PlotClass.h"

namespace quorvex {
namespace {

template <auto... members>
constexpr PlotSwitch Of(const char* name, const char* text) {
  return MemberSwitch<PlotClass, members...>(name, text);
}

constexpr PlotSwitch kSwitches[] = {
    LogScaleSwitch<0>("XLogScale", "Logarithmic &X Axis"),
    LogScaleSwitch<1>("YLogScale", "Logarithmic &Y Axis"),
    Of<&PlotClass::SwapAxis>("SwapAxis", "S&wap Axes"),
    Of<&PlotClass::Make2DSquare>("Make2DSquare", "S&quare Frame"),
    {},
    Of<&PlotClass::X, &FrameAxis::ShowMajorGrids>("ShowXMajorGrids", "X &Grid"),
    Of<&PlotClass::X, &FrameAxis::ShowMinorGrids>("ShowXMinorGrids", "X Mi&nor Grid"),
    Of<&PlotClass::Y, &FrameAxis::ShowMajorGrids>("ShowYMajorGrids", "Y Gri&d"),
    Of<&PlotClass::Y, &FrameAxis::ShowMinorGrids>("ShowYMinorGrids", "Y Min&or Grid"),
    Of<&PlotClass::X, &FrameAxis::ShowExtraTicks>("ShowExtraXTicks", "X &Ticks on Both Sides"),
    Of<&PlotClass::Y, &FrameAxis::ShowExtraTicks>("ShowExtraYTicks", "Y Tic&ks on Both Sides"),
    {},
    kLegendSwitch,
    kErrorBarSwitch,
};

}  // namespace

std::span<const PlotSwitch> PlotClass::Switches() const { return kSwitches; }

bool HasErrorBars(const PlotSeries& series) { return !series.CopyMaXMinErrorDataTo().Max.empty(); }

bool HasErrorBars(const PlotPage& page) {
  return std::ranges::any_of(page.PlotData, [](const PlotSeries& series) { return HasErrorBars(series); });
}

bool ShowsErrorBars(const PlotPage& page) {
  return std::ranges::any_of(
      page.PlotData, [](const PlotSeries& series) { return HasErrorBars(series) && series.Style().ShowErrorBars; });
}

void ShowErrorBars(PlotPage& page, bool on, Prompter& prompter) {
  std::vector<AxisLimits> scales;
  std::vector<bool> log;
  for (const PlotAxis* axis : std::as_const(page).Axes()) {
    scales.push_back(axis->Limits());
    log.push_back(axis->LogScale);
  }
  // What the user chose stays; else the frame is to hold the bars.
  const bool automatic = page.SuggestScale(log) == scales, autoFormat = page.AutoFormatted();
  for (PlotSeries& series : page.PlotData)
    if (HasErrorBars(series)) series.Style().ShowErrorBars = on;
  if (automatic) page.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = autoFormat}, prompter);
}

}  // namespace quorvex
