#include <algorithm>
#include <memory>
#include <optional>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "files/FieldReader.h"
#include "files/ProjectFile.h"
#include "files/UserModelRecord.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

// What the versions differ in.
struct Layout {
  bool FullFormat;       // a column's format has NumberFormat, Orientation and FontStrikeout
  bool HasRSS;           // the first of the statistics
  bool HasFreedomCount;  // DOFError and DOFRegression; else the statistics are computed anew
};

struct VersionLayout {
  std::string_view Version;
  Layout Of;
};
constexpr VersionLayout kLayouts[] = {
    {"Quorvex:  Version 9.0", {true, true, true}},    {"Quorvex:  Version 8.2", {true, true, true}},
    {"Quorvex:  Version 8.1", {true, true, true}},    {"Quorvex:  Version 8.0", {true, true, true}},
    {"Quorvex:  Version 7.2", {true, true, true}},    {"Quorvex:  Version 7.1", {true, true, true}},
    {"Quorvex:  Version 7.0", {true, true, false}},   {"Quorvex:  Version 6.1", {true, true, false}},
    {"Quorvex:  Version 6.0", {false, true, false}},  {"Quorvex:  Version 5.2", {false, false, false}},
    {"Quorvex:  Version 5.1", {false, false, false}}, {"Quorvex:  Version 5.0", {false, false, false}},
};

// Why a file of a version that has no layout is refused.
std::string Refusal(std::string_view version, const std::string& fileName) {
  for (const std::string_view old : {"4.0", "4.1", "3.0", "3.1", "2.2"})
    if (version == std::string("Quorvex:  Version ").append(old))
      return "Quorvex version " + std::string(1, old[0]) + ".x files cannot be opened in the current version.";
  if (version.starts_with("Quorvex") && version.ends_with("Plot"))
    return "'" + fileName + "' is a Quorvex Plot file. Use the Open command under the Plot menu to open plots.";
  return "'" + fileName + "' is not compatible with Quorvex Version 9.0";
}

Failure Unreadable(const std::string& fileName) {
  return {"Error reading project '" + fileName + "'." + std::string(NL) +
          "The file is incompatible or appears corrupted."};
}

class Reader {
 public:
  Reader(FieldReader& in, const Layout& layout, const LocaleText& locale) : in_(in), layout_(layout), locale_(locale) {}

  // All behind the version. Nothing where the file is not what it says.
  std::optional<Project> Read() {
    in_.Text();  // the file type
    const bool weighted = ContainsNoCase(in_.Text(), "true");
    const int columns = CountBehindEquals(in_.Text()).value_or(0);
    in_.Expect("E_HEADER");
    const int variables = columns - (weighted ? 2 : 1);
    if (!in_.Good() || variables < 1 || variables > kMostIndependentVariables) return std::nullopt;
    project_ = NewProject(static_cast<std::size_t>(variables), weighted, locale_);

    in_.Expect("B_COLHEADER");
    for (std::string& header : project_->Sheet.Headers) header = in_.Text();
    in_.Expect("E_COLHEADER");
    in_.Expect("B_SOLVESETUP");
    project_->Limits.ResidualTolerance = in_.Real();
    project_->Limits.MaxIterations = in_.Integer();
    project_->Limits.DivIterations = in_.Integer();
    in_.Expect("E_SOLVESETUP");
    in_.Expect("B_FORMAT");
    for (ColumnFormat& format : project_->Sheet.Formats) ReadFormat(format);
    in_.Expect("E_FORMAT");
    in_.Expect("B_NOTES");
    project_->Notes = in_.Text();
    in_.Expect("E_NOTES");
    in_.Expect("B_DATA");
    ReadSheet();
    ReadUserModels();
    ReadSolved();
    ReadBehindTheEnd();
    if (!in_.Good()) return std::nullopt;
    return std::move(project_);
  }

