#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "core/Result.h"
#include "drawing/DrawingSurface.h"
#include "drawing/PlotFont.h"

namespace quorvex {

// Superscripts and subscripts are drawn in the text's font at this percentage.
inline constexpr int kScriptPercent = 75;

// A piece of a plot's text.
struct PlotTextSegment {
  std::string Text;
  std::int16_t Kind = 0;  // 0 normal, 1 superscript, 2 subscript
  std::int32_t X = 0;     // where it starts, in device units: along the text's line from the text's start,
  std::int32_t Y = 0;     // and across it from the text's upper edge
  bool operator==(const PlotTextSegment&) const = default;
};

// A text taken apart, with the extent of the whole before it is turned.
struct PlotText {
  std::vector<PlotTextSegment> Segments;
  DeviceExtent Size;
};

// Takes apart a title or legend text. A pair of "~>" stands around superscript, a pair of "~<" around subscript; a code
// that is never closed holds to the end. There are no other codes: a tilde before any other character is itself, and so
// is any in a text of fewer than 5 characters. A superscript next to a subscript stands over it.
//
// A text longer than `longest` device units ends in "..." behind as many characters as go in; nothing is left of one
// where not even the dots do. It is as high as the whole.
PlotText ParsePlotText(DrawingSurface& surface, std::string_view text, const PlotFont& font, int angle,
                       std::int32_t longest = std::numeric_limits<std::int32_t>::max());

// The text as it is read aloud, without its codes.
std::string WithoutTextCodes(std::string_view text);

// The text of a text box and what is selected there, in bytes of UTF-8.
struct SelectedText {
  std::string Text;
  std::size_t Start = 0, Length = 0;
  bool operator==(const SelectedText&) const = default;
};

// Puts what is selected between two codes, "~>" for kind 0 and "~<" for kind 1, and keeps it selected. Where nothing is
// selected, the message for the user.
Result<SelectedText> ApplyTextCode(int kind, const SelectedText& box);

}  // namespace quorvex
