#pragma once

#include <QIcon>
#include <cstdint>
#include <vector>

class QWidget;

namespace quorvex {

// What a line style or a marker looks like in a plot, in the colour of a control's text.
inline constexpr int kLineSampleWidth = 72, kMarkerSampleWidth = 18, kSampleHeight = 18;
QIcon LineSample(int style, const QWidget& control);
QIcon MarkerSample(int style, const QWidget& control);

// Colours side by side.
QIcon ColorSample(const std::vector<std::int32_t>& colours, const QWidget& control);

}  // namespace quorvex
