#include "results/CurvesPlot.h"

#include <utility>

#include "results/ResultPlots.h"

namespace quorvex {

std::unique_ptr<PlotPage> CurvesPlot(std::vector<PlotSeries> curves, const Settings& settings,
                                     const LocaleText& locale) {
  auto plot = std::make_unique<PlotClass>(settings, locale);
  plot->PlotTitle = "Plot";
  plot->X.AxisTitle = "X";
  plot->Y.AxisTitle = "Y";
  for (PlotSeries& curve : curves) {
    if (!curve.Displayed()) curve.Style().DisplayLine = true;
    if (curves.size() > 1) TellApart(curve.Style(), plot->PlotData.size());
    plot->PlotData.push_back(std::move(curve));
  }
  return plot;
}

}  // namespace quorvex
