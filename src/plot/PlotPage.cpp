#include "plot/PlotPage.h"

#include <algorithm>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "core/SerialDate.h"
#include "plot/AxisLabels.h"
#include "plot/PlotBoxes.h"
#include "plot/PlotDefaults.h"
#include "plot/PropertyField.h"

namespace quorvex {
namespace {

constexpr std::int32_t kWhite = 0xFFFFFF;
constexpr std::size_t kLongestPattern = 255;  // characters; each number of an axis may be as long

// Whole decades around the limits that the user chose, or the data's where a chosen one isn't positive. A limit chosen
// may lie beyond the data's other one; then both are the data's.
void RoundToDecades(PlotAxis& axis, double dataMin, double dataMax) {
  if (!axis.LogScale) return;
  const double min = axis.Min <= 0 ? dataMin : axis.Min, max = axis.Max <= 0 ? dataMax : axis.Max;
  axis.Take(min <= max ? RecomputeLogAxisLimits(min, max) : RecomputeLogAxisLimits(dataMin, dataMax));
  axis.NumMinorTicks = 10;
}

template <typename Io, typename Page>
void ListDefaults(const Io& io, Page& page) {
  io.Font("plottitle", "", page.PlotTitleFont, page.PlotTitleColor);
  io.Font("plotlegend", "", page.PlotLegendFont, page.PlotLegendColor);
  io.Font("footnote", "", page.FootNoteFont, page.FootNoteColor);
  io("tickpencolor", page.TickPenColor);
  io("tickpenwidth", page.TickPenWidthMajor, 1, 5);
  io("tickpenwidthminor", page.TickPenWidthMinor, 1, 5);
  io("tickpenlength", page.TickPenLength, 0, 10);
  io("plotatfittedonly", page.PlotAtFittedOnly);
}

}  // namespace

PlotPage::PlotPage(const Settings& settings, const LocaleText& locale) : Locale(locale) {
  PlotTitleFont.Size = 12;
  PlotLegendFont.Size = FootNoteFont.Size = 8;
  ListDefaults(ReadDefaults(settings), *this);
  // Paper where nobody has chosen: the key's default text would be black, and so are lines and letters.
  PlotBackgroundColor = settings.Has("plotbackgroundcolor") ? settings.Integer("plotbackgroundcolor") : kWhite;
  Legend.Show = true;
  Legend.AreaColor = FootNote.AreaColor = PlotBackgroundColor;
}

void PlotPage::StoreDefaults(Settings& settings) const {
  ListDefaults(KeepDefaults(settings), *this);
  settings.SetNumber("plotbackgroundcolor", PlotBackgroundColor);
}

std::vector<const PlotAxis*> PlotPage::Axes() const {
  const std::vector<PlotAxis*> axes = const_cast<PlotPage*>(this)->Axes();
  return {axes.begin(), axes.end()};
}

std::vector<PlotPage::DataLimits> PlotPage::GetDataLimits(const std::vector<bool>& log) const {
  std::vector<DataLimits> limits(Axes().size());
  bool first = true;
  for (const PlotSeries& series : PlotData) {
    if (!IsShown(series)) continue;
    for (std::size_t axis = 0; axis < limits.size(); ++axis) {
      const int variable = static_cast<int>(axis) + 1;
      const bool last = axis + 1 == limits.size();
      DataLimits own = last ? DataLimits{series.InputYMin(), series.InputYMax()}
                            : DataLimits{series.InputXMin(variable), series.InputXMax(variable)};
      if (last && series.Style().ShowErrorBars) {
        const ErrorTable bars = series.CopyMaXMinErrorDataTo();
        for (const double end : bars.Max) own.Max = std::max(own.Max, end);
        for (const double end : bars.Min)
          if (end > 0 || !log[axis]) own.Min = std::min(own.Min, end);
      }
      if (last) series.WidenByBands(log[axis], own.Min, own.Max);
      DataLimits& all = limits[axis];
      all = first ? own : DataLimits{std::min(all.Min, own.Min), std::max(all.Max, own.Max)};
    }
    first = false;
  }
  return limits;
}

void PlotPage::ResolveAxisScales(bool automatic) {
  const std::vector<PlotAxis*> axes = Axes();
  std::vector<bool> log;
  for (const PlotAxis* axis : axes) log.push_back(axis->LogScale);
  const std::vector<DataLimits> data = GetDataLimits(log);
  // Equal limits are those of a plot for which nobody has chosen any.
  automatic = automatic || std::ranges::any_of(axes, [](const PlotAxis* axis) { return axis->Min == axis->Max; });
  for (std::size_t i = 0; i < axes.size(); ++i)
    if (automatic)
      axes[i]->Take(axes[i]->AutomaticLimits(data[i].Min, data[i].Max, axes[i]->LogScale));
    else
      RoundToDecades(*axes[i], data[i].Min, data[i].Max);
}

std::optional<std::vector<AxisLimits>> PlotPage::SuggestScale(const std::vector<bool>& log) const {
  const std::vector<DataLimits> data = GetDataLimits(log);
  const std::vector<const PlotAxis*> axes = Axes();
  std::vector<AxisLimits> scales;
  try {
    for (std::size_t i = 0; i < data.size(); ++i)
      scales.push_back(axes[i]->AutomaticLimits(data[i].Min, data[i].Max, log[i]));
  } catch (const NumericFault&) {
    return std::nullopt;
  }
  return scales;
}

bool PlotPage::CreateGraph(const CreateOptions& options, Prompter& prompter) {
  PlotCreated = false;
  try {
    ResolveAxisScales(options.Auto);
    for (PlotAxis* axis : Axes()) {
      axis->LabelString = FirstCharacters(axis->LabelString, kLongestPattern);
      axis->Labels = MakeAxisLabels(axis->Limits(), axis->LabelString, options.AutoFormat, axis->CountsRows());
      if (IsDatePattern(axis->LabelString)) continue;  // the points of a date are no decimal ones
      for (std::string& label : axis->Labels) label = LocalizeExpression(label, Locale);
    }
    if (options.Regenerate)
      for (PlotSeries& series : PlotData)
        if (!GenerateTable(series)) throw NumericFault();
    PlotCreated = true;
  } catch (const NumericFault&) {
    prompter.Refuse(kPlotFailure);
  }
  return PlotCreated;
}

bool PlotPage::AutoFormatted() const {
  // What failed in drawing only is formatted nevertheless, but not scales that have no numbers.
  try {
    return std::ranges::all_of(Axes(), [](const PlotAxis* axis) {
      return !axis->Labels.empty() && (IsDatePattern(axis->LabelString) ||
                                       axis->LabelString == BuildAutoLabelFormat(axis->Limits(), axis->CountsRows()));
    });
  } catch (const NumericFault&) {
    return false;
  }
}

std::string PlotPage::LogScaleRefusal(std::size_t axis) {
  std::vector<std::string> refusals;
  for (const FieldPage& page : Fields())
    for (const FieldGroup& group : page.Groups)
      if (group.Scale) refusals.push_back(group.Scale->LogScale);
  return refusals.at(axis);
}

bool PlotPage::SetLogScale(PlotAxis& axis, bool log, Prompter& prompter) {
  const std::vector<PlotAxis*> axes = Axes();
  const auto place = static_cast<std::size_t>(std::ranges::find(axes, &axis) - axes.begin());
  std::vector<bool> logs(axes.size());
  logs[place] = log;
  if (const auto scales = SuggestScale(logs); log && scales && !(*scales)[place].Log) {
    prompter.Refuse(LogScaleRefusal(place));
    return false;
  }
  const bool autoFormat = AutoFormatted();
  axis.LogScale = log;
  if (!log) axis.NumMinorTicks = PlotAxis().NumMinorTicks;
  return CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = autoFormat}, prompter);
}