 private:
  void ReadFormat(ColumnFormat& format);
  void ReadSheet();
  void ReadUserModels();
  void ReadSolved();
  void ReadSolvedModel();
  void ReadInput(ModelClass& model);
  void ReadInterpolation();
  void ReadBehindTheEnd();
  void ReadSweeps();
  void ReadSearchEnds();
  void TakeReals(std::initializer_list<double*> targets) {
    for (double* target : targets) *target = in_.Real();
  }
  std::int32_t Count() {
    const std::int32_t count = in_.Integer();
    if (count < 0) in_.Fail();
    return count;
  }

  // The points of the sheet. Empty columns where it holds texts, which no solve could read.
  const SolveData& Points();

  FieldReader& in_;
  const Layout layout_;
  const LocaleText locale_;
  std::optional<Project> project_;
  std::optional<SolveData> points_;
  std::shared_ptr<const InputPoints> input_;  // of the models of several variables, which keep every point
};

void Reader::ReadFormat(ColumnFormat& format) {
  if (layout_.FullFormat) format.NumberFormat = in_.Text();
  format.AlignHorizontal = in_.Integer();
  format.WordWrap = in_.Boolean();
  format.AlignVertical = in_.Integer();
  if (layout_.FullFormat) format.Orientation = in_.Integer();
  format.FontName = in_.Text();
  format.FontSize = in_.Integer();
  format.FontBold = in_.Boolean();
  format.FontItalic = in_.Boolean();
  format.FontUnderline = in_.Boolean();
  if (layout_.FullFormat) format.FontStrikeout = in_.Boolean();
  format.FontColor = in_.Integer();
  format.FontOutline = in_.Boolean();
  format.FontShadow = in_.Boolean();
  format.ColumnStyle = in_.Integer();
  format.ColumnWidth = in_.Integer();
}

// Numbers have a decimal point in any locale. What is no number must be quoted, or the fields are out of step.
void Reader::ReadSheet() {
  in_.Expect("B_INPUT");
  const auto rows = static_cast<std::size_t>(Count());
  GridCells& cells = project_->Sheet.Cells;
  for (std::size_t row = 1; row <= rows && in_.Good(); ++row) {
    for (std::size_t col = 1; col <= project_->Sheet.ColumnCount(); ++col) {
      const FieldReader::Field field = in_.Next();
      if (Trim(field.Text).empty()) continue;
      if (const std::optional<double> value = NumericText(field.Text))
        cells.SetGridCellNumber(row, col, *value);
      else if (field.Quoted)
        cells.SetGridCellText(row, col, field.Text);
      else
        in_.Fail();
    }
  }
  in_.Expect("E_INPUT");
}

// A model that does not compile, or has the ID of another, is left out.
void Reader::ReadUserModels() {
  in_.Expect("B_USERDEFINED");
  for (std::string line = in_.Text(); in_.Good() && line != "E_USERDEFINED"; line = in_.Text()) {
    const UserModelDefinition definition = ReadUserModel(in_, line, true, locale_);
    if (!in_.Good()) return;
    if (auto model = MakeUserModel(definition, project_->Sheet.IndependentVariables, locale_))
      project_->Models.Add(definition.id, std::move(model));
  }
}

void Reader::ReadSolved() {
  for (std::string word = in_.Text(); in_.Good() && word != "E_DATA"; word = in_.Text()) {
    if (word == "B_EQUATIONCLASS")
      ReadSolvedModel();
    else if (word == "B_INTERPOLATIONCLASS")
      ReadInterpolation();
    else
      in_.Fail();
  }
}

