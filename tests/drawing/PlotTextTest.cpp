#include <gtest/gtest.h>

#include "RecordingSurface.h"
#include "TableFile.h"
#include "drawing/PlotText.h"

namespace quorvex {
namespace {

const PlotFont kFont{"Arial", 12, false, false};

PlotText Parse(std::string_view text) {
  RecordingSurface surface;
  const PlotText parsed = ParsePlotText(surface, text, kFont, 0);
  EXPECT_EQ(surface.ObjectCount(), 0u);
  return parsed;
}

std::string Joined(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) text += (text.empty() ? "" : ",") + std::to_string(number);
  return text;
}

std::string Pieces(const PlotText& parsed) {
  std::string pieces;
  for (const PlotTextSegment& s : parsed.Segments)
    pieces += (pieces.empty() ? "" : "|") + s.Text + "@" + Joined({s.Kind, s.X, s.Y});
  return pieces;
}

TEST(ParsePlotText, TakesCodesApartAndPlacesThePieces) {
  for (const auto& row : TableRows("plot_texts.txt", 3)) {
    const PlotText parsed = Parse(row[0]);
    EXPECT_EQ(Joined({parsed.Size.cx, parsed.Size.cy}), row[1]) << row[0];
    EXPECT_EQ(Pieces(parsed), row[2]) << row[0];
  }
}

TEST(WithoutTextCodes, LeavesWhatIsRead) {
  const std::pair<const char*, const char*> texts[] = {
      {"", ""}, {"~>2", "~>2"}, {"x~>2~> + y~<1~<", "x2 + y1"}, {"m~>-2 open", "m-2 open"}, {"a ~ b", "a ~ b"}};
  for (const auto& [text, plain] : texts) EXPECT_EQ(WithoutTextCodes(text), plain);
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

TEST(ParsePlotText, ShortensToALength) {
  // Characters are 8 wide, scripts 6, and the dots 24.
  const struct {
    const char* text;
    std::int32_t longest;
    const char* pieces;
  } kCases[] = {
      {"plain text", 80, "plain text@0,0,0"},
      {"plain text", 79, "plain ...@0,0,0"},
      {"plain text", 24, "...@0,0,0"},
      {"plain text", 23, ""},
      {"plain text", -5, ""},
      {"\u00e4\u00f6\u00fc\u00df\u00e4\u00f6", 47, "\u00e4\u00f6...@0,0,0"},
      {"ab", 10, ""},
      // The codes take no room and are never seen, wherever the text ends.
      {"m~>234~>s of it", 70, "m@0,0,4|234@1,8,0|s ...@0,26,4"},
      {"m~>234~>s of it", 49, "m@0,0,4|23@1,8,0|...@0,20,4"},
      {"m~>234~>s of it", 37, "m...@0,0,4"},
      {"S~>abc~>~<defgh~<T", 45, "S@0,0,4|ab@1,8,0|...@0,20,4"},
      {"S~<never closed", 45, "S@0,0,0|ne@2,8,8|...@0,20,0"},
  };
  for (const auto& c : kCases) {
    RecordingSurface surface;
    const PlotText whole = ParsePlotText(surface, c.text, kFont, 0);
    const PlotText parsed = ParsePlotText(surface, c.text, kFont, 0, c.longest);
    EXPECT_EQ(Pieces(parsed), c.pieces) << c.text << ' ' << c.longest;
    EXPECT_LE(parsed.Size.cx, std::max(c.longest, 0)) << c.text << ' ' << c.longest;
    EXPECT_EQ(parsed.Size.cy, whole.Size.cy) << c.text;
    EXPECT_EQ(surface.ObjectCount(), 0u);
  }
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
