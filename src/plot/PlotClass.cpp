#include "plot/PlotClass.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "plot/AxisLabels.h"

namespace quorvex {
namespace {

// The settings of one axis; `prefix` is "x" or "y".
void ReadAxis(const Settings& settings, const std::string& prefix, PlotAxis& axis) {
  axis.AxisNumberFont.Size = 8;
  ReadFont(settings, prefix + "axistitle", "", axis.AxisTitleFont, axis.AxisTitleColor);
  ReadFont(settings, prefix + "axisnumber", "", axis.AxisNumberFont, axis.AxisNumberColor);
  axis.LabelString = settings.Text(prefix + "labelstring");
  axis.LogScale = settings.Flag(prefix + "logscale");
}

// Whole decades around the limits that the user chose, or the data's where a chosen one isn't positive.
void RoundToDecades(PlotAxis& axis, double dataMin, double dataMax) {
  if (!axis.LogScale) return;
  axis.Take(RecomputeLogAxisLimits(axis.Min <= 0 ? dataMin : axis.Min, axis.Max <= 0 ? dataMax : axis.Max));
  axis.NumMinorTicks = 10;
}

}  // namespace

void PlotAxis::Take(const AxisLimits& limits) {
  Min = limits.Min;
  Max = limits.Max;
  NumMajorTicks = static_cast<std::int16_t>(limits.Ticks);
  LogScale = limits.Log;
  if (LogScale) NumMinorTicks = 10;
}

PlotClass::PlotClass(const Settings& settings, const LocaleText& locale) : PlotPage(settings, locale) {
  ReadAxis(settings, "x", X);
  ReadAxis(settings, "y", Y);
  SwapAxis = settings.Flag("swapaxis");
  PointsPerPlot = static_cast<std::int16_t>(std::clamp(settings.Integer("pointsperplot"), 3, 5000));
  Extrapolate = settings.Flag("extrapolate2d");
  PlotAtFittedOnly = settings.Flag("plotatfittedonly");
  Make2DSquare = settings.Flag("make2dsquare");
}

PlotClass::DataLimits PlotClass::GetDataLimits() const {
  DataLimits limits;
  bool first = true;
  for (const PlotSeries& series : PlotData) {
    if (!series.Displayed()) continue;
    const DataLimits own{series.InputXMin(), series.InputXMax(), series.InputYMin(), series.InputYMax()};
    if (first) limits = own;
    first = false;
    limits = {std::min(limits.XMin, own.XMin), std::max(limits.XMax, own.XMax), std::min(limits.YMin, own.YMin),
              std::max(limits.YMax, own.YMax)};
  }
  return limits;
}

void PlotClass::ResolveAxisScales(bool automatic) {
  const DataLimits data = GetDataLimits();
  // Equal limits are those of a plot for which nobody has chosen any.
  if (automatic || X.Min == X.Max || Y.Min == Y.Max) {
    X.Take(AutomaticLimits(data.XMin, data.XMax, X.LogScale));
    Y.Take(AutomaticLimits(data.YMin, data.YMax, Y.LogScale));
  } else {
    RoundToDecades(X, data.XMin, data.XMax);
    RoundToDecades(Y, data.YMin, data.YMax);
  }
}

std::optional<PlotClass::Scales> PlotClass::SuggestScale(bool xLog, bool yLog) const {
  const DataLimits data = GetDataLimits();
  try {
    return Scales{AutomaticLimits(data.XMin, data.XMax, xLog), AutomaticLimits(data.YMin, data.YMax, yLog)};
  } catch (const NumericFault&) {
    return std::nullopt;
  }
}

bool PlotClass::CreateGraph(const CreateOptions& options, Prompter& prompter) {
  PlotCreated = false;
  try {
    ResolveAxisScales(options.Auto);
    for (PlotAxis* axis : {&Y, &X}) {
      axis->Labels = MakeAxisLabels(axis->Limits(), axis->LabelString, options.AutoFormat);
      for (std::string& label : axis->Labels) label = LocalizeExpression(label, Locale);
    }
    const TableRange range{X.Min, X.Max, PlotAtFittedOnly ? kInputPoints : PointsPerPlot, X.LogScale};
    if (options.Regenerate)
      for (PlotSeries& series : PlotData)
        if (!series.GenerateTable(range, Extrapolate)) throw NumericFault();
    PlotCreated = true;
  } catch (const NumericFault&) {
    prompter.Refuse(kPlotFailure);
  }
  return PlotCreated;
}

bool PlotClass::AutoFormatted() const {
  return PlotCreated && X.LabelString == BuildAutoLabelFormat(X.Limits()) &&
         Y.LabelString == BuildAutoLabelFormat(Y.Limits());
}

bool PlotClass::SetLogScale(PlotAxis PlotClass::*axis, bool log, Prompter& prompter) {
  const bool autoFormat = AutoFormatted();
  PlotAxis& changed = this->*axis;
  changed.LogScale = log;
  if (!log) changed.NumMinorTicks = PlotAxis().NumMinorTicks;
  return CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = autoFormat}, prompter);
}

std::optional<CurveHit> PlotClass::CurveIsClose(double x, double y, double tolerance) const {
  const AxisMap& mapX = SwapAxis ? shown_.Vertical : shown_.Horizontal;
  const AxisMap& mapY = SwapAxis ? shown_.Horizontal : shown_.Vertical;
  if (SwapAxis) std::swap(x, y);
  std::optional<CurveHit> hit;
  double nearest = tolerance;
  for (std::size_t s = 0; s < PlotData.size(); ++s) {
    if (!PlotData[s].Displayed()) continue;
    const SeriesTable table = PlotData[s].CopyDataTo();
    for (std::size_t i = 0; i < table.Y.size(); ++i) {
      const double dx = std::abs(x - mapX.ToDevice(table.X[i]));
      // Most points are too far away already, and need not be looked at any further.
      if (dx > nearest) continue;
      const double distance = std::max(dx, std::abs(y - mapY.ToDevice(table.Y[i])));
      if (distance > nearest || (hit && distance == nearest)) continue;
      nearest = distance;
      hit = {s, i};
    }
  }
  return hit;
}

}  // namespace quorvex