void Reader::ReadSolvedModel() {
  std::string description = in_.Text();
  for (int n = 0; n < kFunctionLines; ++n) in_.Next();  // the model of that ID has them
  const std::string id = in_.Text();
  const bool userType = in_.Boolean();
  ModelClass* const found = in_.Good() ? project_->Models.Find(id) : nullptr;
  if (found == nullptr || found->UserType != userType) return in_.Fail();
  ModelClass& model = *found;
  model.Description = std::move(description);
  model.SpecifyIC = in_.Boolean();
  model.SpecifyICComplete = in_.Boolean();
  model.Solve = in_.Boolean();
  model.Solved = in_.Boolean();
  model.SolveType = in_.Integer();
  if (layout_.HasRSS) model.RSS = in_.Real();
  TakeReals({&model.RssNorm, &model.RST, &model.ResAvg, &model.ResSum, &model.Durbin, &model.R2, &model.R2Adjust,
             &model.StdErr});
  if (layout_.HasFreedomCount) {
    model.DOFError = in_.Integer();
    model.DOFRegression = in_.Integer();
  }

  const int n = model.NumDependentVar();
  if (in_.Integer() != n || n == 0) return in_.Fail();
  std::vector<ICRange> ranges(static_cast<std::size_t>(n));
  int freeCount = 0;
  for (int i = 1; i <= n; ++i) {
    model.SetConstant(i, in_.Integer());
    if (model.Constants(i) != 0) ++freeCount;
    model.SetValue(i, in_.Real());
    ICRange& range = ranges[static_cast<std::size_t>(i - 1)];
    TakeReals({&range.Min, &range.Max});
    range.Steps = in_.Integer();
  }
  model.SetICRange(std::move(ranges));
  model.SweepCount = Count();
  std::vector<std::vector<double>> sweep;
  for (int k = 0; k < model.SweepCount && in_.Good(); ++k) {
    sweep.emplace_back();
    for (int i = 0; i < n; ++i) sweep.back().push_back(in_.Real());
  }
  model.SetSweepInfo(std::move(sweep));

  ReadInput(model);
  model.ErrorInfo = in_.Boolean();
  if (in_.Integer() != n) return in_.Fail();
  for (int i = 1; i <= n; ++i) model.SetCovariance(i, in_.Real());
  model.NumIterations = in_.Integer();
  in_.Expect("E_EQUATIONCLASS");
  if (in_.Good() && !layout_.HasFreedomCount)
    model.Solved = model.Solved && model.GetGoodnessOfFit(Points(), model.SolveType == 0 ? freeCount : n);
}

// The input of the model: its points and what they say.
void Reader::ReadInput(ModelClass& model) {
  DataStatistics& input = model.Statistics;
  const std::size_t variables = project_->Sheet.IndependentVariables;
  input.X.assign(variables, {});
  const std::int32_t points = Count();
  const auto takeMoments = [&](VariableStatistics& x) {
    TakeReals({&x.XMean, &x.XStd, &x.XAtYMin, &x.XAtYMax, &x.YAtXMin, &x.YAtXMax});
  };
  if (variables == 1) {
    InputPoints own{{{}}, {}};
    for (std::int32_t i = 0; i < points && in_.Good(); ++i) {
      own.X[0].push_back(in_.Real());
      own.Y.push_back(in_.Real());
    }
    model.CopyInputDataFrom(std::make_shared<const InputPoints>(std::move(own)));
    TakeReals({&input.X[0].InputXMin, &input.X[0].InputXMax, &input.InputYMin, &input.InputYMax});
    takeMoments(input.X[0]);
  } else {
    for (VariableStatistics& x : input.X) x.InputXMin = in_.Real();
    for (VariableStatistics& x : input.X) x.InputXMax = in_.Real();
    TakeReals({&input.InputYMin, &input.InputYMax});
    if (!input_) input_ = std::make_shared<const InputPoints>(InputPoints{Points().X, Points().Y});
    model.CopyInputDataFrom(input_);
    for (VariableStatistics& x : input.X) takeMoments(x);
  }
  TakeReals({&input.YMean, &input.YStd});
}

