#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "Fields.h"
#include "Golden.h"
#include "Projects.h"
#include "TemporaryFolder.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

constexpr const char* kUnreadable = "Error reading project 'p.qvx'.\r\nThe file is incompatible or appears corrupted.";

// Cells as they would be solved, bit by bit; texts apart.
void ExpectEqualSheets(const DataSheet& a, const DataSheet& b) {
  EXPECT_EQ(a.IndependentVariables, b.IndependentVariables);
  EXPECT_EQ(a.HasStandardDeviation, b.HasStandardDeviation);
  EXPECT_EQ(a.Formats, b.Formats);
  ASSERT_EQ(a.Cells.GridLastRow(), b.Cells.GridLastRow());
  for (std::size_t row = 1; row <= a.Cells.GridLastRow(); ++row)
    for (std::size_t col = 1; col <= a.ColumnCount(); ++col) {
      EXPECT_EQ(a.Cells.GridCellText(row, col), b.Cells.GridCellText(row, col));
      EXPECT_EQ(std::bit_cast<std::uint64_t>(a.Cells.GridCellNumber(row, col)),
                std::bit_cast<std::uint64_t>(b.Cells.GridCellNumber(row, col)));
    }
}

void ExpectEqualModels(const ModelClass& a, const ModelClass& b) {
  EXPECT_EQ(DefinitionOf(a), DefinitionOf(b));
  const auto flags = [](const ModelClass& m) {
    return std::vector<int>{m.UserType,      m.SpecifyIC, m.SpecifyICComplete, m.Solve,
                            m.Solved,        m.ErrorInfo, m.SolveType,         m.SweepCount,
                            m.NumIterations, m.DOFError,  m.DOFRegression,     static_cast<int>(m.Ended)};
  };
  const auto numbers = [](const ModelClass& m) {
    std::vector<double> all = {m.RSS, m.RssNorm, m.RST, m.ResAvg, m.ResSum, m.Durbin, m.R2, m.R2Adjust, m.StdErr};
    for (int i = 1; i <= m.NumDependentVar(); ++i)
      all.insert(all.end(), {m.Values(i), m.Covariance(i), static_cast<double>(m.Constants(i))});
    for (const VariableStatistics& x : m.Statistics.X)
      all.insert(all.end(), {x.InputXMin, x.InputXMax, x.XMean, x.XStd, x.XAtYMin, x.XAtYMax, x.YAtXMin, x.YAtXMax});
    const DataStatistics& y = m.Statistics;
    all.insert(all.end(), {y.InputYMin, y.InputYMax, y.YMean, y.YStd});
    return all;
  };
  EXPECT_EQ(flags(a), flags(b)) << a.id;
  EXPECT_EQ(a.FoundBy, b.FoundBy) << a.id;
  EXPECT_TRUE(a.Bounds() == b.Bounds()) << a.id;
  EXPECT_EQ(a.Loss, b.Loss) << a.id;
  EXPECT_EQ(a.LossScale, b.LossScale) << a.id;
  EXPECT_EQ(a.LossScaleGiven, b.LossScaleGiven) << a.id;
  EXPECT_EQ(numbers(a), numbers(b)) << a.id;
  EXPECT_EQ(a.GetICRange(), b.GetICRange()) << a.id;
  EXPECT_EQ(a.GetSweepInfo(), b.GetSweepInfo()) << a.id;
  EXPECT_EQ(*a.CopyInputDataTo(), *b.CopyInputDataTo()) << a.id;
  EXPECT_EQ(a.IDIndex(), b.IDIndex());
}

void ExpectEqualProjects(const Project& a, const Project& b) {
  ExpectEqualSheets(a.Sheet, b.Sheet);
  EXPECT_EQ(a.Limits, b.Limits);
  ASSERT_EQ(a.Models.size(), b.Models.size());
  for (const auto& model : a.Models) {
    const ModelClass* const twin = b.Models.Find(model->id);
    ASSERT_NE(twin, nullptr) << model->id;
    if (model->Solved || model->UserType) ExpectEqualModels(*model, *twin);
    EXPECT_EQ(model->Solved, twin->Solved);
  }
  ASSERT_EQ(a.Interpolations.size(), b.Interpolations.size());
  for (std::size_t i = 0; i < a.Interpolations.size(); ++i) {
    const InterpClass &curve = a.Interpolations[i], &twin = b.Interpolations[i];
    EXPECT_EQ(curve.Solved, twin.Solved);
    if (!curve.Solved) continue;
    EXPECT_EQ(curve.id, twin.id);
    EXPECT_EQ(curve.Description, twin.Description);
    EXPECT_EQ(curve.LegendText, twin.LegendText);
    EXPECT_EQ(curve.ShowErrorBars, twin.ShowErrorBars);
    EXPECT_EQ(curve.CopyInterpolationTableTo(), twin.CopyInterpolationTableTo());
    EXPECT_EQ(curve.InputXMin, twin.InputXMin);
    EXPECT_EQ(curve.InputYMax, twin.InputYMax);
  }
}

