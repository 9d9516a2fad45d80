#include "files/PlotSeriesRecord.h"

#include <cassert>
#include <optional>
#include <utility>

#include "engine/UserModel.h"
#include "equation/Catalogue.h"
#include "files/InputRecord.h"
#include "files/InterpolationRecord.h"
#include "files/ModelRecord.h"
#include "files/UserModelRecord.h"

namespace quorvex {
namespace {

constexpr const char* kDataClass = "DATACLASS";

// The differences between plots of one and of two variables: in the latter the size of the markers comes earlier, and
// they have the colour of the lines.
bool InSpace(std::size_t variables) { return variables == 2; }

template <typename Io, typename Style>
void ListDisplay(Io& io, Style& style, std::size_t variables) {
  io(style.LegendText);
  io(style.DisplayLine);
  io(style.DisplayMarker);
  io.Clamped(style.MarkerStyle, 0, 9);
  if (InSpace(variables)) io.Clamped(style.MarkerSize, 1, 72);
}

template <typename Io, typename Style>
void ListPens(Io& io, Style& style, std::size_t variables) {
  io(style.DrawColor);
  if (!InSpace(variables)) {
    io(style.MarkerColor);
    io.Clamped(style.MarkerSize, 1, 72);
  }
  io.Clamped(style.DrawWidth, 1, 10);
  io.Clamped(style.DrawStyle, 0, 4);
}

// A line a point. `points` has one column of X for each variable.
template <typename Io, typename Points>
void ListPoints(Io& io, std::int32_t count, Points& points) {
  if (points.X.size() == 1)
    io.Rows(count, points.X[0], points.Y);
  else
    io.Rows(count, points.X[0], points.X[1], points.Y);
}

// What raw data keeps behind accessors. Its limits follow from the points, whatever a file says of them.
struct DataTable {
  explicit DataTable(std::size_t variables) {
    Points.X.resize(variables);
    Limits.X.resize(variables);
  }

  InputPoints Points;
  DataStatistics Limits;
  std::vector<double> Max, Min;  // the ends of the error bars
};

template <typename Io, typename Data, typename Table, typename Style>
void ListData(Io& io, Data& data, Table& table, Style& style) {
  const std::size_t variables = table.Points.X.size();
  Section(io, kDataClass, [&] {
    io(data.Description);
    io(data.id);
    ListDisplay(io, style, variables);
    const std::int32_t count = io.Count(table.Points.Y.size());
    ListPoints(io, count, table.Points);
    io.Known(table.Points.Y.size());
    ListInputLimits(io, table.Limits);
    io(data.ErrorInfo);
    if (data.ErrorInfo) io.Rows(count, table.Max, table.Min);
    io(style.ShowErrorBars);
    ListPens(io, style, variables);
  });
}

std::vector<double> Copied(std::span<const double> values) { return {values.begin(), values.end()}; }

void WriteData(RecordWriter& io, const DataClass& data, const SeriesStyle& style, std::size_t variables) {
  DataTable table(variables);
  for (int variable = 1; auto& x : table.Points.X) x = Copied(data.CopyDataTo(variable++).X);
  table.Points.Y = Copied(data.CopyDataTo().Y);
  for (int variable = 1; auto& limits : table.Limits.X) {
    limits.InputXMin = data.InputXMin(variable);
    limits.InputXMax = data.InputXMax(variable);
    ++variable;
  }
  table.Limits.InputYMin = data.InputYMin;
  table.Limits.InputYMax = data.InputYMax;
  table.Max = Copied(data.CopyMaXMinErrorDataTo().Max);
  table.Min = Copied(data.CopyMaXMinErrorDataTo().Min);
  ListData(io, data, std::as_const(table), style);
}

std::optional<PlotSeries> ReadData(RecordReader& io, SeriesStyle& style, std::size_t variables) {
  DataClass data;
  DataTable table(variables);
  ListData(io, data, table, style);
  if (!io.Good()) return std::nullopt;
  data.GenerateTable(std::move(table.Points.X), std::move(table.Points.Y));
  data.CopyMaxMinErrorDataFrom(std::move(table.Max), std::move(table.Min));
  return PlotSeries(std::move(data));
}

// Which model a record is of.
struct ModelName {
  std::string Description;
  std::vector<std::string> Lines = std::vector<std::string>(kMostFunctionLines);
  std::string id;
};

template <typename Io, typename Name>
void ListName(Io& io, Name& name) {
  io(name.Description);
  for (auto& line : name.Lines) io(ModelText{line});
  io(name.id);
}

// What of its fit a plot keeps.
struct ModelTable {
  ModelTable(std::size_t coefficients, std::size_t variables) : Values(coefficients), Variances(coefficients) {
    Points.X.resize(variables);
    Input.X.resize(variables);
  }

