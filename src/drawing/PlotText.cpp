#include "drawing/PlotText.h"

#include <algorithm>
#include <cassert>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr char kMark = '~';
enum Kind : std::int16_t { kNormal, kSuperscript, kSubscript };
constexpr std::string_view kCodes[] = {"", "~>", "~<"};  // by Kind

bool MayHoldCodes(std::string_view text) {
  constexpr std::size_t kShortest = 5;  // two codes and a character between them
  return CharacterCount(text) >= kShortest && text.find(kMark) != text.npos;
}

struct SplitText {
  std::vector<PlotTextSegment> Segments;  // not yet measured
  bool Holds[3] = {};                     // a code of this Kind, be there text behind it or not
};

SplitText SplitAtCodes(std::string_view text) {
  SplitText split;
  const auto add = [&](std::string_view piece, Kind kind) {
    if (!piece.empty()) split.Segments.push_back({std::string(piece), kind});
  };
  // Where a code may start next. It does not move back when a code and what stood before it have gone from the text.
  std::size_t start = 0;
  for (;;) {
    const std::size_t mark = text.find(kMark, start);
    if (mark == text.npos || mark + 1 == text.size()) {
      add(text, kNormal);
      return split;
    }
    const char behind = text[mark + 1];
    if (behind != '>' && behind != '<') {
      start = mark + 1;
      continue;
    }
    const Kind kind = behind == '>' ? kSuperscript : kSubscript;
    split.Holds[kind] = true;
    add(text.substr(0, mark), kNormal);
    text.remove_prefix(mark + 2);
    const std::size_t close = text.find(kCodes[kind]);
    if (close == 0) continue;  // a code right behind the other: it opens instead
    add(text.substr(0, close), kind);
    text.remove_prefix(close == text.npos ? text.size() : close + 2);
  }
}

// Turns the widths that the segments bring in X into positions, and gives the whole text's extent. `height` is that
// of a line of normal text. A subscript hangs below normal text, which a superscript pushes down by a quarter line.
DeviceExtent PlaceSegments(std::vector<PlotTextSegment>& segments, std::int32_t height, bool superscript,
                           bool subscript) {
  const double quarter = 25 * height / 100.0;
  const std::int32_t normalY = superscript ? RoundToInt32(quarter) : 0;
  const std::int32_t subscriptY = RoundToInt32((superscript ? 3 : 2) * quarter);
  std::int32_t cursor = 0, last = 0, total = 0;
  std::int16_t before = kNormal;
  for (PlotTextSegment& segment : segments) {
    const std::int32_t width = segment.X;
    const bool stacked = segment.Kind != kNormal && before != kNormal && segment.Kind != before;
    segment.Y = segment.Kind == kNormal ? normalY : segment.Kind == kSubscript ? subscriptY : 0;
    segment.X = stacked ? cursor - last : cursor;
    if (!stacked || width > last) {
      total += stacked ? width - last : width;
      cursor = segment.X + width;
      last = width;
    }
    before = segment.Kind;
  }
  std::int32_t cy = height;
  if (superscript) cy = RoundToInt32(quarter + cy);
  if (subscript) cy = RoundToInt32(2 * quarter + cy);
  return {total, cy};
}

std::size_t CharactersOf(const std::vector<PlotTextSegment>& segments) {
  std::size_t count = 0;
  for (const PlotTextSegment& segment : segments) count += CharacterCount(segment.Text);
  return count;
}

// The first characters of all segments together, and dots to tell that there are more.
std::vector<PlotTextSegment> Shortened(const std::vector<PlotTextSegment>& segments, std::size_t characters) {
  std::vector<PlotTextSegment> kept;
  for (const PlotTextSegment& segment : segments) {
    if (characters == 0) break;
    kept.push_back({FirstCharacters(segment.Text, characters), segment.Kind});
    characters -= std::min(characters, CharacterCount(segment.Text));
  }
  if (kept.empty() || kept.back().Kind != kNormal) kept.push_back({});
  kept.back().Text += "...";
  return kept;
}

}  // namespace

std::string WithoutTextCodes(std::string_view text) {
  if (!MayHoldCodes(text)) return std::string(text);
  std::string plain;
  for (const PlotTextSegment& segment : SplitAtCodes(text).Segments) plain += segment.Text;
  return plain;
}

PlotText ParsePlotText(DrawingSurface& surface, std::string_view text, const PlotFont& font, int angle,
                       std::int32_t longest) {
  if (text.empty()) return {};
  const SurfaceObject normal = CreatePlotFont(font, angle, surface);
  const SurfaceObject small = CreatePlotFont(font, angle, surface, kScriptPercent);
  const auto measure = [&](const PlotTextSegment& segment) {
    const Selection inUse(surface, segment.Kind == kNormal ? normal : small);
    return surface.GetTextExtentPoint32A(segment.Text);
  };
  const bool mayHoldCodes = MayHoldCodes(text);
  const SplitText split = mayHoldCodes ? SplitAtCodes(text) : SplitText{{{std::string(text)}}};
  const auto placed = [&](std::vector<PlotTextSegment> segments) {
    std::int32_t height = 0;
    for (PlotTextSegment& segment : segments) {
      const DeviceExtent extent = measure(segment);
      segment.X = extent.cx;
      height = extent.cy;
    }
    if (mayHoldCodes) height = measure({"w"}).cy;  // for that of a script is less
    const DeviceExtent size = PlaceSegments(segments, height, split.Holds[kSuperscript], split.Holds[kSubscript]);
    return PlotText{std::move(segments), size};
  };

  PlotText whole = placed(split.Segments);
  if (whole.Size.cx <= longest) return whole;
  const auto fits = [&](std::size_t characters) {
    return placed(Shortened(split.Segments, characters)).Size.cx <= longest;
  };
  std::size_t tooMany = 0;  // the least number of characters that does not fit, by halving
  for (std::size_t end = CharactersOf(split.Segments); tooMany < end;) {
    const std::size_t middle = tooMany + (end - tooMany) / 2;
    if (fits(middle))
      tooMany = middle + 1;
    else
      end = middle;
  }
  if (tooMany == 0) return {{}, {0, whole.Size.cy}};
  return placed(Shortened(split.Segments, tooMany - 1));
}

Result<SelectedText> ApplyTextCode(int kind, const SelectedText& box) {
  assert((kind == 0 || kind == 1) && box.Start + box.Length <= box.Text.size());
  if (box.Length == 0) return Failure{"Please select the text that you want to apply the formatting to."};
  const std::string_view code = kind == 0 ? kCodes[kSuperscript] : kCodes[kSubscript];
  SelectedText coded = box;
  coded.Text.insert(box.Start + box.Length, code);
  coded.Text.insert(box.Start, code);
  coded.Start += code.size();
  return coded;
}

}  // namespace quorvex
