#include "results/TableExport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>

#include "core/NumberText.h"
#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

constexpr int kRootIntervals = 200;
constexpr std::size_t kMostEquations = 200;
// Of columns of roots there may be any number, of which a window and its memory take so many.
constexpr std::size_t kMostColumns = 2000, kMostRoots = 50'000'000;

// An equation of a table: a copy, since the work that computes it may go on after it was cancelled.
struct Equation {
  explicit Equation(const SolvedItem& item) : Name(item.Name()) {
    if (item.Model != nullptr) Model = item.Model->CopyTo();
    if (item.Interpolation != nullptr) Interpolation = std::make_unique<InterpClass>(*item.Interpolation);
  }
  SolvedItem Item() const { return {Model.get(), Interpolation.get()}; }

  std::string Name;
  std::unique_ptr<ModelClass> Model;
  std::unique_ptr<InterpClass> Interpolation;
};

class Maker {
 public:
  Maker(const std::vector<SolvedItem>& items, const TableChoice& choice, const SolveData& data,
        std::vector<TableAxis> axes)
      : choice_(choice), axes_(std::move(axes)), data_(data), variables_(data.X.size()) {
    for (const SolvedItem& item : items) equations_.emplace_back(item);
  }

  // Nothing where it was cancelled or is too large.
  std::shared_ptr<const TableValues> Make(const LongWork& work) {
    if (choice_.Type == TableType::XValues)
      TakePoints();
    else
      TakeGrid();
    if (choice_.Type != TableType::RootAtY)
      x_.assign(values_->Numbers.begin(), values_->Numbers.begin() + static_cast<std::ptrdiff_t>(variables_));
    for (std::size_t e = 0; e < equations_.size(); ++e) {
      const bool done = choice_.Type == TableType::RootAtY ? AddRoots(e, work) : AddValues(e, work);
      if (!done || values_->Columns.size() > kMostColumns) return nullptr;
    }
    if (choice_.Type == TableType::XValues) AddExtremes();
    return values_;
  }

 private:
  void Add(std::string heading, std::vector<double> numbers) {
    values_->Columns.push_back({std::move(heading), TableValues::Kind::Number, values_->Numbers.size()});
    values_->Numbers.push_back(std::move(numbers));
  }

  void TakePoints() {
    values_->Rows = data_.N();
    for (std::size_t v = 0; v < variables_; ++v)
      Add((variables_ == 1 ? "X" : "X" + std::to_string(v + 1)) + " Value", data_.X[v]);
    values_->Y = values_->Numbers.size();
    Add("Y Value", data_.Y);
  }

  // The first axis changes fastest.
  void TakeGrid() {
    values_->Rows = 1;
    for (const TableAxis& axis : axes_) values_->Rows *= axis.Points;
    std::size_t period = 1;
    for (const TableAxis& axis : axes_) {
      std::vector<double> column(values_->Rows);
      for (std::size_t row = 0; row < column.size(); ++row) column[row] = axis.Value(row / period % axis.Points);
      period *= axis.Points;
      Add(axis.Name + " Value", std::move(column));
    }
  }

  // A heading below the equation's name, where there are several.
  std::string Heading(std::size_t equation, const char* text) const {
    if (equations_.size() == 1) return text;
    constexpr std::size_t kShown = 40;
    const std::string& name = equations_[equation].Name;
    const std::string cut = FirstCharacters(name, kShown);
    return cut + (cut == name ? "\n" : "...\n") + text;
  }

  bool Tell(const LongWork& work, std::size_t equation, std::size_t row) const {
    work.ShowProgress(equation * values_->Rows + row, equations_.size() * values_->Rows);
    return !work.Cancelled();
  }

  bool AddValues(std::size_t e, const LongWork& work) {
    const SolvedItem item = equations_[e].Item();
    std::vector<double> y(values_->Rows, TableValues::kError);
    for (std::size_t first = 0; first < y.size(); first += kBlock) {
      if (!Tell(work, e, first)) return false;
      const std::size_t n = std::min(kBlock, y.size() - first);
      if (item.Model != nullptr && item.Model->EvaluateBlock(x_, first, n, &y[first])) continue;
      for (std::size_t row = first; row < first + n; ++row) {
        std::array<double, kMostIndependentVariables> point{};
        for (std::size_t v = 0; v < variables_; ++v) point[v] = x_[v][row];
        double value = 0;
        y[row] = item.Evaluate(std::span(point).first(variables_), value) ? value : TableValues::kError;
      }
    }
    const std::size_t source = values_->Numbers.size();
    Add(Heading(e, "Calc Y"), std::move(y));
    if (!AddLimits(e, work)) return false;
    if (choice_.Type != TableType::XValues) return true;
    values_->Columns.push_back({Heading(e, "Residual"), TableValues::Kind::Residual, source});
    values_->Columns.push_back({Heading(e, "Abs Residual"), TableValues::Kind::AbsResidual, source});
    calculated_.push_back(source);
    return true;
  }

