#include "plot/PlotBoxes.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "core/NumberText.h"
#include "drawing/DrawPlotText.h"
#include "drawing/Markers.h"
#include "drawing/StyledLines.h"
#include "plot/DrawBands.h"

namespace quorvex {
namespace {

// A position never comes closer to the page's edge than this.
constexpr std::int32_t kLeastPosition = 2;
constexpr std::int32_t kBlack = 0;
constexpr std::int32_t kShadow = 5;  // how far it reaches beyond the box, in units of line weight

// A row of the legend.
struct LegendEntry {
  const SeriesStyle* Style;
  PlotText Text;
  std::optional<BandColors> Band;  // of a series' band, which has a row behind that of the series
  std::int32_t Height = 0;         // of the row
  std::int32_t Sample = 0;         // length of the line's sample
};

// Where a box of that size stands; `corner` is the upper left corner of one that nobody has placed.
DeviceRect Place(PlotBox& box, const PlotPage& plot, const DeviceMetrics& metrics, DeviceExtent size,
                 DevicePoint corner) {
  const DeviceRect& m = metrics.Margins;
  if (box.Placed()) {
    const double across = metrics.Width - m.left - m.right, down = metrics.Height - m.top - m.bottom;
    // A place may come from a file, and lie anywhere; beyond the page nobody sees the box.
    const auto onPage = [](double at, std::int32_t end) { return RoundToInt32(std::clamp(at, 0.0, 1.0 * end)); };
    corner = {onPage(across / plot.InitPlotWidth * static_cast<double>(box.Left) + m.left, metrics.Width),
              onPage(down / plot.InitPlotHeight * static_cast<double>(box.Top) + m.top, metrics.Height)};
  }
  corner = {std::max(corner.x, kLeastPosition), std::max(corner.y, kLeastPosition)};
  box.Width = static_cast<float>(size.cx);
  box.Height = static_cast<float>(size.cy);
  return {corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
}

// Shadow, area and border.
void DrawBox(DrawingSurface& surface, const PlotBox& box, const PlotPage& plot, const DeviceMetrics& metrics,
             const DeviceRect& where) {
  const std::int32_t s = metrics.PenScale;
  if (box.ShowShadow) {
    const SelectedObject pen(surface, surface.CreatePen(0, 1, kBlack));
    const SelectedObject brush(surface, surface.CreateSolidBrush(kBlack));
    surface.Rectangle(where.left + kShadow * s, where.top + kShadow * s, where.right + (kShadow - 1) * s,
                      where.bottom + (kShadow - 1) * s);
  }
  const std::int32_t area = box.AreaType == 1 ? box.AreaColor : PaperColor(plot, metrics);
  const SelectedObject brush(surface, surface.CreateSolidBrush(area));
  const SelectedObject pen(surface, box.BorderType == 1 ? surface.CreatePen(0, box.BorderWidth * s, box.BorderColor)
                                                        : surface.CreatePen(0, 1, area));
  surface.Rectangle(where.left, where.top, where.right, where.bottom);
}

std::vector<LegendEntry> MeasureRows(DrawingSurface& surface, const PlotPage& plot, const DeviceMetrics& metrics) {
  std::vector<LegendEntry> rows;
  std::int32_t height = 0;  // a row is no lower than those above it
  for (const PlotSeries& series : plot.PlotData) {
    const SeriesStyle& style = series.Style();
    if (!plot.IsShown(series) || style.LegendText.empty()) continue;
    LegendEntry row{&style, ParsePlotText(surface, style.LegendText, plot.PlotLegendFont, 0), {}};
    height = std::max({height, row.Text.Size.cy, RoundToInt32(style.MarkerSize * metrics.DevicePpi / 72.0)});
    row.Height = height;
    row.Sample = GetLineSampleLength(style.DrawStyle, style.DrawWidth, 2 * metrics.Margin4X, metrics.PenScale);
    rows.push_back(std::move(row));
    const std::vector<BandKind> bands = series.ShownBands();
    for (auto kind = bands.rbegin(); kind != bands.rend(); ++kind) {  // the inner one first
      const std::string name = BandName(*kind, static_cast<std::size_t>(style.BandLevel));
      LegendEntry band{&style, ParsePlotText(surface, name, plot.PlotLegendFont, 0),
                       ColorsOfBand(*kind, style.DrawColor, PaperColor(plot, metrics))};
      band.Height = height = std::max(height, band.Text.Size.cy);
      band.Sample = 2 * metrics.Margin4X;
      rows.push_back(std::move(band));
    }
  }
  return rows;
}

// A series' marker and line, from x0 on and around the height y, where `longest` is the room for a sample.
void DrawSample(DrawingSurface& surface, const LegendEntry& row, const DeviceMetrics& metrics, std::int32_t x0,
                std::int32_t y, std::int32_t longest) {
  const SeriesStyle& style = *row.Style;
  if (row.Band) {
    const SelectedObject pen(surface, surface.CreatePen(0, metrics.PenScale, row.Band->Edge));
    const SelectedObject brush(surface, surface.CreateSolidBrush(row.Band->Area));
    return surface.Rectangle(x0, y - row.Height / 3, x0 + longest, y + row.Height / 3);
  }
  if (style.DisplayMarker) {
    const std::array<std::int32_t, 1> atX = {x0 + longest / 2}, atY = {y};
    DrawMarkers(surface, atX, atY, style.MarkerColor, style.MarkerStyle, metrics.MarkerRadius(style.MarkerSize),
                metrics.PenScale);
  }
  if (style.DisplayLine) {
    // A pattern ends whole, unless there is room for several of it.
    const bool whole = style.DrawStyle != 0 && longest <= 2 * row.Sample;
    DrawStyledSegment(surface, {x0, y}, {x0 + (whole ? row.Sample : longest), y}, style.DrawStyle, style.DrawWidth,
                      style.DrawColor, metrics.PenScale);
  }
}

// The corner of the frame where a box of that size hides least.
DevicePoint QuietCorner(const DeviceRect& frame, const DeviceMetrics& metrics, DeviceExtent size,
                        const HiddenBy& hidden) {
  const std::int32_t left = frame.left + metrics.Margin2X, right = frame.right - metrics.Margin2X - size.cx;
  const std::int32_t top = frame.top + metrics.Margin2Y, bottom = frame.bottom - metrics.Margin2Y - size.cy;
  DevicePoint best;
  double least = std::numeric_limits<double>::infinity();
  for (const DevicePoint& corner : {DevicePoint{right, top}, {left, top}, {right, bottom}, {left, bottom}}) {
    const double hides = hidden({corner.x, corner.y, corner.x + size.cx, corner.y + size.cy});
    // On a tie the earlier corner wins, so they are listed as legends are looked for.
    if (hides >= least) continue;
    least = hides;
    best = corner;
  }
  return best;
}

}  // namespace

DeviceRect DrawPageTitle(DrawingSurface& surface, const PlotPage& plot, const DeviceMetrics& metrics,
                         const PlotText& title, const DeviceRect& frame) {
  const DeviceRect area = metrics.TitleArea();
  const auto [cx, cy] = title.Size;
  const std::int32_t bottom = frame.top - metrics.Margin2Y;
  const std::int32_t left =
      std::max(area.left, std::min(RoundToInt32((frame.left + frame.right - cx) / 2.0), area.right - cx));
  surface.SetTextColor(plot.PlotTitleColor);
  DrawPlotText(surface, title, PlotTextFonts(surface, plot.PlotTitleFont, 0), left, bottom - cy);
  return {left, bottom - cy, left + cx, bottom};
}

DeviceRect DrawLegend(DrawingSurface& surface, PlotPage& plot, const DeviceMetrics& metrics, const DeviceRect& frame,
                      const HiddenBy& hidden) {
  const std::vector<LegendEntry> rows = MeasureRows(surface, plot, metrics);
  if (rows.empty()) return {};
  std::int32_t height = 0, textWidth = 0, longest = 0;
  for (const LegendEntry& row : rows) {
    height += row.Height;
    textWidth = std::max(textWidth, row.Text.Size.cx);
    longest = std::max(longest, row.Sample);
  }
  const DeviceExtent size{textWidth + 5 * metrics.Margin2X + longest, height + 2 * metrics.Margin2Y};
  const DevicePoint corner = plot.Legend.Placed() ? DevicePoint{} : QuietCorner(frame, metrics, size, hidden);
  const DeviceRect where = Place(plot.Legend, plot, metrics, size, corner);
  DrawBox(surface, plot.Legend, plot, metrics, where);

  const PlotTextFonts fonts(surface, plot.PlotLegendFont, 0);
  surface.SetBkMode(1);
  surface.SetTextColor(plot.PlotLegendColor);
  const std::int32_t x = where.left + metrics.Margin2X;
  std::int32_t y = where.top + metrics.Margin2Y;
  for (const LegendEntry& row : rows) {
    DrawPlotText(surface, row.Text, fonts, x, y);
    DrawSample(surface, row, metrics, x + 2 * metrics.Margin2X + textWidth, y + row.Height / 2, longest);
    y += row.Height;
  }
  return where;
}

DeviceRect DrawFootNote(DrawingSurface& surface, PlotPage& plot, const DeviceMetrics& metrics) {
  const std::vector<std::string> lines = SplitFootNoteLines(plot.FootNoteText);
  if (lines.empty()) return {};
  const SurfaceObject font = CreatePlotFont(plot.FootNoteFont, 0, surface);
  const Selection inUse(surface, font);
  std::vector<std::int32_t> widths;
  std::int32_t lineHeight = 0;
  for (const std::string& line : lines) {
    const DeviceExtent extent = surface.GetTextExtentPoint32A(line);
    widths.push_back(extent.cx);
    lineHeight = std::max(lineHeight, extent.cy);
  }
  const DeviceExtent size{*std::max_element(widths.begin(), widths.end()) + 2 * metrics.Margin2X,
                          static_cast<std::int32_t>(lines.size()) * lineHeight + 2 * metrics.Margin2Y};
  const DeviceRect& m = metrics.Margins;
  const DeviceRect where = Place(plot.FootNote, plot, metrics, size,
                                 {m.left + metrics.Margin2X, metrics.Height - m.bottom - metrics.Margin2Y - size.cy});
  DrawBox(surface, plot.FootNote, plot, metrics, where);

  surface.SetBkMode(1);
  surface.SetTextColor(plot.FootNoteColor);
  std::int32_t y = where.top + metrics.Margin2Y;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::int32_t x = where.left + metrics.Margin2X;
    if (plot.FootNoteAlign == 1) x = where.right - widths[i] - metrics.Margin2X;
    if (plot.FootNoteAlign == 2) x = RoundToInt32((where.left + where.right - widths[i]) / 2.0);
    surface.TextOutA(x, y, lines[i]);
    y += lineHeight;
  }
  return where;
}

std::vector<std::string> SplitFootNoteLines(std::string_view text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\r')
      lines.emplace_back();
    else if (c != '\n')
      lines.back() += c;
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

}  // namespace quorvex
