#include "drawing/SvgText.h"

#include <charconv>
#include <cmath>
#include <cstdint>

#include "core/XmlText.h"

namespace quorvex {
namespace {

double Thousandths(double value) { return std::round(value * 1000) / 1000; }

}  // namespace

std::string SvgNumber(double value) {
  const double rounded = Thousandths(value);
  char buffer[64];
  // Adding 0 takes the sign from a zero.
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, rounded + 0.0, std::chars_format::fixed).ptr;
  return {buffer, end};
}

std::string SvgColour(std::int32_t colour) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text = "#";
  for (const int shift : {4, 0, 12, 8, 20, 16}) text += kDigits[colour >> shift & 0xF];
  return text;
}

std::string SvgFontFamily(std::string_view name) {
  if (name.empty()) return "sans-serif";
  std::string quoted = "'";
  for (const char c : name) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return XmlText(quoted + "',sans-serif");
}

void SvgPath::Append(double x, double y) {
  const std::string across = SvgNumber(x), down = SvgNumber(y);
  data_ += across;
  if (down[0] != '-') data_ += ' ';
  data_ += down;
}

void SvgPath::Add(const std::vector<ExactPoint>& line, bool closed) {
  ExactPoint at;
  bool first = true, second = true;
  for (const ExactPoint& point : line) {
    const ExactPoint place{Thousandths(point.x), Thousandths(point.y)};
    if (first) {
      data_ += 'M';
      Append(place.x, place.y);
    } else {
      const double dx = Thousandths(place.x - at.x), dy = Thousandths(place.y - at.y);
      if (second)
        data_ += 'l';
      else if (dx >= 0)
        data_ += ' ';
      Append(dx, dy);
      second = false;
    }
    first = false;
    at = place;
  }
  if (closed) data_ += 'z';
}

}  // namespace quorvex
