#include <gtest/gtest.h>

#include "files/RecordIo.h"

namespace quorvex {
namespace {

enum class Kind { First = 1, Second = 2 };

struct Sample {
  std::string Text = "t", Notes = "n", Formula = "f";
  double Least = 0, Most = 0;
  std::int32_t Freedom = 0;
  bool Marked = false;
  Kind Of = Kind::First;
  std::vector<std::string> Labels, Parts;
  std::vector<double> X, Y, Row = {0, 0};
  double Last = 0;

  bool operator==(const Sample&) const = default;
};

template <typename Io, typename AnySample>
void ListFields(Io& io, AnySample& sample) {
  io(sample.Text, sample.Marked);
  io.Since(61, sample.Least, sample.Most);
  io(Trimmed{sample.Notes});
  Section(io, "MODEL", [&] { io(ModelText{sample.Formula}, RealForm{sample.Freedom}); });
  io.Bounded(sample.Of, Kind::First, Kind::Second);
  io.Known(2);
  io(std::span(sample.Row), sample.Last);
  io.Counted(sample.Labels, std::string("fresh"), [&](auto& label) { io(label); });
  io.Columns(sample.X, sample.Y);
  io.TextsUntil("end", sample.Parts);
}

constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};

const Sample kSample{"a, b",       "x y",       "max(a;0,5)", -1.5,   1e300,  100000,      true,
                     Kind::Second, {"one", ""}, {"End", ""},  {1, 2}, {3, 4}, {0.1, -0.0}, 5};
const char* const kText =
    "\"a, b\",#TRUE#\r\n-1.5,1E+300\r\n\"x y\"\r\n\"B_MODEL\"\r\n\"max(a,0.5)\",1E+05\r\n\"E_MODEL\"\r\n2\r\n2\r\n"
    "0.1,-0,5\r\n2\r\n\"one\"\r\n\"\"\r\n2\r\n1,3\r\n2,4\r\n\"End\"\r\n\"\"\r\n\"end\"\r\n";

std::string Written(const Sample& sample) {
  RecordWriter io(kComma);
  ListFields(io, sample);
  return io.Text();
}

// What is read of the text; nothing where it can't all be read.
std::optional<Sample> Read(const std::string& text, int version) {
  FieldReader in(text);
  RecordReader io(in, version, kComma);
  Sample sample;
  ListFields(io, sample);
  if (!io.Good()) return std::nullopt;
  return sample;
}

std::string With(std::string_view what, std::string_view instead) {
  std::string text = kText;
  const auto at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  return text.replace(at, what.size(), instead);
}

TEST(RecordIo, ReadsWhatTheSameListWrote) {
  Sample blanks = kSample;
  blanks.Notes = "  x y ";
  EXPECT_EQ(Written(blanks), kText);
  EXPECT_EQ(Read(kText, 61), kSample);
}

TEST(RecordIo, LeavesWhatOlderVersionsHaveNot) {
  Sample older = kSample;
  older.Least = older.Most = 0;
  EXPECT_EQ(Read(With("-1.5,1E+300\r\n", ""), 60), older);
  EXPECT_EQ(Read(kText, 60), std::nullopt);
}

TEST(RecordIo, FailsOnWhatTheListDoesNotAllow) {
  const struct {
    const char *what, *instead;
  } kCases[] = {
      {"\"E_MODEL\"", "\"E_DATA\""},
      {"1E+05", "1E+15"},
      {"\r\n2\r\n2\r\n0.1", "\r\n0\r\n2\r\n0.1"},  // beyond the bounds
      {"\r\n2\r\n2\r\n0.1", "\r\n3\r\n2\r\n0.1"},
      {"\r\n2\r\n2\r\n0.1", "\r\n2\r\n3\r\n0.1"},  // another number than the known one
      {"2\r\n\"one\"", "-2\r\n\"one\""},           // counts
      {"2\r\n\"one\"", "2147483647\r\n\"one\""},
      {"2\r\n1,3", "2147483647\r\n1,3"},
      {"\"end\"", "\" end\""},
  };
  for (const auto& c : kCases) EXPECT_EQ(Read(With(c.what, c.instead), 90), std::nullopt) << c.what << c.instead;
}

}  // namespace
}  // namespace quorvex