Project Read(const std::string& text, const LocaleText& locale = {}) {
  Result<Project> project = ParseProject(text, "p.qvx", locale);
  EXPECT_TRUE(project) << project.error();
  return project ? std::move(*project) : Project(1, false, locale);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

// As if it were solved, with a number of its own in every field.
void FillIn(ModelClass& model, std::size_t variables) {
  double number = 0.5;
  const auto fill = [&](std::initializer_list<double*> fields) {
    for (double* field : fields) *field = ++number;
  };
  model.Solved = model.ErrorInfo = true;
  fill({&model.RSS, &model.RssNorm, &model.RST, &model.ResAvg, &model.ResSum, &model.Durbin, &model.R2, &model.R2Adjust,
        &model.StdErr});
  model.DOFError = 21;
  model.DOFRegression = 22;
  model.NumIterations = 23;
  const int n = model.NumDependentVar();
  std::vector<ICRange> ranges;
  for (int i = 1; i <= n; ++i) {
    model.SetValue(i, 100 * i + 0.1);
    ranges.push_back({100 * i + 0.2, 100 * i + 0.3, i + 1});
    model.SetCovariance(i, 100 * i + 0.4);
  }
  model.SetICRange(std::move(ranges));
  model.Statistics.X.assign(variables, {});
  for (VariableStatistics& x : model.Statistics.X)
    fill({&x.InputXMin, &x.InputXMax, &x.XMean, &x.XStd, &x.XAtYMin, &x.XAtYMax, &x.YAtXMin, &x.YAtXMax});
  DataStatistics& y = model.Statistics;
  fill({&y.InputYMin, &y.InputYMax, &y.YMean, &y.YStd});
}

TEST(ProjectFile, HasTheLayoutOfVersion9) {
  Project one = NewProject(1, true, LocaleText());
  const double rows[][3] = {{1, 2, 0.1}, {2, 4, 0.1}, {4, 8.5, 0.2}};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t col = 0; col < 3; ++col) one.Sheet.Cells.SetGridCellNumber(i + 1, col + 1, rows[i][col]);
  one.Sheet.Cells.ClearCell(2, 2);  // an empty cell in the middle of a row
  one.Sheet.Cells.SetGridCellNumber(4, 1, 5);
  one.Sheet.Cells.SetGridCellNumber(4, 2, 10);  // and one at the end
  one.Notes = "  Remark \"one\"\r\nand two ";
  AddUserModel(one, {"Mine", {"a*x+b*f1", "x^0.5"}, "Root", {{"Value", "1.5", "x"}, {"/ymax", "2", "Numerical"}}});
  ModelClass& line = *one.Models.Find("a*x+b");
  FillIn(line, 1);
  line.CopyInputDataFrom(std::make_shared<const InputPoints>(InputPoints{{{1, 4, 5}}, {2, 8.5, 10}}));
  std::string log;
  ASSERT_TRUE(one.Interpolations[1].Fit(PointsOf(one), log));
  ExpectGolden("Project.qvx", ProjectText(one));

  Project several = NewProject(3, false, LocaleText());
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t col = 0; col < 4; ++col)
      several.Sheet.Cells.SetGridCellNumber(i + 1, col + 1, static_cast<double>(10 * i + col) / 4);
  ModelClass& swept =
      AddUserModel(several, {"Swept", {"a*x1+b*x2*x3"}, "", {{"Value", "1", "x1"}, {"Value", "2", "x2*x3"}}});
  FillIn(swept, 3);
  swept.SweepCount = 2;
  swept.Ended = SearchEnd::IterationLimit;
  swept.SetBounds(1, 0.1, HUGE_VAL);
  swept.SetBounds(2, -1e-300, 0.1 + 0.2);
  several.Models.Find("a*x1+b*x2+c*x3")->SetBounds(3, -HUGE_VAL, 5);  // not solved
  swept.FoundBy = "starts read off the data (4 of 40 searches)";
  swept.Loss = LossKind::Cauchy;
  swept.LossScale = 2.5;
  swept.LossScaleGiven = true;
  swept.SetSweepInfo({{{0.1, 0.2}, {1.1, 1.2}, 3, 4, 5, 6, 7}, {{0.3, 0.4}, {1.3, 1.4}, 13, 14, 15, 16, 17}});
  const SolveData points = PointsOf(several);
  swept.CopyInputDataFrom(std::make_shared<const InputPoints>(InputPoints{points.X, points.Y}));
  ExpectGolden("ProjectSeveralVariables.qvx", ProjectText(several));

  ExpectEqualProjects(one, Read(ProjectText(one)));
  ExpectEqualProjects(several, Read(ProjectText(several)));
}