void Reader::ReadInterpolation() {
  InterpClass curve;
  curve.Description = in_.Text();
  curve.id = in_.Text();
  curve.SolveType = in_.Integer();
  curve.Solve = in_.Boolean();
  curve.Solved = in_.Boolean();
  curve.LegendText = in_.Text();
  const std::int32_t points = Count();
  InterpolationTable table;
  for (std::int32_t i = 0; i < points && in_.Good(); ++i)
    for (std::vector<double>* column : {&table.X, &table.Y, &table.Y2}) column->push_back(in_.Real());
  curve.CopyInterpolationTableFrom(std::move(table));
  TakeReals({&curve.InputXMin, &curve.InputXMax, &curve.InputYMin, &curve.InputYMax});
  curve.ShowErrorBars = in_.Boolean();
  curve.ErrorInfo = in_.Boolean();
  in_.Expect("E_INTERPOLATIONCLASS");

  std::vector<InterpClass>& curves = project_->Interpolations;
  const auto same = std::ranges::find(curves, curve.id, &InterpClass::id);
  if (same == curves.end())
    curves.push_back(std::move(curve));
  else
    *same = std::move(curve);
}

// What the records of the models have no room for. Anything else behind the end is none of the project's.
void Reader::ReadBehindTheEnd() {
  while (in_.Good() && !in_.AtEnd()) {
    const std::string section = in_.Text();
    if (section == "B_SWEEPINFO")
      ReadSweeps();
    else if (section == "B_SEARCHEND")
      ReadSearchEnds();
    else
      return;
  }
}

// What each set of a sweep led to.
void Reader::ReadSweeps() {
  for (std::string id = in_.Text(); in_.Good() && id != "E_SWEEPINFO"; id = in_.Text()) {
    ModelClass* const model = project_->Models.Find(id);
    if (model == nullptr) return in_.Fail();
    const auto n = static_cast<std::size_t>(model->NumDependentVar());
    std::vector<std::vector<double>> sweep = model->GetSweepInfo();
    for (std::vector<double>& set : sweep) {
      if (set.size() != n) return in_.Fail();
      while (set.size() < 2 * n + 5) set.push_back(in_.Real());
    }
    model->SetSweepInfo(std::move(sweep));
  }
}

// How searches ended that did not by converging.
void Reader::ReadSearchEnds() {
  for (std::string id = in_.Text(); in_.Good() && id != "E_SEARCHEND"; id = in_.Text()) {
    ModelClass* const model = project_->Models.Find(id);
    const std::int32_t end = in_.Integer();
    if (model == nullptr || end < static_cast<int>(SearchEnd::Unchanged) || end > static_cast<int>(SearchEnd::Paused))
      return in_.Fail();
    model->Ended = static_cast<SearchEnd>(end);
  }
}

const SolveData& Reader::Points() {
  if (points_) return *points_;
  const DataSheet& sheet = project_->Sheet;
  Result<GatheredData> gathered = GatherData(sheet);
  points_.emplace();
  points_->X.resize(sheet.IndependentVariables);
  if (gathered) points_ = std::move(gathered->Points);
  return *points_;
}

}  // namespace

Result<Project> ParseProject(std::string_view bytes, const std::string& fileName, const LocaleText& locale) {
  FieldReader in(DecodeText(bytes));
  while (in.Good() && in.Text() != "B_HEADER") continue;
  const std::string version(Trim(in.Text()));
  if (!in.Good()) return Unreadable(fileName);
  const auto known = std::ranges::find(kLayouts, version, &VersionLayout::Version);
  if (known == std::end(kLayouts)) return Failure{Refusal(version, fileName)};
  std::optional<Project> project = Reader(in, known->Of, locale).Read();
  if (!project) return Unreadable(fileName);
  project->FileName = fileName;
  return std::move(*project);
}

Result<Project> ReadProject(const std::string& fileName, const LocaleText& locale) {
  WholeFile file;
  if (file.Read(fileName) != 0) return Unreadable(fileName);
  Result<Project> project = ParseProject(file.Text(), fileName, locale);
  if (project) project->HasFile = true;
  return project;
}

}  // namespace quorvex
