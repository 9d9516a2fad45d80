#include "engine/ModelClass.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/FaultFlags.h"
#include "engine/CompiledModel.h"
#include "engine/Differentiator.h"
#include "engine/FitRun.h"
#include "engine/PointColumns.h"
#include "engine/RobustFit.h"
#include "engine/TryHarder.h"
#include "engine/TypedDerivatives.h"
#include "equation/Catalogue.h"
#include "equation/ClosedForms.h"
#include "equation/Dialect.h"
#include "equation/Parser.h"

namespace quorvex {

ModelClass::ModelClass(Dialect dialect, const LocaleText& locale) : locale_(locale), dialect_(dialect) {}

ModelClass::~ModelClass() = default;

void ModelClass::SetID(std::string sID, std::vector<std::string> sFuncList) {
  id = std::move(sID);
  sFuncList_ = std::move(sFuncList);
  UserType = true;
  compiled_.reset();
  const Expression& text = Compiled();
  form_ = {text.IsValidEquation, text.HasIndependentVar, text.HasCoefficients, text.NumIndependentVar};
  StartCoefficients(text.CoefficientNames);
  // Of a model that somebody typed nothing asks for it, as a rule, and the whole catalogue would be made for that.
  unsought_ = id;
}

void ModelClass::SetBuiltIn(const CatalogueModel& row) {
  id = row.ID;
  sFuncList_ = {LocalizeExpression(row.Definition, locale_)};
  UserType = false;
  SolveType = 1;
  Description = row.Description;
  Group = row.Group;
  compiled_.reset();
  form_ = {true, true, true, row.NumVariables};
  std::vector<std::string> names;
  for (int i = 0; i < row.NumCoefficients; ++i) names.emplace_back(1, static_cast<char>('a' + i));
  StartCoefficients(names);
  builtIn_ = &row;
  unsought_.reset();
}

void ModelClass::StartCoefficients(const std::vector<std::string>& names) {
  CopyInputDataFrom(std::make_shared<const InputPoints>());
  Coefficients.assign(names.size(), {});
  for (std::size_t i = 0; i < names.size(); ++i) Coefficients[i].Name = names[i];
  CoefficientValues.assign(names.size(), 0.0);
  Variances.assign(names.size(), 0.0);
  ICRanges.assign(names.size(), {});
}

const CatalogueModel* ModelClass::BuiltIn() const {
  if (unsought_) {
    builtIn_ = LookupBuiltInModel(*unsought_);
    unsought_.reset();
  }
  return builtIn_;
}

int ModelClass::IDIndex() const { return BuiltIn() ? BuiltIn()->IDIndex : 0; }

const Expression& ModelClass::Compiled() const {
  // When first asked for: of a whole catalogue few models are ever shown as text or evaluated by their formula.
  if (!compiled_)
    compiled_ = std::make_unique<CompiledModel>(sFuncList_.empty() ? Expression()
                                                                   : Parser(dialect_, locale_).Compile(sFuncList_));
  return compiled_->Instructions;
}

const std::string& ModelClass::FunctionList(int n) const {
  static const std::string none;
  return n >= 0 && static_cast<std::size_t>(n) < sFuncList_.size() ? sFuncList_[static_cast<std::size_t>(n)] : none;
}

bool ModelClass::HasBounds() const { return std::ranges::any_of(Coefficients, &Coefficient::IsBounded); }

Box ModelClass::Bounds() const {
  Box box;
  for (const Coefficient& coefficient : Coefficients) {
    box.Lower.push_back(coefficient.Minimum);
    box.Upper.push_back(coefficient.Maximum);
  }
  return box;
}

void ModelClass::BringFreeInside(std::vector<double>& a) const {
  for (std::size_t i = 0; i < a.size(); ++i)
    if (Coefficients[i].Constant != 0) a[i] = std::clamp(a[i], Coefficients[i].Minimum, Coefficients[i].Maximum);
}

double ModelClass::StandardError(int i) const { return ErrorDeviation() * std::sqrt(std::abs(Covariance(i))); }

void ModelClass::ICCancel() {
  for (ICRange& range : ICRanges) range = {range.Min, range.Min, 1};
}

void ModelClass::Datachange() {
  SpecifyIC = SpecifyICComplete = Solved = false;
  SweepCount = 0;
  GivenDeviation = 0;
  FoundBy.clear();
  Loss = LossKind::Squares;
  LossScale = 0;
  LossScaleGiven = false;
  for (Coefficient& coefficient : Coefficients) coefficient.Constant = 1;
  CoefficientValues.assign(CoefficientValues.size(), 1.0);
}

std::unique_ptr<ModelClass> ModelClass::CopyTo() const {
  std::unique_ptr<ModelClass> twin = NewModel();
  twin->SetID(id, sFuncList_);
  CopyFitTo(*twin);
  return twin;
}

void ModelClass::CopyFitTo(ModelClass& twin) const {
  // These two bases hold all that a user sets and a fit leaves; the compiled text remains the twin's own.
  static_cast<ModelSetup&>(twin) = *this;
  static_cast<FitResult&>(twin) = *this;
}

bool ModelClass::Evaluate(std::span<const double> x, double& y) {
  if (UserType) {
    const Expression& text = Compiled();
    return compiled_->AtPoints.Evaluate(text, x, CoefficientValues, Statistics, y);
  }
  y = 0;
  const CatalogueModel* const builtIn = BuiltIn();
  if (builtIn == nullptr) return true;
  const PointColumns columns = ColumnsOf(x);
  double value = 0;
  ClearFaultFlags();
  Value(*builtIn, columns.data(), 1, CoefficientValues.data(), &value);
  if (FaultFlagsRaised()) return false;
  y = value;
  return true;
}

bool ModelClass::EvaluateBlock(const std::vector<std::vector<double>>& X, std::size_t first, std::size_t n, double* y) {
  const PointColumns columns = ColumnsFrom(X, first);
  if (UserType) {
    Compiled();
    BlockProgram& program = compiled_->OverBlocks();
    return program.Supported() && program.Evaluate(columns, n, CoefficientValues, Statistics, y);
  }
  std::fill_n(y, n, 0.0);
  const CatalogueModel* const builtIn = BuiltIn();
  if (builtIn == nullptr) return true;
  ClearFaultFlags();
  Value(*builtIn, columns.data(), n, CoefficientValues.data(), y);
  return !FaultFlagsRaised();
}

bool ModelClass::Derivative(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  return Differentiator(*this).Derivative(x, dyda, ErrString);
}

bool ModelClass::NumericalDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  return Differentiator(*this).NumericalDerivatives(x, dyda, ErrString);
}