TEST(ProjectFile, EndsShortWithoutSolvedModels) {
  const std::string text = ProjectText(NewProject(2, false, LocaleText()));
  EXPECT_TRUE(text.ends_with("\"B_USERDEFINED\"\r\n\"E_USERDEFINED\"\r\n\"E_DATA\"\r\n")) << text;
}

TEST(ProjectFile, ReadsBackEqual) {
  for (const LocaleText& locale : {LocaleText(), kCommaLocale}) {
    for (const bool several : {false, true}) {
      const Project project = several ? SeveralVariablesProject(locale) : OneVariableProject(locale);
      const std::string text = ProjectText(project);
      const Project back = Read(text, locale);
      ExpectEqualProjects(project, back);
      EXPECT_EQ(ProjectText(back), text);
    }
  }
}

// A model whose normal equations have no inverse is solved all the same.
TEST(ProjectFile, KeepsStandardErrorsThatAreNone) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  Project project = OneVariableProject(LocaleText());
  ModelClass& model = *project.Models.Find("My line");
  model.SetCovariance(1, kInfinite);
  model.SetCovariance(2, std::numeric_limits<double>::quiet_NaN());
  const std::string text = ProjectText(project);
  const Project back = Read(text);
  EXPECT_EQ(back.Models.Find("My line")->Covariance(1), kInfinite);
  EXPECT_EQ(ProjectText(back), text);
}

TEST(ProjectFile, TravelsBetweenLocales) {
  for (const bool several : {false, true}) {
    const auto make = several ? SeveralVariablesProject : OneVariableProject;
    const std::string text = ProjectText(make(kCommaLocale));
    EXPECT_EQ(text, ProjectText(make(LocaleText())));
    ExpectEqualProjects(make(LocaleText()), Read(text));
  }
}

TEST(ProjectFile, TurnsQuotesIntoApostrophesAndTrimsNotes) {
  const Project back = Read(ProjectText(OneVariableProject(LocaleText())));
  EXPECT_EQ(back.Notes, "First 'run'\r\nsecond line, with comma\r\n\xC3\xA4");
  EXPECT_EQ(back.Sheet.Headers, (std::vector<std::string>{"Time, s", "'Level'"}));
}

TEST(ProjectFile, TakesAnyLineEndsAndLayout) {
  const std::string text = ProjectText(SeveralVariablesProject(LocaleText()));
  std::string lines = text, commas;
  std::erase(lines, '\r');
  for (const char c : lines) commas += c == '\n' ? ',' : c;
  std::string carriage = text;
  std::erase(carriage, '\n');
  for (const std::string& other : {lines, carriage, commas, "junk, 7\n" + text, "\xEF\xBB\xBF" + text})
    EXPECT_EQ(ProjectText(Read(other)), text);
  EXPECT_EQ(Read(Replaced(text, "B_NOTES\"\r\n\"", "B_NOTES\"\r\n\"\xE4 \x80")).Notes, "\xC3\xA4 \xE2\x82\xAC");
}