  // Prediction is that of the weight of the point, or of the mean weight where there is none.
  bool AddLimits(std::size_t e, const LongWork& work) {
    if (!choice_.Limits.Any()) return true;
    const SolvedItem item = equations_[e].Item();
    const Result<Bands> bands = BandsOf(item, data_, choice_.Limits.DerivativeMethod);
    const bool atPoints = choice_.Type == TableType::XValues;
    for (const BandKind kind : choice_.Limits.Kinds()) {
      std::vector<double> lower(values_->Rows, TableValues::kNothing), upper = lower;
      std::vector<double> point(variables_);
      for (std::size_t row = 0; bands && row < lower.size(); ++row) {
        if (row % kBlock == 0 && !Tell(work, e, row)) return false;
        for (std::size_t v = 0; v < variables_; ++v) point[v] = x_[v][row];
        const Interval limits =
            bands->Limits(kind, choice_.Limits.Level, *item.Model, point, atPoints ? data_.sig[row] : 1);
        if (std::isnan(limits.Lower)) continue;
        lower[row] = limits.Lower;
        upper[row] = limits.Upper;
      }
      const std::string name = BandName(kind, choice_.Limits.Level);
      Add(Heading(e, (name + ", lower").c_str()), std::move(lower));
      Add(Heading(e, (name + ", upper").c_str()), std::move(upper));
    }
    return true;
  }

  // As many columns as the most roots of a row, where fewer stay empty behind the last.
  bool AddRoots(std::size_t e, const LongWork& work) {
    const SolvedItem item = equations_[e].Item();
    const auto [min, max] = item.InputRange(choice_.Variable);
    std::vector<std::vector<double>> columns(1, std::vector<double>(values_->Rows, TableValues::kError));
    for (std::size_t row = 0; row < values_->Rows; ++row) {
      if (!Tell(work, e, row)) return false;
      const std::vector<double> roots = RootsAt(item, row, min, max);
      while (columns.size() < roots.size()) {
        columns.emplace_back(values_->Rows, TableValues::kNothing);
        if ((rootColumns_ + columns.size()) * values_->Rows > kMostRoots) return false;
      }
      for (std::size_t i = 0; i < roots.size(); ++i) columns[i][row] = roots[i];
    }
    rootColumns_ += columns.size();
    const std::string name = variables_ == 1 ? "X Value" : "X" + std::to_string(choice_.Variable) + " Value";
    for (std::vector<double>& column : columns) Add(Heading(e, name.c_str()), std::move(column));
    return true;
  }

  // Columns of the grid are Y and then the other variables in their order.
  std::vector<double> RootsAt(const SolvedItem& item, std::size_t row, double min, double max) const {
    const double y = values_->Numbers[0][row];
    if (item.Interpolation != nullptr) return item.Interpolation->GetRoots(min, max, y, kRootIntervals);
    std::vector<double> at(variables_);
    for (std::size_t v = 0, column = 1; v < variables_; ++v)
      if (v + 1 != static_cast<std::size_t>(choice_.Variable)) at[v] = values_->Numbers[column++][row];
    return item.Model->GetRoots(min, max, y, kRootIntervals, std::move(at), choice_.Variable);
  }

  // The residuals of all equations that have one, at each point.
  void AddExtremes() {
    std::vector<double> least(values_->Rows, TableValues::kError), greatest = least;
    for (const std::size_t source : calculated_)
      for (std::size_t row = 0; row < values_->Rows; ++row) {
        const double residual = data_.Y[row] - values_->Numbers[source][row];
        if (!std::isfinite(residual)) continue;
        if (!(least[row] <= residual)) least[row] = residual;
        if (!(greatest[row] >= residual)) greatest[row] = residual;
      }
    for (auto& [heading, column] : {std::pair("Min Residual", &least), {"Max Residual", &greatest}}) {
      Add(heading, std::move(*column));
      values_->Columns.back().What = TableValues::Kind::Extreme;
    }
  }

  std::vector<Equation> equations_;
  TableChoice choice_;
  std::vector<TableAxis> axes_;
  SolveData data_;
  std::size_t variables_, rootColumns_ = 0;
  std::vector<std::vector<double>> x_;   // a column per variable
  std::vector<std::size_t> calculated_;  // places of the equations' values
  std::shared_ptr<TableValues> values_ = std::make_shared<TableValues>();
};

std::string Shown(double value, const LocaleText& locale) { return LocalizeExpression(GeneralNumber(value), locale); }

}  // namespace

double TableAxis::Value(std::size_t i) const {
  return Points < 2 ? Initial : std::lerp(Initial, Final, static_cast<double>(i) / static_cast<double>(Points - 1));
}

