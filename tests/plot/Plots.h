#pragma once

#include <memory>
#include <string>
#include <vector>

#include "RecordingPrompter.h"
#include "drawing/RecordingSurface.h"
#include "engine/EqClass.h"
#include "engine/Points.h"
#include "plot/PlotClass.h"

namespace quorvex {

// Points that are joined by a line, with error bars where they have deviations.
inline PlotSeries PointSeries(std::vector<double> x, std::vector<double> y, const std::string& legend = "",
                              std::vector<double> deviations = {}) {
  DataClass data;
  data.GenerateTable({std::move(x)}, std::move(y));
  data.GenerateErrorTable(std::move(deviations));
  return {std::move(data), {.LegendText = legend}};
}

// A model with given coefficients and the input x = 1 to 9, y = x.
inline std::unique_ptr<ModelClass> Curve(const std::string& text, const std::vector<double>& values) {
  const std::vector<double> x = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  auto model = std::make_unique<EqClass>(LocaleText());
  model->SetID("model", {text});
  model->SetIC(Points({x}, x));
  for (std::size_t i = 0; i < values.size(); ++i) model->SetValue(static_cast<int>(i) + 1, values[i]);
  return model;
}

// A plot without titles and legend, so that the frame's place follows from the labels alone.
inline PlotClass BarePlot() {
  PlotClass plot{Settings()};
  plot.Legend.Show = false;
  return plot;
}

}  // namespace quorvex