bool ModelClass::ExactDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  return Differentiator(*this).ExactDerivatives(x, dyda, ErrString);
}

bool ModelClass::HasExactDerivatives() {
  if (!UserType) return false;
  Compiled();
  return compiled_->OverBlocks().HasGradient();
}

bool ModelClass::RunsOverBlocks() {
  if (!UserType) return true;
  Compiled();
  return compiled_->OverBlocks().Supported() && (!typed_ || typed_->RunOverBlocks());
}

double ModelClass::DDX(std::span<const double> x, int varindex) { return Differentiator(*this).DDX(x, varindex); }

bool ModelClass::DifferentiateBlock(const SolveData& data, std::size_t first, std::size_t n, DerivativeKind method,
                                    double* y, double* const* room, const double** dyda) {
  return Differentiator(*this).DifferentiateBlock(data, first, n, method, y, room, dyda);
}

void ModelClass::SharpenDerivatives(std::size_t n, double* const* dyda) {
  Differentiator(*this).SharpenDerivatives(n, dyda);
}

bool ModelClass::Fit(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form) {
  FoundBy.clear();
  Failure.clear();
  GivenDeviation = settings.AbsoluteDeviations ? data.UnitDeviation : 0;
  LeaveOneOut = CrossValidated = NAN;
  FailedParts = 0;
  Loss = LossKind::Squares;
  LossScale = 0;
  LossScaleGiven = false;
  if (settings.Loss != LossKind::Squares) return FitRobustly(*this, data, settings, LogString, form);
  if (SolveType == 0 && settings.TryHarder) return FitHarder(*this, data, settings, LogString, form);
  FitRun run(*this, data, settings, LogString, form);
  if (SolveType == 1) return run.Linear();
  if (SolveType == 0) return run.Nonlinear();
  return false;
}

}  // namespace quorvex