std::optional<TableExport> TableExport::Begin(const std::vector<SolvedItem>& solved,
                                              const std::vector<SolvedItem>& selected, const DataSheet& sheet,
                                              const LocaleText& locale, Prompter& user) {
  SolveData data = GatherData(sheet, PointOrder::OfSheet).Points;
  if (solved.empty())
    user.Refuse("There are no solved equations to export.");
  else if (selected.empty())
    user.Refuse("Please select at least 1 equation to export.");
  else if (selected.size() > kMostEquations)
    user.Refuse("No more than 200 equations can be included in the table at a time.");
  else if (data.N() == 0)
    user.Refuse("Error initializing Data Table Export window.");
  else {
    TableExport begun;
    begun.equations_ = selected;
    begun.data_ = std::move(data);
    begun.variableNames_ = quorvex::VariableNames(sheet);
    begun.locale_ = locale;
    return begun;
  }
  return std::nullopt;
}

std::vector<std::string> TableExport::TypeNames() const {
  if (Variables() == 1) return {"Value of Y at X", "X Value", "Root at Y"};
  return {"Value of Y at Xn", "X Values", "Root at Y, Xn"};
}

std::vector<TableVariable> TableExport::Ranges(const TableChoice& choice) const {
  if (choice.Type == TableType::XValues) return {};
  const SolvedItem& first = equations_.front();
  std::vector<TableVariable> ranges;
  const auto add = [&](const std::string& name, double min, double max) {
    ranges.push_back({name, Shown(min, locale_), Shown(max, locale_), ""});
  };
  const bool roots = choice.Type == TableType::RootAtY;
  if (roots && first.Model != nullptr)
    add("Y", first.Model->Statistics.InputYMin, first.Model->Statistics.InputYMax);
  else if (roots)
    add("Y", first.Interpolation->InputYMin, first.Interpolation->InputYMax);
  for (int v = 1; v <= Variables(); ++v) {
    if (roots && v == choice.Variable) continue;
    const auto [min, max] = first.InputRange(v);
    add(Variables() == 1 ? "X" : "X" + std::to_string(v), min, max);
  }
  // Ten for each, or as many as all of them may have.
  const double fit = std::pow(static_cast<double>(kMostTableRows), 1 / static_cast<double>(ranges.size()));
  const auto points = std::to_string(std::min(10, static_cast<int>(fit)));
  for (TableVariable& range : ranges) range.NPoints = points;
  return ranges;
}

Result<std::vector<TableAxis>> TableExport::ReadRanges(const std::vector<TableVariable>& typed) const {
  const Failure unknown{"An unknown error has occurred. Please check the input."};
  std::vector<TableAxis> axes;
  double total = 1;
  for (const TableVariable& range : typed) {
    if (Trim(range.InitialValue).empty()) return Failure{"Please enter an initial value for " + range.Name};
    if (Trim(range.FinalValue).empty()) return Failure{"Please enter a final value for " + range.Name};
    if (Trim(range.NPoints).empty()) return Failure{"Please enter the number of points for " + range.Name};
    const auto initial = NumericText(range.InitialValue, locale_.DecimalSeparator),
               final = NumericText(range.FinalValue, locale_.DecimalSeparator),
               points = NumericText(range.NPoints, locale_.DecimalSeparator);
    if (!initial || !final || !points) return unknown;
    const double whole = std::nearbyint(*points);
    if (whole < 1)
      return Failure{
          "The number of points must be greater than 0. To fix a variable to a single value, choose 1 as the number of "
          "points."};
    total *= whole;
    // Of more than there may be the product alone matters.
    axes.push_back({range.Name, *initial, *final,
                    static_cast<std::size_t>(std::min(whole, static_cast<double>(kMostTableRows) + 1))});
  }
  if (!std::isfinite(total)) return unknown;
  if (total > static_cast<double>(kMostTableRows))
    return Failure{"The total number of points you have chosen is " + Shown(total, locale_) +
                   ". The maximum allowable number is 65535. Please reduce the total number of points."};
  return axes;
}

std::optional<ExportTable> TableExport::Make(const TableChoice& choice, const std::vector<TableAxis>& axes,
                                             Prompter& user) const {
  using Values = std::shared_ptr<const TableValues>;
  std::optional<Values> values;
  try {
    const auto maker = std::make_shared<Maker>(equations_, choice, data_, axes);
    values = Await<Values>(&user, "Creating the table", [maker](const LongWork& work) { return maker->Make(work); });
  } catch (const std::exception&) {
    values = nullptr;
  }
  if (!values) return std::nullopt;
  if (*values != nullptr) return ExportTable(*values, locale_);
  user.Refuse("Error creating the table.");
  return std::nullopt;
}

}  // namespace quorvex