bool PlotPage::DrawGraph(DrawingSurface& surface, Prompter& prompter, const PageSetup& page) {
  PlotPicture picture;
  return DrawOn(surface, prompter, page, picture);
}

void PlotPage::RefreshPlot(DrawingSurface& window, Prompter& prompter) {
  if (Legend.Dragging || FootNote.Dragging || !PlotCreated) return;
  window.SetMapMode(8);
  window.SetWindowOrgEx(0, 0);
  window.SetViewportOrgEx(0, 0);
  window.SetWindowExtEx(window.ScaleWidth(), window.ScaleHeight());
  window.SetViewportExtEx(window.ScaleWidth(), window.ScaleHeight());
  // Where drawing fails, the mouse must not find what the old picture showed.
  shown_ = {};
  DrawOn(window, prompter, {}, shown_);
}

bool PlotPage::DrawOn(DrawingSurface& surface, Prompter& prompter, const PageSetup& page, PlotPicture& picture) {
  if (!PlotCreated) return false;
  // A window may be so small that it isn't a millimetre wide: there is nothing to see, and nothing wrong.
  if (surface.GetDeviceCaps(DeviceCap::HORZSIZE) <= 0 || surface.GetDeviceCaps(DeviceCap::VERTSIZE) <= 0) return true;
  const DeviceMetrics metrics = DeviceMetrics::Measure(surface, page, static_cast<double>(TickPenLength));
  if (const auto refusal = CheckMargins(metrics.Margins, metrics.Width, metrics.Height)) {
    prompter.Refuse(*refusal);
    return false;
  }
  // The first size is the unit in which the places of legend and footnote are kept.
  if (InitPlotWidth == 0 || InitPlotHeight == 0) {
    InitPlotWidth = surface.GetDeviceCaps(DeviceCap::HORZRES);
    InitPlotHeight = surface.GetDeviceCaps(DeviceCap::VERTRES);
  }
  DrawPageBackground(surface, metrics, PlotBackgroundColor);
  if (const auto failure = DrawContents(surface, metrics, picture)) {
    PlotCreated = false;
    prompter.Refuse(*failure);
    return false;
  }
  const bool room = picture.Frame != DeviceRect{};  // that titles and numbers leave
  if (room && Legend.Show)
    picture.Legend = DrawLegend(surface, *this, metrics, picture.Frame,
                                [&](const DeviceRect& box) { return PointsWithin(box, picture); });
  if (room && FootNote.Show) picture.FootNote = DrawFootNote(surface, *this, metrics);
  if (const SurfaceHandle recording = surface.CloseEnhMetaFile()) MetafileHandle = recording;
  return true;
}

}  // namespace quorvex
