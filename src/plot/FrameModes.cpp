#include "plot/FrameModes.h"

#include <algorithm>
#include <cmath>

#include "core/LocaleText.h"
#include "core/NumberText.h"
#include "plot/KeyStep.h"
#include "plot/PlotUndo.h"

namespace quorvex {
namespace {

constexpr double kLeastBandTwips = 60;  // a smaller band is a click whose second one is still to come
constexpr double kMarkTwips = 90;       // half the length of the cursor mark
constexpr double kCloseTwips = 60;      // to a curve point that counts as close

bool Ends(int event) { return event == FrameModes::kRight || event == FrameModes::kMiddle; }

// The part of an axis that a box covers, from its lower to its upper end on the device. Beyond the frame there is
// nothing to see; a box without an extent there changes nothing.
void TakePart(PlotAxis& axis, const AxisMap& map, double lower, double upper) {
  const auto [least, most] = std::minmax({axis.Min, axis.Max});
  const double from = std::clamp(map.ToData(lower), least, most), to = std::clamp(map.ToData(upper), least, most);
  if (lower == upper || from == to) return;
  axis.Min = from;
  axis.Max = to;
}

}  // namespace

void FrameModes::MouseDown(int button, double x, double y) {
  if (ZoomState != kIdle)
    Zoom(button, x, y);
  else if (CoordState)
    ShowCoords(button, x, y);
  else if (button == kLeft)
    drag_.MouseDown(x, y, plot_.Shown().Legend, plot_.Shown().FootNote);
}

void FrameModes::MouseMove(bool leftHeld, double x, double y) {
  if (ZoomState != kIdle)
    Zoom(kMove, x, y);
  else if (CoordState)
    ShowCoords(kMove, x, y);
  else
    drag_.MouseMove(leftHeld, x, y);
}

void FrameModes::MouseUp(int button, double x, double y) {
  if (button != kLeft) return;
  if (drag_.Dragging())
    drag_.DragDrop(x, y);
  else if (ZoomState == kBandOpen && std::abs(x - ZoomStartX) * host_.TwipsPerPixelX() >= kLeastBandTwips &&
           std::abs(y - ZoomStartY) * host_.TwipsPerPixelY() >= kLeastBandTwips)
    Zoom(kLeft, x, y);
}

void FrameModes::Zoom(int event, double x, double y) {
  if (ZoomState != kIdle) pointer_ = {x, y};
  if (ZoomState == kIdle) {
    if (plot_.Shown().Frame == DeviceRect{}) return;  // no picture to zoom into
    host_.DisableMenu();
    pointer_.reset();
    ZoomState = kArmed;
    host_.SetCursor(PlotCursor::kUpArrow);
  } else if (Ends(event)) {
    EndZoom();
    host_.RefreshPicture();
  } else if (ZoomState == kArmed && event == kLeft) {
    ZoomStartX = ZoomEndX = x;
    ZoomStartY = ZoomEndY = y;
    ZoomState = kBandOpen;
  } else if (ZoomState == kBandOpen) {
    ZoomEndX = x;
    ZoomEndY = y;
    if (event == kMove)
      host_.ShowOverlay(PlotOverlay::kRubberBand, RubberBand());
    else if (event == kLeft)
      ZoomInto();
  }
}

DeviceRect FrameModes::RubberBand() const {
  const auto unit = [](double place) { return static_cast<std::int32_t>(std::lrint(place)); };
  return {unit(std::min(ZoomStartX, ZoomEndX)), unit(std::min(ZoomStartY, ZoomEndY)),
          unit(std::max(ZoomStartX, ZoomEndX)), unit(std::max(ZoomStartY, ZoomEndY))};
}

void FrameModes::ZoomInto() {
  EndZoom();
  const bool autoFormat = plot_.AutoFormatted();  // else a pattern for whole numbers would stay on their fractions
  const AxisLimits x = plot_.X.Limits(), y = plot_.Y.Limits();
  const auto [left, right] = std::minmax(ZoomStartX, ZoomEndX);
  const auto [top, bottom] = std::minmax(ZoomStartY, ZoomEndY);
  TakePart(plot_.SwapAxis ? plot_.Y : plot_.X, plot_.Shown().Horizontal, left, right);
  TakePart(plot_.SwapAxis ? plot_.X : plot_.Y, plot_.Shown().Vertical, bottom, top);
  plot_.CreateGraph({.Regenerate = true, .AutoFormat = autoFormat}, prompter_);
  host_.RefreshPicture();
  // Whole decades may be the same as before.
  if (plot_.X.Limits() != x || plot_.Y.Limits() != y) host_.PlotChanged(kZoomChange);
}

void FrameModes::ShowCoords(int event, double x, double y) {
  const PlotPicture& picture = plot_.Shown();
  if (!CoordState) {
    if (picture.Frame == DeviceRect{}) return;  // no picture to read from
    CoordState = true;
    hit_.reset();
    pointer_.reset();
    host_.PlaceFrame();
    host_.DisableMenu();
    host_.SetCursor(PlotCursor::kCross);
  } else if (Ends(event)) {
    EndCoords();
  } else if (event == kMove) {
    pointer_ = {x, y};
    hit_ = plot_.CurveIsClose(x, y, kCloseTwips / host_.TwipsPerPixelX());
    if (hit_) {
      const SeriesTable table = plot_.PlotData[hit_->Series].CopyDataTo();
      ShowMark(x, y, table.X[hit_->Point], table.Y[hit_->Point]);
    } else {
      const double across = picture.Horizontal.ToData(x), up = picture.Vertical.ToData(y);
      ShowMark(x, y, plot_.SwapAxis ? up : across, plot_.SwapAxis ? across : up);
    }
  }
}

DeviceRect FrameModes::MarkAt(double x, double y) const {
  const double halfX = kMarkTwips / host_.TwipsPerPixelX(), halfY = kMarkTwips / host_.TwipsPerPixelY();
  const auto unit = [](double place) { return static_cast<std::int32_t>(std::lrint(place)); };
  return {unit(x - halfX), unit(y - halfY), unit(x + halfX), unit(y + halfY)};
}

void FrameModes::ShowMark(double x, double y, double dataX, double dataY) {
  host_.ShowOverlay(hit_ ? PlotOverlay::kCrossInSquare : PlotOverlay::kCross, MarkAt(x, y));
  const auto text = [&](double value) { return LocalizeExpression(FormatNumber(value, "0.000000E+00"), plot_.Locale); };
  host_.ShowPoint(text(dataX), text(dataY));
}

bool FrameModes::KeyDown(int key, bool shift) {
  if (drag_.Dragging()) return drag_.KeyDown(key, shift);
  return ZoomState != kIdle ? KeyInZoom(key, shift) : CoordState && KeyInCoords(key, shift);
}

FrameModes::Place FrameModes::Pointer() const {
  const DeviceRect& frame = plot_.Shown().Frame;
  return pointer_.value_or(Place{(frame.left + frame.right) / 2.0, (frame.top + frame.bottom) / 2.0});
}

bool FrameModes::KeyInZoom(int key, bool shift) {
  const DeviceRect& frame = plot_.Shown().Frame;
  const auto [right, down] = KeyStep(key, shift, host_);
  const double x = std::clamp<double>(Pointer().X + right, frame.left, frame.right);
  const double y = std::clamp<double>(Pointer().Y + down, frame.top, frame.bottom);
  Zoom(key == kReturn ? kLeft : kMove, x, y);
  if (ZoomState == kArmed) host_.ShowOverlay(PlotOverlay::kCross, MarkAt(x, y));
  return true;
}

bool FrameModes::KeyInCoords(int key, bool shift) {
  if (key < kLeftArrow || key > kDownArrow) return false;
  if (!hit_) {
    if (pointer_) return false;  // which a mouse has led to where no point is
    const DeviceRect& frame = plot_.Shown().Frame;
    const auto nearest = plot_.CurveIsClose(Pointer().X, Pointer().Y, std::max(frame.width(), frame.height()));
    if (nearest) GoToPoint(*nearest);
    return nearest.has_value();
  }
  constexpr std::size_t kFar = 10;
  const std::vector<PlotSeries>& curves = plot_.PlotData;
  CurveHit to = *hit_;
  const SeriesTable here = curves[to.Series].CopyDataTo();
  const std::size_t steps = shift ? kFar : 1, last = here.Y.size() - 1;
  if (key == kLeftArrow) to.Point -= std::min(steps, to.Point);
  if (key == kRightArrow) to.Point = std::min(to.Point + steps, last);
  if (key == kUpArrow || key == kDownArrow) {
    // The next curve, round and round, at the point above or below.
    do to.Series = (to.Series + (key == kDownArrow ? 1 : curves.size() - 1)) % curves.size();
    while (!curves[to.Series].Displayed());
    const SeriesTable there = curves[to.Series].CopyDataTo();
    const auto apart = [&](double x) { return std::abs(x - here.X[hit_->Point]); };
    const auto nearest = std::ranges::min_element(there.X, {}, apart);
    to.Point = static_cast<std::size_t>(nearest - there.X.begin());
  }
  GoToPoint(to);
  return true;
}

// Beyond the axes there is nothing to go to.
void FrameModes::GoToPoint(const CurveHit& point) {
  const SeriesTable table = plot_.PlotData[point.Series].CopyDataTo();
  if (point.Point >= table.Y.size()) return;
  const double x = table.X[point.Point], y = table.Y[point.Point];
  const auto within = [](const PlotAxis& axis, double value) { return value >= axis.Min && value <= axis.Max; };
  if (!within(plot_.X, x) || !within(plot_.Y, y)) return;
  hit_ = point;
  ShowMark(plot_.Shown().Horizontal.ToDevice(plot_.SwapAxis ? y : x),
           plot_.Shown().Vertical.ToDevice(plot_.SwapAxis ? x : y), x, y);
}

void FrameModes::Resize() {
  EndModes();
  host_.HideFrame();
}

void FrameModes::EndModes() {
  if (ZoomState != kIdle) EndZoom();
  if (CoordState) EndCoords();
  drag_.Cancel();
}

void FrameModes::EndZoom() {
  ZoomState = kIdle;
  host_.HideOverlay();
  host_.SetCursor(PlotCursor::kNormal);
  host_.EnableMenu();
}

void FrameModes::EndCoords() {
  CoordState = false;
  hit_.reset();
  host_.HideOverlay();
  host_.SetCursor(PlotCursor::kNormal);
  host_.EnableMenu();
  host_.HideFrame();
}

}  // namespace quorvex
