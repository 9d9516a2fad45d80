#include "engine/ModelClass.h"

#include <array>
#include <cmath>

#include "core/FaultFlags.h"
#include "engine/mrqmin.h"
#include "equation/ClosedForms.h"

namespace quorvex {
namespace {

// One point as columns of length one, which is how closed forms take it.
std::array<const double*, kMostIndependentVariables> ColumnsOf(std::span<const double> x) {
  std::array<const double*, kMostIndependentVariables> columns{};
  for (std::size_t v = 0; v < x.size(); ++v) columns[v] = &x[v];
  return columns;
}

}  // namespace

void ModelClass::SetID(std::string sID, std::vector<std::string> sFuncList) {
  id = std::move(sID);
  sFuncList_ = std::move(sFuncList);
  UserType = true;
  expression_ = parser_.Compile(sFuncList_);
  compiled_ = true;
  StartCoefficients();
  builtIn_ = LookupBuiltInModel(id);
  IDIndex = builtIn_ ? builtIn_->IDIndex : 0;
  NumXBasis = builtIn_ ? builtIn_->NumXBasis() : 0;
}

void ModelClass::SetBuiltIn(const CatalogueModel& row) {
  id = row.ID;
  sFuncList_ = {LocalizeExpression(row.Definition, locale_)};
  UserType = false;
  SolveType = 1;
  Description = row.Description;
  Group = row.Group;
  expression_ = Expression();
  for (int i = 0; i < row.NumCoefficients; ++i)
    expression_.CoefficientNames.emplace_back(1, static_cast<char>('a' + i));
  expression_.NumIndependentVar = row.NumVariables;
  expression_.VarsInOrder = row.NumVariables > 1;
  expression_.HasIndependentVar = expression_.HasCoefficients = expression_.IsValidEquation = true;
  compiled_ = false;
  StartCoefficients();
  builtIn_ = &row;
  IDIndex = row.IDIndex;
  NumXBasis = row.NumXBasis();
}

void ModelClass::StartCoefficients() {
  evaluator_ = Evaluator();
  program_.reset();
  CopyInputDataFrom(std::make_shared<const InputPoints>());
  const std::size_t n = expression_.CoefficientNames.size();
  coefficients_.assign(n, {});
  for (std::size_t i = 0; i < n; ++i) coefficients_[i].Name = expression_.CoefficientNames[i];
  values_.assign(n, 0.0);
  covariance_.assign(n, 0.0);
  ranges_.assign(n, {});
}

const Expression& ModelClass::Compiled() const {
  if (!compiled_) {
    expression_ = parser_.Compile(sFuncList_);
    compiled_ = true;
  }
  return expression_;
}

const std::string& ModelClass::FunctionList(int n) const {
  static const std::string none;
  return n >= 0 && static_cast<std::size_t>(n) < sFuncList_.size() ? sFuncList_[static_cast<std::size_t>(n)] : none;
}

double ModelClass::StandardError(int i) const { return StdErr * std::sqrt(std::abs(Covariance(i))); }

void ModelClass::ICCancel() {
  for (ICRange& range : ranges_) range = {range.Min, range.Min, 1};
}

void ModelClass::Datachange() {
  SpecifyIC = SpecifyICComplete = Solved = false;
  SweepCount = 0;
  for (Coefficient& coefficient : coefficients_) coefficient.Constant = 1;
  values_.assign(values_.size(), 1.0);
}

std::unique_ptr<ModelClass> ModelClass::CopyTo() const {
  std::unique_ptr<ModelClass> twin = NewModel();
  twin->SetID(id, sFuncList_);
  CopyFitTo(*twin);
  return twin;
}

void ModelClass::CopyFitTo(ModelClass& twin) const {
  twin.cfgID = cfgID;
  twin.Description = Description;
  twin.Group = Group;
  twin.SolveType = SolveType;
  twin.UserType = UserType;
  twin.SpecifyIC = SpecifyIC;
  twin.SpecifyICComplete = SpecifyICComplete;
  twin.ForceRuleEstimate = ForceRuleEstimate;
  twin.Solve = Solve;
  twin.Solved = Solved;
  twin.ErrorInfo = ErrorInfo;
  twin.SweepCount = SweepCount;
  twin.NumIterations = NumIterations;
  twin.Ended = Ended;
  twin.RSS = RSS;
  twin.RssNorm = RssNorm;
  twin.RST = RST;
  twin.DOFError = DOFError;
  twin.DOFRegression = DOFRegression;
  twin.ResAvg = ResAvg;
  twin.ResSum = ResSum;
  twin.Durbin = Durbin;
  twin.R2 = R2;
  twin.R2Adjust = R2Adjust;
  twin.StdErr = StdErr;
  twin.Statistics = Statistics;
  twin.coefficients_ = coefficients_;
  twin.values_ = values_;
  twin.covariance_ = covariance_;
  twin.ranges_ = ranges_;
  twin.sweep_ = sweep_;
  twin.input_ = input_;
}

bool ModelClass::Evaluate(std::span<const double> x, double& y) {
  if (UserType) return evaluator_.Evaluate(Compiled(), x, values_, Statistics, y);
  y = 0;
  if (builtIn_ == nullptr) return true;
  const std::array<const double*, kMostIndependentVariables> columns = ColumnsOf(x);
  double value = 0;
  ClearFaultFlags();
  Value(*builtIn_, columns.data(), 1, values_.data(), &value);
  if (FaultFlagsRaised()) return false;
  y = value;
  return true;
}

bool ModelClass::ClosedFormDerivatives(std::span<const double> x, std::span<double> dyda) const {
  if (builtIn_ == nullptr) return true;
  const std::array<const double*, kMostIndependentVariables> columns = ColumnsOf(x);
  std::array<double*, kMostCoefficients> cells;
  for (std::size_t i = 0; i < values_.size(); ++i) cells[i] = &dyda[i];
  ClearFaultFlags();
  quorvex::Derivatives(*builtIn_, columns.data(), 1, values_.data(), cells.data());
  return !FaultFlagsRaised();
}

}  // namespace quorvex
