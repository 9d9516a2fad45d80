#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "../tests/drawing/RecordingSurface.h"
#include "Require.h"
#include "core/QuietPrompter.h"
#include "core/TextEncoding.h"
#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "files/PlotTemplate.h"
#include "files/PlotTemplateKeys.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// A plot of points and of a model through them.
template <typename Plot, typename Model>
Plot PlotToShape(const std::string& formula, const std::vector<std::vector<double>>& x, const std::vector<double>& y) {
  Plot plot{Settings()};
  DataClass data;
  data.GenerateTable(x, y);
  data.GenerateErrorTable(std::vector<double>(y.size(), 0.5));
  plot.PlotData.emplace_back(std::move(data));
  auto model = std::make_unique<Model>(LocaleText());
  model->SetID("model", {formula});
  SolveData input;
  input.X = x;
  input.Y = y;
  input.SD = input.sig = std::vector<double>(y.size(), 1);
  model->SetIC(input);
  for (int i = 1; i <= model->NumDependentVar(); ++i) model->SetValue(i, 1);
  plot.PlotData.emplace_back(std::move(model));
  return plot;
}

// Applies the text, writes the plot as a template, which must make another plot the same, and draws it.
template <typename Plot>
void ShapeAndDraw(Plot plot, Plot other, std::string_view text) {
  const std::vector<std::string> groups = TemplateFormatOf(plot).Groups();
  const TemplateSelection everything(groups.begin(), groups.end());
  QuietPrompter prompter;
  ApplyTemplateText(plot, text, &prompter);
  const std::string written = TemplateText(plot, everything);
  ApplyTemplateText(other, written, nullptr);
  Require(TemplateText(other, everything) == written, "a template that reads back as another");
  for (const PlotAxis* axis : plot.Axes()) Require(axis->Min <= axis->Max, "an axis that runs backwards");
  RecordingSurface surface;
  if (plot.CreateGraph({.Regenerate = true}, prompter)) plot.RefreshPlot(surface, prompter);
  Require(surface.ObjectCount() == 0, "a drawing that leaves objects behind");
}

inline int FuzzTemplate(const std::uint8_t* data, std::size_t size) {
  const std::string text = DecodeText({reinterpret_cast<const char*>(data), size});
  const auto flat = [] { return PlotToShape<PlotClass, EqClass>("a+b*x", {{1, 2, 4}}, {1, 3, 2}); };
  const auto solid = [] { return PlotToShape<PlotClass3D, MvClass>("a+b*x1+c*x2", {{1, 2, 4}, {2, 1, 3}}, {1, 3, 2}); };
  ShapeAndDraw(flat(), flat(), text);
  ShapeAndDraw(solid(), solid(), text);
  return 0;
}

}  // namespace quorvex
