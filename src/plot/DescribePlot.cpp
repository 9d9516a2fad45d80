#include "plot/DescribePlot.h"

#include "core/LocaleText.h"
#include "core/NumberText.h"
#include "drawing/PlotText.h"

namespace quorvex {
namespace {

constexpr int kDigits = 7;

std::string Quoted(std::string_view text) { return " \"" + std::string(text) + '"'; }
std::string QuotedPlain(std::string_view text) { return Quoted(WithoutTextCodes(text)); }

std::string Describe(const PlotAxis& axis, const char* name, const LocaleText& locale) {
  const auto number = [&](double value) { return LocalizeExpression(GeneralNumber(value, kDigits), locale); };
  std::string text = std::string(name) + " axis";
  if (!axis.AxisTitle.empty()) text += QuotedPlain(axis.AxisTitle);
  text += ": " + number(axis.Min) + " to " + number(axis.Max);
  return text + (axis.LogScale ? ", logarithmic." : ".");
}

std::string Describe(const PlotSeries& series) {
  std::string text = "Series";
  const DataClass* const data = series.Data();
  if (const std::string& legend = series.Style().LegendText; !legend.empty())
    text += QuotedPlain(legend);
  else if (data != nullptr && !data->Description.empty())
    text += QuotedPlain(data->Description);  // what explains itself to the eye
  text += ": ";
  // What it keeps of its points is one for each X, so it does not know how many there were.
  if (const ModelClass* const model = series.Model()) {
    text += "the model" + Quoted(model->id);
    for (const char* join = " with its bands of "; const BandKind kind : series.ShownBands()) {
      text += join + BandName(kind, static_cast<std::size_t>(series.Style().BandLevel));
      join = " and ";
    }
    return text + '.';
  }
  if (const InterpClass* const curve = series.Interpolation())
    return text + "the interpolation" + Quoted(curve->Description) + '.';
  text += std::to_string(series.NumInputX()) + (series.NumInputX() == 1 ? " point" : " points");
  if (series.Style().ShowErrorBars) text += " with error bars";
  return text + '.';
}

}  // namespace

std::string DescribePlot(const PlotPage& plot) {
  constexpr const char* kFrame[] = {"X", "Y"};
  constexpr const char* kBox[] = {"X1", "X2", "Y"};
  const std::vector<const PlotAxis*> axes = plot.Axes();
  const bool box = axes.size() > std::size(kFrame);
  std::string text = box ? "Plot in three dimensions." : "Plot in two dimensions.";
  if (!plot.PlotTitle.empty()) text += " Title:" + QuotedPlain(plot.PlotTitle) + '.';
  for (std::size_t i = 0; i < axes.size(); ++i) text += ' ' + Describe(*axes[i], (box ? kBox : kFrame)[i], plot.Locale);
  for (const PlotSeries& series : plot.PlotData)
    if (plot.IsShown(series)) text += ' ' + Describe(series);
  return text;
}

}  // namespace quorvex
