#include <gtest/gtest.h>

#include "RecordingSurface.h"
#include "plot/PlotText.h"

namespace quorvex {
namespace {

using Segments = std::vector<PlotTextSegment>;

// At 12 points on 96 units to the inch the font is 16 high and its characters 8 wide; at 75 percent 12 and 6. A quarter
// line is 4.
const PlotFont kFont{"Arial", 12, false, false};

PlotText Parse(std::string_view text) {
  RecordingSurface surface;
  const PlotText parsed = ParsePlotText(surface, text, kFont, 0);
  EXPECT_EQ(surface.ObjectCount(), 0u);
  return parsed;
}

TEST(ParsePlotText, TakesCodesApartAndPlacesThePieces) {
  const struct {
    const char* text;
    Segments segments;
    DeviceExtent size;
  } cases[] = {
      {"", {}, {0, 0}},
      {"plain", {{"plain", 0, 0, 0}}, {40, 16}},
      {"\xC2\xB5~>2", {{"\xC2\xB5~>2", 0, 0, 0}}, {32, 16}},  // four characters, though five bytes: no code
      {"m~>2~>", {{"m", 0, 0, 4}, {"2", 1, 8, 0}}, {14, 20}},
      {"H~<2~<O", {{"H", 0, 0, 0}, {"2", 2, 8, 8}, {"O", 0, 14, 0}}, {22, 24}},
      // Superscripts push the line down by 4, the subscript by 12; the height is 16 + 4 + 8.
      {"a~>bb~>c~<d~<", {{"a", 0, 0, 4}, {"bb", 1, 8, 0}, {"c", 0, 20, 4}, {"d", 2, 28, 12}}, {34, 28}},
      // Stacked: the second starts where the first did, and the wider one moves on what follows.
      {"S~>abc~>~<x~<T", {{"S", 0, 0, 4}, {"abc", 1, 8, 0}, {"x", 2, 8, 12}, {"T", 0, 26, 4}}, {34, 28}},
      {"S~<x~<~>abc~>T", {{"S", 0, 0, 4}, {"x", 2, 8, 12}, {"abc", 1, 8, 0}, {"T", 0, 26, 4}}, {34, 28}},
      // Three in a stack: the third stands where the second did.
      {"~>ab~>~<c~<~>def~>", {{"ab", 1, 0, 0}, {"c", 2, 0, 12}, {"def", 1, 0, 0}}, {18, 28}},
      // Two of a kind follow each other.
      {"~>a~>~>b~>", {{"a", 1, 0, 0}, {"b", 1, 6, 0}}, {12, 20}},
      // Never closed: to the end.
      {"cm~>-1", {{"cm", 0, 0, 4}, {"-1", 1, 16, 0}}, {28, 20}},
      {"x~<sub~>y", {{"x", 0, 0, 0}, {"sub~>y", 2, 8, 8}}, {44, 24}},
      // A tilde that is no code.
      {"a~bcd", {{"a~bcd", 0, 0, 0}}, {40, 16}},
      {"abcd~", {{"abcd~", 0, 0, 0}}, {40, 16}},
      {"a~~>2~>", {{"a~", 0, 0, 4}, {"2", 1, 16, 0}}, {22, 20}},
      // A code with nothing behind still makes room.
      {"abcd~>", {{"abcd", 0, 0, 4}}, {32, 20}},
      {"abcd~<", {{"abcd", 0, 0, 0}}, {32, 24}},
      // A code right behind its twin opens anew.
      {"~>~>ab", {{"ab", 1, 0, 0}}, {12, 20}},
      // After a literal tilde at the second place, none in the first two places of the rest counts any more.
      {"a~b~>x~>~>y", {{"a~b", 0, 0, 4}, {"x", 1, 24, 0}, {"~>y", 0, 30, 4}}, {54, 20}},
      {"a~b~>x~>y~>z", {{"a~b", 0, 0, 4}, {"x", 1, 24, 0}, {"y~>z", 0, 30, 4}}, {62, 20}},
      {"a~b~>x~>yz~>w", {{"a~b", 0, 0, 4}, {"x", 1, 24, 0}, {"yz", 0, 30, 4}, {"w", 1, 46, 0}}, {52, 20}},
  };
  for (const auto& c : cases) {
    const PlotText parsed = Parse(c.text);
    EXPECT_EQ(parsed.Size, c.size) << c.text << ": " << parsed.Size.cx << ", " << parsed.Size.cy;
    ASSERT_EQ(parsed.Segments.size(), c.segments.size()) << c.text;
    for (std::size_t i = 0; i < c.segments.size(); ++i) {
      const PlotTextSegment& s = parsed.Segments[i];
      EXPECT_EQ(s, c.segments[i]) << c.text << ": " << s.Text << ' ' << s.Kind << ' ' << s.X << ' ' << s.Y;
    }
  }
}

TEST(ParsePlotText, RoundsQuarterLinesToEven) {
  // 10 points on 96 units to the inch: 13 high, a quarter line 3.25, two 6.5, three 9.75.
  RecordingSurface surface;
  const PlotText sub = ParsePlotText(surface, "a~<b~<", {"Arial", 10, false, false}, 0);
  EXPECT_EQ(sub.Segments[1].Y, 6);
  EXPECT_EQ(sub.Size.cy, 20);  // 13 + 6.5 = 19.5
  const PlotText both = ParsePlotText(surface, "a~<b~<~>c~>", {"Arial", 10, false, false}, 0);
  EXPECT_EQ(both.Segments[0].Y, 3);
  EXPECT_EQ(both.Segments[1].Y, 10);
  EXPECT_EQ(both.Size.cy, 22);  // 16.25 is 16, and 22.5 is 22
}

TEST(CreatePlotFont, AsksForTheFontInDeviceUnits) {
  const std::string x31(31, 'x');
  const struct {
    PlotFont font;
    int angle, percent, unitsPerInch;
    std::string call;
  } cases[] = {
      {{"Arial", 10, false, false}, 0, 100, 96, "CreateFontIndirectA -13 0 400 0 0 0 2 Arial = 5"},
      {{"Arial", 10, true, true}, 90, 100, 600, "CreateFontIndirectA -83 900 700 1 0 0 2 Arial = 5"},
      // 7.5 is 8 points
      {{"Arial", 10, false, false}, 45, 75, 96, "CreateFontIndirectA -11 450 400 0 0 0 2 Arial = 5"},
      {{"Arial", 8.25, false, false}, 0, 100, 72, "CreateFontIndirectA -8 0 400 0 0 0 2 Arial = 5"},
      {{x31 + "xxx", 9, false, true}, 0, 100, 96, "CreateFontIndirectA -12 0 400 1 0 0 2 " + x31 + "x = 5"},
      {{x31 + "\u00e9\u00e9", 9, false, false},
       0,
       100,
       96,
       "CreateFontIndirectA -12 0 400 0 0 0 2 " + x31 + "\u00e9 = 5"},
  };
  for (const auto& c : cases) {
    RecordingSurface surface(400, 300, c.unitsPerInch);
    CreatePlotFont(c.font, c.angle, surface, c.percent);
    EXPECT_EQ(surface.Calls, (std::vector<std::string>{c.call, "DeleteObject 5"}));
  }
}

TEST(ApplyTextCode, WrapsWhatIsSelected) {
  const Result<SelectedText> super = ApplyTextCode(0, {"m2 s", 1, 1});
  ASSERT_TRUE(super);
  EXPECT_EQ(*super, (SelectedText{"m~>2~> s", 3, 1}));
  const Result<SelectedText> sub = ApplyTextCode(1, {"Cmax", 1, 3});
  ASSERT_TRUE(sub);
  EXPECT_EQ(*sub, (SelectedText{"C~<max~<", 3, 3}));
  const Result<SelectedText> none = ApplyTextCode(0, {"Cmax", 2, 0});
  ASSERT_FALSE(none);
  EXPECT_EQ(none.error(), "Please select the text that you want to apply the formatting to.");
}

}  // namespace
}  // namespace quorvex
