#include <gtest/gtest.h>

#include "files/FieldReader.h"
#include "files/FieldText.h"
#include "files/FieldWriter.h"

namespace quorvex {
namespace {

TEST(FieldReader, EndsFieldsAtCommasAndLineEnds) {
  FieldReader in("  \"a,\r\nb\"  , plain text \r  7,,\n\"\"\r\n\"x\"\"y\",last");
  const char* const kTexts[] = {"a,\r\nb", "plain text", "7", "", "", "", "x", "y", "last"};
  const bool kQuoted[] = {true, false, false, false, false, true, true, true, false};
  for (std::size_t i = 0; i < std::size(kTexts); ++i) {
    const FieldReader::Field field = in.Next();
    EXPECT_EQ(field.Text, kTexts[i]);
    EXPECT_EQ(field.Quoted, kQuoted[i]) << i;
  }
  EXPECT_TRUE(in.Good());
  EXPECT_TRUE(in.AtEnd());
  in.Next();
  EXPECT_FALSE(in.Good());
}

TEST(FieldReader, TakesTheTypeThatIsAskedFor) {
  FieldReader in("1.5E-3,-2147483648,#TRUE#\n#FALSE#\n\"  B_DATA\"");
  EXPECT_EQ(in.Real(), 1.5e-3);
  EXPECT_EQ(in.Integer(), -2147483648);
  EXPECT_TRUE(in.Boolean());
  EXPECT_FALSE(in.Boolean());
  in.Expect("B_DATA");
  EXPECT_TRUE(in.Good());
}

TEST(FieldReader, FailsForGoodOnAnythingElse) {
  const struct {
    const char* text;
    void (*read)(FieldReader&);
  } kCases[] = {
      {"1e999", [](FieldReader& in) { in.Real(); }},
      {"1,5", [](FieldReader& in) { in.Boolean(); }},
      {"nan", [](FieldReader& in) { in.Real(); }},
      {"inf", [](FieldReader& in) { in.Real(); }},
      {"\r\n", [](FieldReader& in) { in.Real(); }},
      {"1.5", [](FieldReader& in) { in.Integer(); }},
      {"2147483648", [](FieldReader& in) { in.Integer(); }},
      {"TRUE", [](FieldReader& in) { in.Boolean(); }},
      {"\"open", [](FieldReader& in) { in.Text(); }},
      {"", [](FieldReader& in) { in.Text(); }},
      {"\"b_data\"", [](FieldReader& in) { in.Expect("B_DATA"); }},
  };
  for (const auto& c : kCases) {
    FieldReader in(std::string(c.text) + (c.text[0] == '"' || c.text[0] == '\0' ? "" : "\r\n1\r\n"));
    c.read(in);
    EXPECT_FALSE(in.Good()) << c.text;
    EXPECT_EQ(in.Real(), 0) << c.text;
  }
}

TEST(FieldWriter, WritesFieldsOfALine) {
  FieldWriter out;
  out.Line("a \"b\"", std::string("c"), 1.0 / 3, -7, true, 1e300);
  out.EmptyField();
  out.Field(0.1);
  out.EmptyField();
  out.EndLine();
  EXPECT_EQ(out.Text(), "\"a 'b'\",\"c\",0.3333333333333333,-7,#TRUE#,1E+300\r\n,0.1,\r\n");
}

TEST(LocaleText, IsEncodedAndDecoded) {
  constexpr LocaleText kGerman = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  constexpr LocaleText kSwiss = {.DecimalSeparator = '.', .ListSeparator = ';', .ThousandSeparator = '\''};
  EXPECT_EQ(EncodeLocaleText("max(1,5;x)", kGerman), "max(1.5,x)");
  EXPECT_EQ(DecodeLocaleText("max(1.5,x)", kGerman), "max(1,5;x)");
  EXPECT_EQ(DecodeLocaleText(EncodeLocaleText("max(1.5;x')", kSwiss), kSwiss), "max(1.5;x')");
  EXPECT_EQ(EncodeLocaleText("max(1.5,x)", {}), "max(1.5,x)");
  EXPECT_EQ(DecodeLocaleText("max(1.5,x)", {}), "max(1.5,x)");
}

TEST(CountBehindEquals, TakesTheWholeNumber) {
  const struct {
    const char* text;
    std::optional<int> count;
  } kCases[] = {{"columns=4", 4},
                {"Independentvariables =  12 ", 12},
                {"a=1=2", std::nullopt},
                {"columns=", std::nullopt},
                {"4", std::nullopt},
                {"columns=4x", std::nullopt},
                {"columns=99999999999", std::nullopt},
                {"", std::nullopt}};
  for (const auto& c : kCases) EXPECT_EQ(CountBehindEquals(c.text), c.count) << c.text;
}

}  // namespace
}  // namespace quorvex
