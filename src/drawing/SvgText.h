#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/LinePattern.h"

namespace quorvex {

// A number in an attribute, to a thousandth, whatever the locale: "0.5", "-12".
std::string SvgNumber(double value);

// "#rrggbb" of 0x00BBGGRR.
std::string SvgColour(std::int32_t colour);

// A family name for the attribute font-family, with a general one behind it for readers that don't have it.
std::string SvgFontFamily(std::string_view name);

// Lines and closed shapes as the data of a path. Steps are written from place to place, which takes less room; they are
// taken between the rounded places, so that no error adds up.
class SvgPath {
 public:
  // Begins at the first place and goes through the others; the last one leads back to it where `closed` says so.
  void Add(const std::vector<ExactPoint>& line, bool closed);
  bool Empty() const { return data_.empty(); }
  const std::string& Data() const { return data_; }

 private:
  void Append(double x, double y);

  std::string data_;
};

}  // namespace quorvex