TEST(ProjectFile, KeepsStartsOfASweepFromAFileThatTellsNoMore) {
  const Project project = OneVariableProject(LocaleText());
  const std::string text = ProjectText(project);
  const std::string cut = text.substr(0, text.find("\"B_SWEEPINFO\""));
  ASSERT_TRUE(cut.ends_with("\"E_DATA\"\r\n"));
  const Project back = Read(cut);
  const ModelClass& model = *back.Models.Find("My line");
  EXPECT_EQ(model.SweepCount, 6);
  const auto& whole = project.Models.Find("My line")->GetSweepInfo();
  ASSERT_EQ(model.GetSweepInfo().size(), whole.size());
  for (std::size_t k = 0; k < whole.size(); ++k)
    EXPECT_EQ(model.GetSweepInfo()[k], (SweepRow{.Start = whole[k].Start, .Final = {}}));
  EXPECT_EQ(ProjectText(back), cut);
  Project later = OneVariableProject(LocaleText());  // whose model was then fitted from one start
  later.Models.Find("My line")->SweepCount = 0;
  EXPECT_EQ(ProjectText(later).find("B_SWEEPINFO"), std::string::npos);
}

TEST(ProjectFile, RefusesOtherFilesInTheirWords) {
  const struct {
    const char *version, *words;
  } kCases[] = {
      {"Quorvex:  Version 4.1", "Quorvex version 4.x files cannot be opened in the current version."},
      {"Quorvex:  Version 3.0", "Quorvex version 3.x files cannot be opened in the current version."},
      {"Quorvex:  Version 2.2", "Quorvex version 2.x files cannot be opened in the current version."},
      {"Quorvex:  Version 8.1 Plot",
       "'p.qvx' is a Quorvex Plot file. Use the Open command under the Plot menu to open plots."},
      {"Quorvex:  Version 10.0", "'p.qvx' is not compatible with Quorvex Version 9.0"},
      {"Quorvex: Version 9.0", "'p.qvx' is not compatible with Quorvex Version 9.0"},
      {"", "'p.qvx' is not compatible with Quorvex Version 9.0"},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(ParseProject("\"B_HEADER\"\n\"    " + std::string(c.version) + "\"\n", "p.qvx", {}).error(), c.words);
  for (const char* text :
       {"", "1,2,3\n4,5,6\n", "\"B_HEADER\"", "\"B_HEADER", "\"B_HEADER\"\n\"Quorvex:  Version 9.0\""})
    EXPECT_EQ(ParseProject(text, "p.qvx", {}).error(), kUnreadable) << text;
  EXPECT_EQ(ReadProject("no/such/file.qvx", {}).error(),
            "Error reading project 'no/such/file.qvx'.\r\nThe file is incompatible or appears corrupted.");
}

// What older versions wrote of the same project.
std::string AsVersion(const Project& project, const std::string& version) {
  std::vector<std::string> fields = FieldsOf(ProjectText(project));
  const auto drop = [&](std::size_t at) { fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(at)); };
  fields[1] = "\"    Quorvex:  Version " + version + "\"\r\n";
  if (version <= "6.0") {
    const std::size_t format = IndexOf(fields, "\"B_FORMAT\"\r\n") + 1;
    for (std::size_t col = project.Sheet.ColumnCount(); col-- > 0;)
      for (const std::size_t field : {10u, 4u, 0u}) drop(format + 16 * col + field);
  }
  for (std::size_t at = 0; at < fields.size(); ++at) {
    if (fields[at] != "\"B_EQUATIONCLASS\"\r\n") continue;
    // Behind the marker: description, 10 lines, id, 5 flags, SolveType, 11 statistics.
    if (version <= "7.0") {
      drop(at + 29);
      drop(at + 28);
    }
    if (version < "6.0") drop(at + 19);
  }
  return Joined(fields);
}

TEST(ProjectFile, ReadsOlderVersionsAndComputesWhatTheyLack) {
  for (const bool several : {false, true}) {
    Project project = several ? SeveralVariablesProject(LocaleText()) : OneVariableProject(LocaleText());
    project.Sheet.Formats[1] = ColumnFormat();  // what older formats lack is as by default
    if (!several) {
      // Of the coefficients that are held a search counts none, and a linear solve, which holds none, all.
      project.Models.Find("a*x+b")->SetConstant(2, 0);
      ModelClass& held = AddUserModel(project, {"Held", {"a*x+b"}, "", {{"Value", "1", ""}, {"Value", "0.5", ""}}});
      held.SetConstant(2, 0);
      Fit(held, PointsOf(project), 0);
    }
    for (const char* version : {"8.2", "8.1", "8.0", "7.2", "7.1", "7.0", "6.1", "6.0", "5.2", "5.1", "5.0"}) {
      SCOPED_TRACE(version);
      const Project back = Read(AsVersion(project, version));
      if (std::string(version) > "7.0") {
        ExpectEqualProjects(project, back);
        continue;
      }
      ExpectEqualSheets(project.Sheet, back.Sheet);
      for (const auto& model : project.Models) {
        if (!model->Solved) continue;
        const ModelClass& twin = *back.Models.Find(model->id);
        EXPECT_TRUE(twin.Solved);
        EXPECT_EQ(twin.DOFError, model->DOFError);
        EXPECT_EQ(twin.DOFRegression, model->DOFRegression);
        EXPECT_NEAR(twin.RSS, model->RSS, 1e-12 * model->RSS);
        EXPECT_NEAR(twin.StdErr, model->StdErr, 1e-12 * model->StdErr);
      }
    }
  }
}

