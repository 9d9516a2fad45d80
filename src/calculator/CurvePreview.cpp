#include "calculator/CurvePreview.h"

#include <utility>

namespace quorvex {

bool PreviewCurve(PlotClass& plot, PlotSeries curve, const Settings& settings, Prompter& user) {
  PlotClass small(settings, plot.Locale);
  small.Legend.Show = small.FootNote.Show = false;
  constexpr double kSmallFont = 7;
  small.TickPenLength = 0.06F;
  for (FrameAxis* axis : {&small.X, &small.Y}) {
    axis->LogScale = axis->ShowMajorGrids = axis->ShowMinorGrids = false;
    axis->AxisNumberFont.Size = axis->AxisTitleFont.Size = kSmallFont;
  }
  SeriesStyle& style = curve.Style();
  if (!curve.Displayed()) style.DisplayLine = true;
  small.PlotData.push_back(std::move(curve));
  const bool created = small.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user);
  plot = std::move(small);
  return created;
}

}  // namespace quorvex