  std::vector<double> Values, Variances;
  InputPoints Points;
  DataStatistics Input;
};

// The covariance as a square, of which a model has the diagonal.
void ListCovariance(RecordWriter& io, const std::vector<double>& variances) {
  for (std::size_t row = 0; row < variances.size(); ++row)
    for (std::size_t col = 0; col < variances.size(); ++col) io(row == col ? variances[row] : 0.0);
}

void ListCovariance(RecordReader& io, std::vector<double>& variances) {
  double ignored = 0;
  for (std::size_t row = 0; row < variances.size() && io.Good(); ++row)
    for (std::size_t col = 0; col < variances.size(); ++col) io(Computed{row == col ? variances[row] : ignored});
}

template <typename Io, typename Model, typename Table, typename Style>
void ListFit(Io& io, Model& model, Table& table, Style& style) {
  const std::size_t variables = table.Points.X.size();
  ListDisplay(io, style, variables);
  io.Known(table.Values.size());
  for (auto& value : table.Values) io(value);
  const std::int32_t count = io.Count(table.Points.Y.size());
  ListInputLimits(io, table.Input);
  ListPoints(io, count, table.Points);
  if (InSpace(variables)) io.Known(variables);
  ListInputMoments(io, table.Input);
  io(model.ErrorInfo);
  ListCovariance(io, table.Variances);
  io(style.ShowErrorBars);
  if (InSpace(variables)) {
    io(style.ShadeMesh);
    io(style.ShadeColor);
  }
  ListPens(io, style, variables);
}

void WriteModel(RecordWriter& io, const ModelClass& model, const SeriesStyle& style, std::size_t variables) {
  assert(model.Statistics.X.size() == variables);
  const ModelName name{model.Description, FunctionLines(model), model.id};
  ModelTable table(0, variables);
  table.Values = model.CoefficientValues;
  table.Variances = model.Variances;
  if (model.NumInputX() > 0) table.Points = *model.CopyInputDataTo();
  table.Input = model.Statistics;
  Section(io, kSolvedModel, [&] {
    ListName(io, name);
    ListFit(io, model, std::as_const(table), style);
  });
}

// The model that a record names: one of the catalogue, if it has its text, else one compiled from that.
std::unique_ptr<ModelClass> ModelOf(ModelName name, std::size_t variables, const LocaleText& locale) {
  std::vector<std::string> lines = UsedLines(std::move(name.Lines));
  std::unique_ptr<ModelClass> model;
  const CatalogueModel* const row = LookupBuiltInModel(name.id, static_cast<int>(variables));
  if (row != nullptr && lines.size() == 1 && lines[0] == LocalizeExpression(row->Definition, locale)) {
    model = NewModelFor(variables, locale);
    model->SetBuiltIn(*row);
  } else {
    model = CompileModel(std::move(name.id), std::move(lines), variables, locale);
  }
  if (model != nullptr) model->Description = std::move(name.Description);
  return model;
}

std::optional<PlotSeries> ReadModel(RecordReader& io, SeriesStyle& style, std::size_t variables,
                                    const LocaleText& locale) {
  std::unique_ptr<ModelClass> model;
  Section(io, kSolvedModel, [&] {
    ModelName name;
    ListName(io, name);
    if (io.Good()) model = ModelOf(std::move(name), variables, locale);
    if (model == nullptr) return io.Fail();
    ModelTable table(static_cast<std::size_t>(model->NumDependentVar()), variables);
    ListFit(io, *model, table, style);
    model->CoefficientValues = std::move(table.Values);
    model->Variances = std::move(table.Variances);
    model->Statistics = std::move(table.Input);
    model->CopyInputDataFrom(std::make_shared<const InputPoints>(std::move(table.Points)));
    model->Solved = true;
  });
  if (!io.Good()) return std::nullopt;
  return PlotSeries(std::move(model));
}

template <typename Io, typename Curve, typename Table, typename Style>
void ListInterpolation(Io& io, Curve& curve, Table& table, Style& style) {
  Section(io, kInterpolation, [&] {
    io(curve.Description);
    io(curve.id);
    io.Bounded(curve.SolveType, static_cast<int>(kCubicSpline), static_cast<int>(kRationalFunction));
    ListDisplay(io, style, 1);
    const std::int32_t count = io.Count(table.X.size());
    io(curve.InputXMin);
    io(curve.InputXMax);
    io(curve.InputYMin);
    io(curve.InputYMax);
    io.Rows(count, table.X, table.Y, table.Y2);
    io(curve.ErrorInfo);
    io(style.ShowErrorBars);
    ListPens(io, style, 1);
  });
}

std::optional<PlotSeries> ReadInterpolationSeries(RecordReader& io, SeriesStyle& style) {
  InterpClass curve;
  InterpolationTable table;
  ListInterpolation(io, curve, table, style);
  curve.CopyInterpolationTableFrom(std::move(table));
  curve.Solved = true;
  if (!io.Good()) return std::nullopt;
  return PlotSeries(std::move(curve));
}

}  // namespace

void WritePlotSeries(RecordWriter& io, const PlotSeries& series, std::size_t variables) {
  if (const DataClass* data = series.Data())
    WriteData(io, *data, series.Style(), variables);
  else if (const InterpClass* curve = series.Interpolation())
    ListInterpolation(io, *curve, curve->CopyInterpolationTableTo(), series.Style());
  else
    WriteModel(io, *series.Model(), series.Style(), variables);
}

std::optional<PlotSeries> ReadPlotSeries(RecordReader& io, std::size_t variables, const LocaleText& locale) {
  std::optional<PlotSeries> series;
  SeriesStyle style;
  if (io.Begins(kDataClass))
    series = ReadData(io, style, variables);
  else if (io.Begins(kSolvedModel))
    series = ReadModel(io, style, variables, locale);
  else if (io.Begins(kInterpolation) && !InSpace(variables))
    series = ReadInterpolationSeries(io, style);
  if (!series) {
    io.Fail();
    return std::nullopt;
  }
  if (InSpace(variables)) style.MarkerColor = style.DrawColor;
  series->Style() = std::move(style);
  return series;
}

}  // namespace quorvex