// Three variables have the shortest catalogue, which makes reading quick; every section is there.
std::string SmallProject() {
  Project project = SeveralVariablesProject(LocaleText());
  ModelClass& swept = AddUserModel(project, {"Swept", {"a*x1+x2*x3"}, "", {{"Value", "1", "Numerical"}}});
  const SolveData data = PointsOf(project);
  swept.SetIC(data);
  swept.SpecifyICComplete = true;
  swept.SetICRange({{0.5, 3, 2}});
  Fit(swept, data, 0);
  SolveData series = {{{1, 2, 3}}, {4, 1, 2}, {}, {}};
  std::string log;
  EXPECT_TRUE(project.Interpolations[0].Fit(series, log));
  return ProjectText(project);
}

TEST(ProjectFile, RefusesAFileCutAtAnyField) {
  const std::vector<std::string> fields = FieldsOf(SmallProject());
  const std::size_t end = IndexOf(fields, "\"E_DATA\"\r\n"), sweeps = IndexOf(fields, "\"E_SWEEPINFO\"\r\n");
  std::string text;
  for (std::size_t kept = 0; kept < fields.size(); ++kept) {
    const Result<Project> project = ParseProject(text, "p.qvx", {});
    ASSERT_EQ(static_cast<bool>(project), kept == end + 1 || kept == sweeps + 1) << kept;
    if (!project) {
      EXPECT_EQ(project.error(), kUnreadable) << kept;
    }
    text += fields[kept];
  }
  EXPECT_TRUE(ParseProject(text, "p.qvx", {}));
}

TEST(ProjectFile, RefusesAMissingOrRepeatedField) {
  const std::vector<std::string> fields = FieldsOf(SmallProject());
  const std::size_t sheet = IndexOf(fields, "\"B_DATA\"\r\n");
  for (std::size_t i = 0; i < fields.size(); ++i) {
    std::vector<std::string> missing = fields, repeated = fields;
    missing.erase(missing.begin() + static_cast<std::ptrdiff_t>(i));
    repeated.insert(repeated.begin() + static_cast<std::ptrdiff_t>(i), fields[i]);
    const bool begins = i == 0;  // what stands in front of B_HEADER is skipped
    if (i < sheet && !begins) {
      EXPECT_FALSE(ParseProject(Joined(missing), "p.qvx", {})) << fields[i];
      EXPECT_FALSE(ParseProject(Joined(repeated), "p.qvx", {})) << fields[i];
    }
    ParseProject(Joined(missing), "p.qvx", {});
    ParseProject(Joined(repeated), "p.qvx", {});
  }
}

// Whatever is done to a file, it is read or refused, and what was read can be saved and read again.
void ExpectReadOrRefused(const std::string& text) {
  const Result<Project> project = ParseProject(text, "p.qvx", {});
  if (!project) return;
  const std::string saved = ProjectText(*project);
  const Result<Project> again = ParseProject(saved, "p.qvx", {});
  ASSERT_TRUE(again) << text;
  EXPECT_EQ(ProjectText(*again), saved);
}

