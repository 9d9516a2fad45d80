#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/NumberText.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(GeneralNumber, EqualsTheDefaultTextOfC) {  // printf("%.15G") in the C locale, which tests never leave
  std::mt19937_64 random(7);
  std::vector<double> values = {
      0, 0.1, 1e-5, 1e-4, 1e-10, 1e20, 1e15, 1e14, 999999999999999.9, -1.5, 5e-324, 1.7976931348623157e308};
  for (int i = 0; i < 2000; ++i)
    values.push_back(std::ldexp(static_cast<double>(random()) - 9e18, static_cast<int>(random() % 1800) - 964));
  for (const double value : values) {
    char expected[40];
    std::snprintf(expected, sizeof expected, "%.15G", value);
    EXPECT_EQ(GeneralNumber(value), expected);
  }
  EXPECT_EQ(GeneralNumber(-0.0), "0");
}

TEST(ShortestNumber, ReadsBackToTheSameBits) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 2000; ++i) {
    const double value = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 2000) - 1064);
    EXPECT_EQ(NumericText(ShortestNumber(-value)), -value);
  }
  EXPECT_EQ(ShortestNumber(0.1), "0.1");
  EXPECT_EQ(ShortestNumber(0.1F), "0.1");
  EXPECT_EQ(ShortestNumber(16777217.0), "16777217");
  EXPECT_EQ(ShortestNumber(1e-10), "1E-10");
  EXPECT_EQ(ShortestNumber(-0.0), "-0");
}

// Where a row could be argued about: ties go by the exact binary value as in printf, so 0.125 gives 0.12 and 2.5
// gives 2.
constexpr struct {
  double value;
  const char *pattern, *text;
} kPatterns[] = {
    {0.99876543, "0.0###", "0.9988"},
    {1, "0.0###", "1.0"},
    {0.25, "0.0###", "0.25"},
    {99.8765, "##0.0#", "99.88"},
    {5, "0##", "005"},
    {0.04, "##0.0#", "0.04"},
    {0.001, "##0.0#", "0.0"},
    {-0.001, "##0.0#", "0.0"},
    {-3.14159, "0.00", "-3.14"},
    {0.125, "0.00", "0.12"},
    {0.375, "0.00", "0.38"},
    {2.5, "0", "2"},
    {1234567.5, "0", "1234568"},
    {7, "000", "007"},
    {0.5, "#.#", ".5"},
    {0, "#", "0"},
    {0, "#.##", "0"},
    {12, "#.##", "12"},
    {99.8, "##0.0#%", "99.8%"},
    {-5, "$0.0 net", "-$5.0 net"},
    {12345.678, "0.000000E+00", "1.234568E+04"},
    {1e-10, "0.0E+00", "1.0E-10"},
    {9.99e99, "0.0E+00", "1.0E+100"},
    {0, "0.0E+00", "0.0E+00"},
    {0, "00.0E+0", "00.0E+0"},
    {-2.5e-7, "0.0E-0", "-2.5E-7"},
    {-2.5e-7, "0.0e+0", "-2.5e-7"},
    {25, "0.0e+0", "2.5e+1"},
    {2.5e7, "0.0E-00", "2.5E07"},
    {12345, "00.0E+00", "12.3E+03"},
    {12345, "#.###E+00", "1.234E+04"},
    {12, "0 Eggs", "12 Eggs"},
    {1e300, "0.0E+00", "1.0E+300"},
    {0.1, "General", "0.1"},
    {1e-5, "general number", "1E-05"},
    {0.1, "", "0.1"},
    {1.5, "0,00", "1.50"},
    {0.25, ",0", ".2"},
    {0.25, "0.0, 0 net", "0.2, 0 net"},
    {1234.5, "#,##0.00", "1234.5"},
    {1.5, "0.00.0", "1.5"},
    {1.5, "E+00", "1.5"},
    {kInfinity, "0.00", "INF"},
    {-kInfinity, "0.0E+00", "-INF"},
};

