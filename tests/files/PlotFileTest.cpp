#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "Fields.h"
#include "Golden.h"
#include "Projects.h"
#include "RecordingPrompter.h"
#include "SavedPlots.h"
#include "TemporaryFolder.h"
#include "core/FileCalls.h"
#include "drawing/RecordingSurface.h"
#include "files/PlotFile.h"
#include "files/UserModelRecord.h"
#include "fuzz/PlotFile.h"

namespace quorvex {
namespace {

constexpr const char* kUnreadable = "Error reading plot 'p.plt'.\r\nThe file is incompatible or appears corrupted.";

std::unique_ptr<PlotPage> Read(const std::string& text, const LocaleText& locale = {}) {
  Result<std::unique_ptr<PlotPage>> plot = ParsePlotFile(text, "p.plt", Settings(), locale);
  EXPECT_TRUE(plot) << plot.error();
  return plot ? std::move(*plot) : nullptr;
}

// What the plot shows, or why it shows nothing.
std::string Drawing(PlotPage& plot) {
  RecordingPrompter user;
  RecordingSurface surface(800, 600);
  if (plot.CreateGraph({.Regenerate = true}, user)) plot.DrawGraph(surface, user);
  std::string drawing = surface.Text() + user.Last();
  std::replace(drawing.begin(), drawing.end(), '"', '\'');  // as texts come back
  return drawing;
}

std::vector<std::unique_ptr<PlotPage>> FullPlots(const LocaleText& locale = {}) {
  std::vector<std::unique_ptr<PlotPage>> plots;
  plots.push_back(FullPlot2D(locale));
  plots.push_back(FullPlot3D(locale));
  return plots;
}

TEST(PlotFile, HasTheLayoutOfVersion9) {
  ExpectGolden("Plot2D.plt", PlotFileText(*FullPlot2D()));
  ExpectGolden("Plot3D.plt", PlotFileText(*FullPlot3D()));
}

TEST(PlotFile, ReadsBackWhatIsDrawnTheSame) {
  for (const LocaleText& locale : {LocaleText(), kCommaLocale})
    for (const auto& plot : FullPlots(locale)) {
      const std::string text = PlotFileText(*plot);
      const auto back = Read(text, locale);
      EXPECT_EQ(PlotFileText(*back), text);
      const std::string drawing = Drawing(*plot);
      EXPECT_GT(drawing.size(), 1000u) << drawing;
      EXPECT_EQ(Drawing(*back), drawing);
    }
}

TEST(PlotFile, TravelsBetweenLocales) {
  const auto here = FullPlots(), there = FullPlots(kCommaLocale);
  for (std::size_t i = 0; i < here.size(); ++i) {
    const std::string text = PlotFileText(*there[i]);
    EXPECT_EQ(text, PlotFileText(*here[i]));
    EXPECT_EQ(PlotFileText(*Read(text, kCommaLocale)), text);
  }
}

// Other fields of the same type, with its separator. Numbers may be the last of their range.
std::vector<std::string> Others(const std::string& field) {
  const std::size_t end = field.find_last_not_of("\r\n,") + 1;
  const std::string value = field.substr(0, end), separator = field.substr(end);
  if (value.ends_with('"')) return {value.substr(0, value.size() - 1) + "z\"" + separator};
  if (value == "#TRUE#") return {"#FALSE#" + separator};
  if (value == "#FALSE#") return {"#TRUE#" + separator};
  return {ShortestNumber(std::stod(value) + 1) + separator, ShortestNumber(std::stod(value) - 1) + separator};
}

TEST(PlotFile, TellsEachFieldBothWays) {
  // Limits of data follow from the points, of which the outermost change them, and of the covariance only the diagonal
  // is kept. Not taken are version and type, what says how much follows (points twice in data, coefficients and points
  // of models, and in space their variables), the flags before tables of deviations, and two lines that are no model.
  const struct {
    std::size_t derived, structure;
  } kExpected[] = {{2 * (4 + 4) + 2 * 2, 2 + 2 * 2 + 2 * 2 + 1 + 2 + 2}, {6 + 6 + 2 + 6, 2 + 2 + 2 * 3 + 1 + 2}};
  const auto plots = FullPlots();
  for (std::size_t i = 0; i < plots.size(); ++i) {
    const std::vector<std::string> fields = FieldsOf(PlotFileText(*plots[i]));
    std::size_t derived = 0, structure = 0;
    for (std::size_t at = 0; at < fields.size(); ++at) {
      if (fields[at].starts_with("\"B_") || fields[at].starts_with("\"E_")) continue;
      bool taken = false, kept = false;
      for (const std::string& other : Others(fields[at])) {
        std::vector<std::string> changed = fields;
        changed[at] = other;
        const Result<std::unique_ptr<PlotPage>> plot = ParsePlotFile(Joined(changed), "p.plt", Settings(), {});
        taken = taken || plot;
        kept = kept || (plot && PlotFileText(**plot) == Joined(changed));
      }
      structure += !taken;
      derived += taken && !kept;
    }
    EXPECT_EQ(derived, kExpected[i].derived);
    EXPECT_EQ(structure, kExpected[i].structure);
  }
}

TEST(PlotFile, HasModelsThatAreReadyToBeEvaluated) {
  for (const LocaleText& locale : {LocaleText(), kCommaLocale})
    for (const auto& plot : FullPlots(locale)) {
      const auto back = Read(PlotFileText(*plot), locale);
      ASSERT_EQ(back->PlotData.size(), plot->PlotData.size());
      for (std::size_t i = 0; i < plot->PlotData.size(); ++i) {
        if (plot->PlotData[i].Model() == nullptr) continue;
        const auto model = plot->PlotData[i].Model()->CopyTo(), twin = back->PlotData[i].Model()->CopyTo();
        EXPECT_TRUE(twin->Solved);
        EXPECT_EQ(twin->UserType, model->UserType);
        EXPECT_EQ(twin->IDIndex(), model->IDIndex());
        EXPECT_EQ(*twin->CopyInputDataTo(), *model->CopyInputDataTo());
        const std::vector<double> x(model->Statistics.X.size(), 0.75);
        double expected = 0, y = 1;
        EXPECT_TRUE(model->Evaluate(x, expected) && twin->Evaluate(x, y));
        EXPECT_EQ(y, expected);
      }
    }
}

TEST(PlotFile, OpensWithoutSeries) {
  const std::string text = PlotFileText(PlotClass{Settings()});
  EXPECT_TRUE(text.ends_with("\"B_DATA\"\r\n\"E_DATA\"\r\n"));
  EXPECT_TRUE(Read(text)->PlotData.empty());
}

TEST(PlotFile, TakesTheVersionsSince81) {
  constexpr const char* kOld =
      "This is a plot file from a version of Quorvex older then version 6.0.\r\n"
      "Due to the solver enhancements in the software, the plot file cannot be read.\r\n"
      "Please re-solve the project to create plots from this solution.";
  const struct {
    const char *version, *words;
  } kCases[] = {
      {"Quorvex:  Version 9.0 Plot", ""},
      {"    Quorvex:  Version 8.2 Plot ", ""},
      {"Quorvex:  Version 8.1 Plot", ""},
      {"Quorvex:  Version 8.0 Plot", kOld},
      {"Quorvex:  Version 7.2 Plot", kOld},
      {"Quorvex:  Version 6.0 Plot", kOld},
      {"Quorvex:  Version 5.2 Plot", kOld},
      {"Quorvex:  Version 3.0 Plot", kOld},
      {"Scanvue Version 2.2",
       "Due to the solver enhancements in the software, the plot file cannot be read.  Please re-solve the project to "
       "create plots from this solution."},
      {"Quorvex:  Version 9.1 Plot", "Error importing data from 'p.plt'."},
      {"Quorvex:  Version 9.0", "Error importing data from 'p.plt'."},
      {"", "Error importing data from 'p.plt'."},
  };
  for (const auto& plot : FullPlots())
    for (const auto& c : kCases) {
      std::vector<std::string> fields = FieldsOf(PlotFileText(*plot));
      fields[1] = "\"" + std::string(c.version) + "\"\r\n";
      const Result<std::unique_ptr<PlotPage>> opened = ParsePlotFile(Joined(fields), "p.plt", Settings(), {});
      EXPECT_EQ(opened ? "" : opened.error(), c.words) << c.version;
      fields[2] = "\"PlotType: 4D\"\r\n";
      const std::string words = *c.words != '\0' ? c.words : kUnreadable;
      EXPECT_EQ(ParsePlotFile(Joined(fields), "p.plt", Settings(), {}).error(), words) << c.version;
    }
  EXPECT_EQ(OpenPlotFile("no/p.plt", Settings(), {}).error(),
            "Error reading plot 'no/p.plt'.\r\nThe file is incompatible or appears corrupted.");
}

TEST(PlotFile, RefusesAFileCutAtAnyField) {
  for (const auto& plot : FullPlots()) {
    const std::vector<std::string> fields = FieldsOf(PlotFileText(*plot));
    std::string text = fields[0];
    for (std::size_t kept = 1; kept < fields.size(); ++kept) {
      EXPECT_EQ(ParsePlotFile(text, "p.plt", Settings(), {}).error(), kUnreadable) << kept;
      text += fields[kept];
    }
    EXPECT_TRUE(ParsePlotFile(text, "p.plt", Settings(), {}));
  }
}

TEST(PlotFile, RefusesAFileCutAtAnyByte) {
  const std::string first = "\"B_HEADER\"";
  for (const auto& plot : FullPlots()) {
    const std::string text = PlotFileText(*plot);
    const std::size_t whole = text.find_last_not_of("\r\n") + 1;
    // What begins with less than the first marker is no plot file, and holds no numbers either.
    for (std::size_t kept = 0; kept < whole; ++kept)
      EXPECT_EQ(ParsePlotFile(std::string_view(text).substr(0, kept), "p.plt", Settings(), {}).error(),
                kept < first.size() ? "Error importing data from 'p.plt'." : kUnreadable)
          << kept;
    EXPECT_TRUE(ParsePlotFile(std::string_view(text).substr(0, whole), "p.plt", Settings(), {}));
  }
}

// Room is made for what is there, not for what is promised.
TEST(PlotFile, RefusesANumberOfPointsThatIsNotThere) {
  // Where a record tells it, in two dimensions and in three; a model has its lines and two coefficients before it.
  constexpr std::size_t kModel = 1 + kMostFunctionLines + 6 + 2 + 1;
  const struct {
    const char* section;
    std::size_t frame, box;
  } kCounts[] = {{"DATACLASS", 7, 8}, {"EQUATIONCLASS", kModel, kModel + 1}, {"INTERPOLATIONCLASS", 8, 0}};
  for (const auto& plot : FullPlots())
    for (const auto& c : kCounts) {
      const std::size_t at = plot->Axes().size() == 2 ? c.frame : c.box;
      if (at == 0) continue;
      const std::vector<std::string> fields = FieldsOf(PlotFileText(*plot));
      const std::size_t count = IndexOf(fields, "\"B_" + std::string(c.section) + "\"\r\n") + at;
      EXPECT_EQ(fields[count], "4\r\n") << c.section;
      for (const char* promise : {"1000000000", "2147483647", "2147483648", "1E+9", "-1", "-2147483648", "3", "5", "0",
                                  "4.5", "many", "#TRUE#", "\"\"", "0x4", "NaN"}) {
        std::vector<std::string> changed = fields;
        changed[count] = promise + std::string("\r\n");
        const auto opened = ParsePlotFile(Joined(changed), "p.plt", Settings(), {});
        EXPECT_EQ(opened ? "opened" : opened.error(), kUnreadable) << c.section << ' ' << promise;
      }
    }
}

TEST(OpenPlotFile, SaysTheSameOfWhateverCannotBeRead) {
  const TemporaryFolder folder;
  const std::string text = PlotFileText(*FullPlot2D());
  const std::string name = folder.Write("a.plt", text);
  const auto said = [](const std::string& file) {
    const auto plot = OpenPlotFile(file, Settings(), {});
    return plot ? "" : plot.error();
  };
  const auto refusal = [](const std::string& file) {
    return "Error reading plot '" + file + "'.\r\nThe file is incompatible or appears corrupted.";
  };
  ASSERT_EQ(said(name), "");
  for (const std::string& file : {folder.Path(""), folder.Path("no/a.plt"), name + "/a.plt", std::string("/dev/zero"),
                                  folder.Path(std::string(300, 'n')), std::string()})
    EXPECT_EQ(said(file), refusal(file));
  for (const auto& [call, error] : {std::pair{"open", EACCES}, {"open", EMFILE}, {"read", EIO}, {"read", EISDIR}}) {
    const FileCalls fail([&, call = call, error = error](std::string_view made) { return made == call ? error : 0; });
    EXPECT_EQ(said(name), refusal(name)) << call << ' ' << error;
  }
  for (const std::size_t left : {text.size() / 2, text.size() - 1, std::size_t{0}}) {
    bool done = false;
    const FileCalls shrink([&](std::string_view made) {
      if (made == "read" && !std::exchange(done, true)) std::filesystem::resize_file(name, left);
      return 0;
    });
    EXPECT_EQ(said(name), refusal(name)) << left;
    folder.Write("a.plt", text);
  }
  EXPECT_EQ(said(folder.Write("empty.plt", "")), "Error importing data from '" + folder.Path("empty.plt") + "'.");
}

TEST(PlotFile, RefusesAMissingOrRepeatedField) {
  for (const auto& plot : FullPlots()) {
    const std::vector<std::string> fields = FieldsOf(PlotFileText(*plot));
    const std::size_t data = IndexOf(fields, "\"B_DATA\"\r\n");
    for (std::size_t at = 1; at <= data; ++at) {
      std::vector<std::string> missing = fields, repeated = fields;
      missing.erase(missing.begin() + static_cast<std::ptrdiff_t>(at));
      repeated.insert(repeated.begin() + static_cast<std::ptrdiff_t>(at), fields[at]);
      EXPECT_FALSE(ParsePlotFile(Joined(missing), "p.plt", Settings(), {})) << at << ' ' << fields[at];
      EXPECT_FALSE(ParsePlotFile(Joined(repeated), "p.plt", Settings(), {})) << at << ' ' << fields[at];
    }
  }
}

// Numbers that no drawing could do anything with, by their place behind a section's beginning.
TEST(PlotFile, BringsNumbersBackIntoTheirRanges) {
  const struct {
    bool space;
    const char* section;
    std::size_t at;
    const char *written, *read;
  } kCases[] = {
      {false, "INITPLOTSIZE", 1, "-5", "0"},
      {false, "XAXISTITLEFONT", 2, "0", "1"},
      {false, "XAXISTITLEFONT", 2, "1E+300", "144"},
      {false, "GENERAL", 1, "2", "3"},
      {false, "GENERAL", 1, "2000000000", "5000"},
      {false, "GENERAL", 6, "-1", "1"},
      {false, "GENERAL", 8, "1E+30", "10"},
      {false, "AXIS", 2, "0", "1"},
      {false, "AXIS", 2, "1000000", "1000"},
      {false, "AXIS", 3, "-1", "0"},
      {false, "AXIS", 13, "100000", "20"},
      {false, "AXIS", 21, "99", "4"},
      {false, "LEGEND", 2, "-1E+38", "-1E+06"},
      {false, "LEGEND", 7, "1000", "5"},
      {false, "FOOTNOTE", 10, "-3", "0"},
      {false, "DATACLASS", 6, "12", "9"},
      {false, "AXIS", 8, "1E+999", nullptr},
      {false, "AXIS", 8, "NaN", nullptr},
      {false, "LEGEND", 2, "1E+999", nullptr},
      {false, "GENERAL", 1, "1E+10", nullptr},
      {false, "INTERPOLATIONCLASS", 3, "3", nullptr},
      {true, "GENERAL", 1, "0", "2"},
      {true, "GENERAL", 2, "100", "99"},
      {true, "GENERAL", 10, "1E+9", "360"},
      {true, "GENERAL", 11, "-0.5", "0"},
      {true, "GENERAL", 19, "99", "13"},
      {true, "GENERAL", 21, "1", "2"},
      {true, "DATACLASS", 7, "0", "1"},
  };
  for (const auto& c : kCases) {
    const std::string text = c.space ? PlotFileText(*FullPlot3D()) : PlotFileText(*FullPlot2D());
    const auto with = [&](const std::string& value) {
      std::vector<std::string> fields = FieldsOf(text);
      fields[IndexOf(fields, "\"B_" + std::string(c.section) + "\"\r\n") + c.at] = value + "\r\n";
      return Joined(fields);
    };
    const Result<std::unique_ptr<PlotPage>> plot = ParsePlotFile(with(c.written), "p.plt", Settings(), {});
    EXPECT_EQ(static_cast<bool>(plot), c.read != nullptr) << c.section << ' ' << c.at;
    if (plot && c.read != nullptr) {
      EXPECT_EQ(PlotFileText(**plot), with(c.read)) << c.section << ' ' << c.at;
    }
  }
  PlotClass plot{Settings()};
  plot.X.LabelString = std::string(256, '#');
  const auto back = Read(PlotFileText(plot));
  Drawing(*back);
  EXPECT_EQ(back->Axes()[0]->LabelString, std::string(255, '#'));
}

TEST(PlotFile, SurvivesWhateverAFieldSays) {
  constexpr const char* kEvil[] = {"2147483647", "-1", "1E+308", "-1E-308", "0", "\"\"", "#TRUE#", "\"E_DATA\""};
  for (const auto& plot : FullPlots()) {
    const std::string text = PlotFileText(*plot);
    const std::vector<std::string> fields = FieldsOf(text);
    const auto survive = [](const std::string& file) {
      EXPECT_NO_THROW(FuzzPlotFile(reinterpret_cast<const std::uint8_t*>(file.data()), file.size())) << file;
    };
    for (std::size_t at = 0; at < fields.size(); ++at)
      for (const char* evil : kEvil) {
        std::vector<std::string> changed = fields;
        changed[at] = evil + std::string("\r\n");
        survive(Joined(changed));
      }
    std::mt19937 random(42);
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
    for (int round = 0; round < 200; ++round) {
      std::vector<std::string> shuffled = fields;
      std::swap(shuffled[below(fields.size())], shuffled[below(fields.size())]);
      survive(Joined(shuffled));
      std::string flipped = text;
      flipped[below(text.size())] ^= static_cast<char>(1 << below(8));
      survive(flipped);
    }
  }
}

TEST(PlotFile, OpensAnythingElseAsData) {
  const struct {
    const char* text;
    LocaleText locale;
    std::vector<double> x, y;
    const char* dates = nullptr;  // the pattern of X
  } kCases[] = {
      {"1,2\n3,4.5\n", {}, {1, 3}, {2, 4.5}},
      {"Time\tLevel\n1\t2\n\n3\t\n5\t6", {}, {1, 5}, {2, 6}},
      {"Time Level\n 1   2 9\n3 4 9\n", {}, {1, 3}, {2, 4}},
      {"run,1,2,3\nrun,4,5,6\n", {}, {1, 4}, {2, 5}},
      {"Level\n7\n8\n9\n", {}, {1, 2, 3}, {7, 8, 9}},
      {"7\n-\n9\n", {}, {1, 3}, {7, 9}},
      {"1,5;2,5\n3,5;4\n", kCommaLocale, {1.5, 3.5}, {2.5, 4}},
      {"1.5;2.5\n", kCommaLocale, {1.5}, {2.5}},
      {"Day,Level\n03/04/2026,2\n13/04/2026,NA\n14/04/2026,4\n", {}, {46115, 46126}, {2, 4}, "dd/mm/yyyy"},
      {"2026-11-22 12:00 2\n2026-11-23 18:00 4\n", {}, {46348.5, 46349.75}, {2, 4}, "yyyy-mm-dd hh:mm"},
      {"22.11.2026 12:00;2,5\n", kCommaLocale, {46348.5}, {2.5}, "dd.mm.yyyy hh:mm"},
  };
  for (const auto& c : kCases) {
    const auto plot = ParsePlotFile(c.text, "runs.dat", Settings(), c.locale);
    ASSERT_TRUE(plot) << c.text;
    ASSERT_EQ((*plot)->PlotData.size(), 1u);
    const PlotSeries& series = (*plot)->PlotData[0];
    EXPECT_EQ(series.Style().LegendText, "Raw Data");
    const SeriesTable table = series.CopyDataTo();
    EXPECT_EQ(std::vector<double>(table.X.begin(), table.X.end()), c.x) << c.text;
    EXPECT_EQ(std::vector<double>(table.Y.begin(), table.Y.end()), c.y) << c.text;
    EXPECT_EQ((*plot)->Axes()[0]->LabelString, c.dates ? c.dates : PlotClass(Settings(), c.locale).X.LabelString);
    RecordingPrompter user;
    EXPECT_TRUE((*plot)->CreateGraph({.Regenerate = true}, user));
  }
  for (const char* text : {"", "words\nmore words\n", "\n\n", "1,\n,2\n"})
    EXPECT_EQ(ParsePlotFile(text, "runs.dat", Settings(), {}).error(), "Error importing data from 'runs.dat'.") << text;
}

TEST(SavePlot, KeepsTheFileBeforeAndSaysWhereItFails) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  const std::string name = folder.Path("a.plt");
  PlotClass plot{Settings()};
  EXPECT_FALSE(SavePlot(plot, name, user));
  EXPECT_EQ(user.Last(),
            "refuse: An error in the current plot settings prohibits the plot from being saved in it's current state. "
            "Check the plot settings in the Graph Properties window.");
  ASSERT_TRUE(plot.CreateGraph({}, user));
  EXPECT_TRUE(SavePlot(plot, name, user));
  const std::string before = folder.Read("a.plt");
  plot.PlotTitle = "Other";
  EXPECT_TRUE(SavePlot(plot, name, user));
  EXPECT_EQ(folder.Read("a.plt~"), before);
  EXPECT_EQ((*OpenPlotFile(name, Settings(), {}))->PlotTitle, "Other");

  const std::string missing = folder.Path("no/a.plt");
  EXPECT_FALSE(SavePlot(plot, missing, user));
  EXPECT_EQ(user.Last(), "refuse: Error saving plot to '" + missing + "'. The folder does not exist.");
}

}  // namespace
}  // namespace quorvex