TEST(ProjectFile, SurvivesShuffledLinesAndFlippedBytes) {
  const std::string text = SmallProject();
  const std::vector<std::string> fields = FieldsOf(text);
  std::mt19937 random(42);
  const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random()) % n; };
  constexpr const char* kEvil[] = {"2147483647", "-1", "1E+999", "", "\"", "#TRUE#", "1e-320", "0", "\"E_DATA\"", "9"};
  for (int round = 0; round < 400; ++round) {
    std::vector<std::string> shuffled = fields;
    for (std::size_t swaps = 1 + below(3); swaps > 0; --swaps)
      std::swap(shuffled[below(fields.size())], shuffled[below(fields.size())]);
    ExpectReadOrRefused(Joined(shuffled));
    std::vector<std::string> evil = fields;
    evil[below(fields.size())] = std::string(kEvil[below(std::size(kEvil))]) + "\r\n";
    ExpectReadOrRefused(Joined(evil));
    std::string flipped = text;
    for (std::size_t flips = 1 + below(4); flips > 0; --flips)
      flipped[below(text.size())] ^= static_cast<char>(1 << below(8));
    ExpectReadOrRefused(flipped);
  }
  std::string noise;
  for (int i = 0; i < 20000; ++i) noise += static_cast<char>(random());
  ExpectReadOrRefused(noise);
  ExpectReadOrRefused(text.substr(0, text.find("E_HEADER")) + noise);
}

// The flags and counts of a record behind "B_EQUATIONCLASS": description, 10 lines, id, UserType, 4 flags, SolveType,
// 11 statistics, and the coefficients with 5 fields each.
TEST(ProjectFile, RefusesARecordThatFitsNoModel) {
  const std::vector<std::string> fields = FieldsOf(ProjectText(OneVariableProject(LocaleText())));
  const auto refuses = [&](std::size_t at, const std::string& field, std::size_t dropped = 0) {
    std::vector<std::string> changed = fields;
    changed[at] = field;
    const auto behind = changed.begin() + static_cast<std::ptrdiff_t>(at + 1);
    changed.erase(behind, behind + static_cast<std::ptrdiff_t>(dropped));
    return !ParseProject(Joined(changed), "p.qvx", {});
  };
  std::size_t records = 0;
  for (std::size_t at = 0; at < fields.size(); ++at) {
    if (fields[at] == "\"B_INTERPOLATIONCLASS\"\r\n") {
      const std::size_t count = at + 7;
      EXPECT_TRUE(refuses(count, "-1\r\n", 3 * std::stoul(fields[count])));
    }
    if (fields[at] != "\"B_EQUATIONCLASS\"\r\n") continue;
    ++records;
    EXPECT_TRUE(refuses(at + 13, fields[at + 13] == "#TRUE#\r\n" ? "#FALSE#\r\n" : "#TRUE#\r\n"));
    const std::size_t coefficients = std::stoul(fields[at + 30]), sweep = at + 31 + 5 * coefficients;
    const std::size_t sweeps = coefficients * std::stoul(fields[sweep]), points = sweep + 1 + sweeps;
    EXPECT_TRUE(refuses(sweep, "-1\r\n", sweeps));
    EXPECT_TRUE(refuses(points, "-1\r\n", 2 * std::stoul(fields[points])));
    EXPECT_FALSE(refuses(points, fields[points]));
  }
  EXPECT_EQ(records, 2u);
}

TEST(ProjectFile, TrustsNoCount) {
  const std::string text = SmallProject();
  for (const char* marker : {"\"B_INPUT\"\r\n", "\"B_DATA\"\r\n"}) {
    const std::size_t at = text.find(marker) + std::string(marker).size();
    EXPECT_FALSE(ParseProject(text.substr(0, at) + "2147483647\r\n1,2,3,4,5\r\n", "p.qvx", {}));
  }
  for (const auto& [end, read] : {std::pair("\"Swept\"\r\n1", true),
                                  {"\"Swept\"\r\n3", true},
                                  {"\"Swept\"\r\n0", false},
                                  {"\"Swept\"\r\n4", false},
                                  {"\"Nobody\"\r\n1", false},
                                  {"\"Swept\"\r\n", false}})
    EXPECT_EQ(static_cast<bool>(ParseProject(
                  text + "\"B_SEARCHEND\"\r\n" + std::string(end) + "\r\n\"E_SEARCHEND\"\r\n", "p.qvx", {})),
              read)
        << end;
  EXPECT_FALSE(ParseProject(Replaced(text, "columns=5", "columns=2147483647"), "p.qvx", {}));
  EXPECT_FALSE(ParseProject(Replaced(text, "columns=5", "columns=2"), "p.qvx", {}));
  EXPECT_FALSE(ParseProject(Replaced(text, "\"Begin_description\"", "\"No_description\""), "p.qvx", {}));
}

}  // namespace
}  // namespace quorvex