TEST(FormatNumber, FollowsThePattern) {
  for (const auto& c : kPatterns) EXPECT_EQ(FormatNumber(c.value, c.pattern), c.text) << c.value << " by " << c.pattern;
}

TEST(FormatNumber, RoundsAsPrintf) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 2000; ++i) {
    const double value = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 200) - 160);
    char fixed[128], scientific[64];
    std::snprintf(fixed, sizeof fixed, "%.4f", value);
    std::snprintf(scientific, sizeof scientific, "%.6E", value);
    EXPECT_EQ(FormatNumber(value, "0.0000"), fixed);
    EXPECT_EQ(FormatNumber(value, "0.000000E+00"), scientific);
  }
  EXPECT_EQ(FormatNumber(1.7976931348623157e308, "0.00").size(), 309u + 3u);
}

TEST(NumericText, TakesWholeNumbersOnly) {
  constexpr struct {
    const char* text;
    double value;
  } kNumbers[] = {{"0", 0},           {"  -12.5  ", -12.5},
                  {"+5", 5},          {".5", 0.5},
                  {"5.", 5},          {"1e5", 1e5},
                  {"1E+05", 1e5},     {"+1.5E-3", 1.5e-3},
                  {"-.5e1", -5},      {"007", 7},
                  {"5e-324", 5e-324}, {"1.7976931348623157e308", 1.7976931348623157e308},
                  {"1e-400", 0},      {"-123.4E-99999999999999999999", 0},
                  {"1e-310", 1e-310}, {"0e400", 0}};
  for (const auto& c : kNumbers) EXPECT_EQ(NumericText(c.text), c.value) << c.text;
  const std::string zeros(400, '0');
  EXPECT_EQ(NumericText("0." + zeros + "1"), 0);
  EXPECT_EQ(NumericText("0." + zeros + "1e401"), 1);
  EXPECT_EQ(NumericText("1" + zeros + "e-400"), 1);

  for (const char* text :
       {"",   " ",   "inf", "-inf", "+inf", "nan", "infinity", "0x10", "1e", "1e+", "1.2.3", ".",
        "-",  "+",   "+-5", "-+5",  "--5",  "1,5", "1 2",      "1d5",  "e5", ".e5", "1e400", "1e99999999999999999999",
        "NA", "1\t", "1f"})
    EXPECT_FALSE(NumericText(text)) << text;
}

TEST(NumericText, TakesTheSeparatorOfTheLocaleAlone) {
  EXPECT_EQ(NumericText(" 1,5E3 ", ','), 1500);
  EXPECT_EQ(NumericText("-2", ','), -2);
  for (const char* text : {"1.5", "1.234,5", "1,2,3", ",", ""}) EXPECT_FALSE(NumericText(text, ',')) << text;
}

TEST(LeadingNumber, StopsAtTheFirstCharacterThatDoesNotBelong) {
  constexpr struct {
    const char* text;
    std::size_t length;
    double value;
  } kCases[] = {{"1.5\t2", 3, 1.5}, {"+2;", 2, 2},  {"1e;", 1, 1}, {"-3.e2x", 5, -300},
                {" 1", 0, -1},      {"nan", 0, -1}, {"", 0, -1}};
  for (const auto& c : kCases) {
    double value = -1;
    EXPECT_EQ(LeadingNumber(c.text, value), c.length) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
  }
}

// In the middle of a long text numbers are read another way than at its end.
TEST(LeadingNumber, ReadsTheNearestDoubleInALongText) {
  std::vector<std::string> texts = {"0",
                                    "00012",
                                    "0.0",
                                    "5.",
                                    "5.e3",
                                    "1e",
                                    "1e+",
                                    "1E5",
                                    "1e-5",
                                    "1e00005",
                                    "1e400",
                                    "1e-400",
                                    "0e400",
                                    "4e-55",
                                    "1234567890123456789",
                                    "12345678901234567890",
                                    "9999999999999999999.9999999999999999",
                                    "0.00012345678901234567",
                                    "9007199254740993",  // in the middle of two doubles
                                    "9007199254740993.0",
                                    "9007199254740993.0000001",
                                    "9007199254740992.9999999",
                                    "0.500000000000000166533453693773",
                                    "1." + std::string(70, '0') + "1",
                                    std::string(70, '9'),
                                    "1e" + std::string(70, '0') + "1",
                                    "1.5.2",
                                    "1-2",
                                    "1e2e3"};
  std::mt19937_64 random(23);
  for (int i = 0; i < 20000; ++i) {
    const int place = static_cast<int>(random() % 360) - 240;
    const double value = std::ldexp(static_cast<double>(random() >> 11 | 1ULL << 52), place);
    char text[64];
    // What the value prints as, and the middle between it and the next one.
    const bool isMiddle = i % 2 == 0;
    const long double shown = isMiddle ? value + std::ldexp(1.0L, place - 1) : static_cast<long double>(value);
    std::snprintf(text, sizeof text, i % 3 == 0 ? "%.*Le" : "%.*Lg", static_cast<int>(random() % 4) + 15, shown);
    texts.emplace_back(text);
  }
  const std::string behind = "\t" + std::string(80, '7');
  for (const std::string& text : texts) {
    for (const char* const sign : {"", "-"}) {
      double expected = -1, value = -1;
      const std::size_t length = LeadingNumber(sign + text, expected);
      EXPECT_EQ(LeadingNumber(sign + text + behind, value), length) << sign << text;
      EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << sign << text;
    }
  }
}

TEST(RoundToInt, RoundsTiesToEvenAndRefusesWhatDoesNotFit) {
  EXPECT_EQ(RoundToInt16(2.5), 2);
  EXPECT_EQ(RoundToInt16(3.5), 4);
  EXPECT_EQ(RoundToInt16(-2.5), -2);
  EXPECT_EQ(RoundToInt16(32767.4), 32767);
  EXPECT_EQ(RoundToInt32(-2147483648.5), -2147483647 - 1);
  EXPECT_THROW(RoundToInt16(32767.5), NumericFault);
  EXPECT_THROW(RoundToInt32(2147483647.5), NumericFault);
  for (const double value : {kInfinity, -kInfinity, std::nan("")}) EXPECT_THROW(RoundToInt32(value), NumericFault);
}

TEST(TextHelpers, FoldAsciiLettersOnly) {
  EXPECT_EQ(Trim("  a \t "), "a \t");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(ToLower("AbZ[\xC3\x84"), "abz[\xC3\x84");
  EXPECT_TRUE(EqualNoCase("DeFault", "dEfAULT"));
  EXPECT_FALSE(EqualNoCase("[", "{"));  // these differ by the bit of the case
  EXPECT_FALSE(EqualNoCase("a", "ab"));
  EXPECT_TRUE(ContainsNoCase("a %Run% b", "%RUN%"));
  EXPECT_TRUE(ContainsNoCase("a", ""));
  EXPECT_FALSE(ContainsNoCase("a", "ab"));
}

TEST(TakeLine, KnowsAllThreeLineEnds) {
  std::string_view rest = "a\r\nb\nc\r\r\n\nlast";
  std::vector<std::string_view> lines;
  while (!rest.empty()) lines.push_back(TakeLine(rest));
  EXPECT_EQ(lines, (std::vector<std::string_view>{"a", "b", "c", "", "", "last"}));
}

TEST(FirstCharacters, CutsCharactersAndNotBytes) {
  const struct {
    const char* text;
    std::size_t count;
    const char* first;
  } kCases[] = {{"", 3, ""},         {"abc", 3, "abc"}, {"abcd", 3, "abc"}, {"Größe", 4, "Größ"},
                {"Größe", 3, "Grö"}, {"€uro", 1, "€"},  {"abc", 0, ""}};
  for (const auto& c : kCases) EXPECT_EQ(FirstCharacters(c.text, c.count), c.first) << c.text << c.count;
}

}  // namespace
}  // namespace quorvex
