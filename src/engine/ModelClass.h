#pragma once

#include <cmath>
#include <cstddef>
#include <ctime>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/FitResult.h"
#include "engine/ModelSetup.h"
#include "engine/SeriesTable.h"
#include "engine/SolveForm.h"
#include "engine/TableRange.h"
#include "engine/TakeFitInput.h"
#include "linear/MinimizeInBox.h"

namespace quorvex {

class BlockTeam;
class CompiledModel;
class ThreadTeam;
class TypedDerivatives;
enum class Dialect;
enum class ExprType;
struct CatalogueModel;
struct Expression;

// Residuals against what a normal distribution would have in their places, both ascending.
struct NormalTable {
  std::vector<double> Quantiles;  // of the standard normal distribution
  std::vector<double> Sorted;     // the residuals, in units of StdErr where that is not 0
};

// A model with everything a project knows about its fit: text, compiled form, setup, coefficients, statistics. The two
// model types, EqClass with one independent variable and MvClass with several, share all of it and differ in how they
// reach X, in their words, their catalogue and a few messages.
//
// Coefficients and input points are counted from 1 in the accessors, as files and macros count them. Asking beyond
// their end is an error of the caller.
class ModelClass : public ModelSetup, public FitResult {
 public:
  virtual ~ModelClass();
  ModelClass(const ModelClass&) = delete;
  ModelClass& operator=(const ModelClass&) = delete;

  std::string id;            // the model's text key: the equation or the user model's name
  std::string ErrorMessage;  // why the last numerical operation failed, where it is known
  bool ZIsNegative = false;  // the table holds a value of 0 or less, which a logarithmic axis has no place for

  // Compiles the model: [0] the model line, [n] the right-hand side of Fn. The coefficients start anew.
  void SetID(std::string sID, std::vector<std::string> sFuncList);

  // Becomes a model of the catalogue, of the type for its number of variables. Its text is compiled when something
  // first asks for it: of a loaded catalogue most models are never looked at.
  void SetBuiltIn(const CatalogueModel& row);

  // The model of the catalogue with its ID, or null, and the number of that, or 0.
  const CatalogueModel* BuiltIn() const;
  int IDIndex() const;

  const Expression& Compiled() const;
  const LocaleText& Locale() const { return locale_; }  // that its text is in
  bool IsValidEquation() const { return form_.IsValidEquation; }
  bool HasIndependentVar() const { return form_.HasIndependentVar; }
  bool HasCoefficients() const { return form_.HasCoefficients; }
  int NumIndependentVar() const { return form_.NumIndependentVar; }
  int NumDependentVar() const { return static_cast<int>(CoefficientValues.size()); }  // the number of coefficients

  // Line n of the model; empty beyond the last.
  const std::string& FunctionList(int n) const;
  int FunctionCount() const { return static_cast<int>(sFuncList_.size()); }

  // Coefficient i, from 1.
  const std::string& Variables(int i) const { return Coefficients[Index(i)].Name; }
  int Constants(int i) const { return Coefficients[Index(i)].Constant; }  // non-zero: adjusted by the fit
  double Values(int i) const { return CoefficientValues[Index(i)]; }
  double Covariance(int i) const { return Variances[Index(i)]; }  // diagonal of the unscaled covariance
  const std::string& Rules(int i) const { return Coefficients[Index(i)].Rule; }
  const std::string& RuleConstant(int i) const { return Coefficients[Index(i)].RuleConstant; }
  const std::string& Derivatives(int i) const { return Coefficients[Index(i)].Derivative; }
  double Minimum(int i) const { return Coefficients[Index(i)].Minimum; }  // infinite where there is none
  double Maximum(int i) const { return Coefficients[Index(i)].Maximum; }
  void SetConstant(int i, int free) { Coefficients[Index(i)].Constant = free; }
  void SetValue(int i, double value) { CoefficientValues[Index(i)] = value; }
  void SetCovariance(int i, double value) { Variances[Index(i)] = value; }
  void SetRule(int i, std::string rule) { Coefficients[Index(i)].Rule = std::move(rule); }
  void SetRuleConstant(int i, std::string text) { Coefficients[Index(i)].RuleConstant = std::move(text); }
  void SetBounds(int i, double least, double most) {
    Coefficients[Index(i)].Minimum = least;
    Coefficients[Index(i)].Maximum = most;
  }
  void SetDerivative(int i, std::string text) { Coefficients[Index(i)].Derivative = std::move(text); }
  // Whether the coefficient is not adjusted by the fit, and whether one that is lies on a bound. There its variance is
  // 0 as that of a held one, and the others have theirs as if it were held.
  bool IsHeld(int i) const { return Coefficients[Index(i)].IsHeld(); }
  bool IsAtMinimum(int i) const { return !IsHeld(i) && Values(i) == Minimum(i); }
  bool IsAtMaximum(int i) const { return !IsHeld(i) && Values(i) == Maximum(i); }
  bool IsAtBound(int i) const { return IsAtMinimum(i) || IsAtMaximum(i); }
  bool HasBounds() const;  // of any coefficient
  Box Bounds() const;      // of all coefficients
  // Brings values of all coefficients to their nearest bounds, but of those that the user holds.
  void BringFreeInside(std::vector<double>& a) const;
  // What errors are in proportion to: the standard deviation of a point of weight 1, and how many degrees of freedom it
  // was found with, infinite where it was given. Limits are by the quantiles of Student's distribution with so many.
  double ErrorDeviation() const { return GivenDeviation > 0 ? GivenDeviation : StdErr; }
  double ErrorDegrees() const { return GivenDeviation > 0 ? HUGE_VAL : DOFError; }
  // The standard error of the coefficient: ErrorDeviation times the root of its covariance. Half the width of a
  // confidence interval is this times the quantile of the level.
  double StandardError(int i) const;

  const std::vector<ICRange>& GetICRange() const { return ICRanges; }
  void SetICRange(std::vector<ICRange> ranges) { ICRanges = std::move(ranges); }
  // Puts the ranges back to one step at their present values.
  void ICCancel();

  // The sets of initial estimates that a sweep solved, in their order.
  const std::vector<SweepRow>& GetSweepInfo() const { return SweepRows; }
  void SetSweepInfo(std::vector<SweepRow> rows) { SweepRows = std::move(rows); }

  // The data changed: unsolved, no estimates, every coefficient free and 1.
  void Datachange();

  // The statistics of the input, to a model that is evaluated beside this one.
  void CopyStatsTo(ModelClass& other) const { other.Statistics = Statistics; }
  // An independent twin: compiled anew, then its setup and everything of the fit copied.
  std::unique_ptr<ModelClass> CopyTo() const;
  // The latter two alone, to a model of the same text.
  void CopyFitTo(ModelClass& twin) const;

  // The model's value at x (one number per independent variable) for the present coefficients. False where it has
  // none; y is then 0 for a built-in model and left alone otherwise.
  bool Evaluate(std::span<const double> x, double& y);

  // Derivatives with respect to each coefficient. Derivative: the closed forms of a built-in model; the typed
  // expressions where all compiled; else Richardson's extrapolation. NumericalDerivatives: typed expressions or central
  // differences. 0 for a held coefficient. False, and a text in `ErrString`, where a value is missing; the coefficients
  // then stay where the attempt left them.
  bool Derivative(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  bool NumericalDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  // The typed expressions where all compiled; else by the rules of calculus over the compiled model, and at a point
  // where these give none as Derivative. Of a model that HasExactDerivatives.
  bool ExactDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  // Whether everything in the user's model that depends on a coefficient has a derivative that the program knows.
  bool HasExactDerivatives();
  // The derivative with respect to independent variable `varindex` (from 1), by Richardson's extrapolation. Throws
  // NumericFault where it has none.
  double DDX(std::span<const double> x, int varindex = 1);

  // The same over a block: points first to first + n - 1 of the columns, n at most kBlock; `y` receives n values, and
  // each of `dyda` where n derivatives stand, by the method of the three above: in the column of `room`, or where the
  // model has them anyway, until it is computed once more. Results are the same bits as point by point. False where
  // some point has no value or derivative, or the model cannot be run over a block; the points are then to be taken one
  // by one.
  bool EvaluateBlock(const std::vector<std::vector<double>>& X, std::size_t first, std::size_t n, double* y);
  bool DifferentiateBlock(const SolveData& data, std::size_t first, std::size_t n, DerivativeKind method, double* y,
                          double* const* room, const double** dyda);
  // After a DifferentiateBlock that succeeded, of the same n points: computes numerical derivatives anew for the
  // coefficients in which the model is linear, with a step so wide that the rounding of the model's values doesn't
  // show.
  void SharpenDerivatives(std::size_t n, double* const* dyda);

  // Whether values and derivatives follow from point and coefficients alone, and can be computed over blocks: else a
  // model draws random numbers, or its values hang on those of other points.
  bool RunsOverBlocks();
  // Whether the expressions that the user typed are in use, as in a fit.
  bool TakesTypedDerivatives() const { return typed_ != nullptr; }

  // Initial estimates from linearisation, rules or, failing these, 1.0. True unless it had to fall back on 1.0.
  bool SetIC(const SolveData& data);
  // The same by threads, where there are some. False, too, where the form is aborted.
  bool SetIC(const SolveData& data, ThreadTeam* threads, SolveForm& form);
  // After a SetIC by linearisation that left the bounds: the least squares of the linear form within them, and its
  // variances. Why there are none, where there are none: the bounds are then no box in the linear form's coefficients,
  // or leave it no place.
  std::string SolveLinearFormInside(const SolveData& data);
  // Estimates by the rules of the coefficients. False for an unknown rule, an empty one, or a fault.
  bool RuleEstimate(const SolveData& data, std::vector<double>& a) const;

  // Solves the model. True when the solution stands; `LogString` grows by a readable account, and says why not.
  bool Fit(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form);

  // Fills the statistics of the fit; false where the model has no value at some point, and nothing changes.
  bool GetGoodnessOfFit(const SolveData& data, int numcoef);
  // The same with turns of the event loop for `form`. False, too, where its user aborts, which `form` tells.
  bool GetGoodnessOfFit(const SolveData& data, int numcoef, SolveForm& form);
  // The same by a team of the model.
  bool GetGoodnessOfFit(const SolveData& data, int numcoef, SolveForm& form, BlockTeam& team);

  // The model as text, as code (statements and the library functions they need) and as a spreadsheet formula; see the
  // functions of the same names in equation/.
  std::string GenerateTextInfix(int ReplaceOption, int AppendParameters) const;
  void GenerateInfix(ExprType language, std::vector<std::string>& InFixList, std::vector<std::string>& FnList) const;
  Result<std::string> GenerateExcelInfix(std::string_view CellReferance, bool XInColumns) const;
  // The source of a whole function; see FunctionSource.
  std::string ExportFunction(ExprType language, std::string_view name, const std::tm& created) const;

  // The table of the curve or surface: at every input point for a single range of kInputPoints; else one range per
  // independent variable, and with several the last one changes fastest. False, and an empty table, where the model has
  // no value at some point or a range has no points.
  bool GenerateTable(const std::vector<TableRange>& ranges, bool Extrapolate = false);
  std::size_t NumTablePoints() const { return YTable_.size(); }
  double XTableData(std::size_t i, int variable = 1) const {
    return XTable_.empty() ? InputX(i, variable) : XTable_[Index(variable)][i - 1];
  }
  double YTableData(std::size_t i) const { return YTable_[i - 1]; }
  // The table as a series of a plot, with the X of one variable.
  SeriesTable CopyDataTo(int variable = 1) const;

  // The table of residual bars: the model's value at each of its input points. False, and an empty table, where the
  // model has no value at some point.
  bool GenerateErrorTable();
  std::span<const double> FittedData() const { return Fitted_; }

  // Y minus the model's value at each point of the data, in their order. Nothing where the model has no value.
  std::optional<std::vector<double>> GenerateResiduals(const SolveData& data);
  // The same on several threads, counted as in Settings::Threads. Nothing, too, where the form is aborted.
  std::optional<std::vector<double>> GenerateResiduals(const SolveData& data, SolveForm& form, int threads);
  // The normal probability table of the residuals.
  std::optional<NormalTable> GenerateQQTable(const SolveData& data);

  // The model's value at each point of the columns, nothing where it has none at some point.
  std::optional<std::vector<double>> ValuesAt(const std::vector<std::vector<double>>& X);
  std::optional<std::vector<double>> ValuesAt(const std::vector<std::vector<double>>& X, SolveForm& form, int threads);
  // Of so many points of the columns; one by one where they cannot be computed together. False where one has none.
  bool ValuesOf(const std::vector<std::vector<double>>& X, std::size_t first, std::size_t n, double* y);

  // Where the model takes the value Y between XMin and XMax, ascending, no two neighbours equal. `Intervals` equal
  // parts are searched: a part whose ends lie on different sides of Y holds a root, found by bisection, and so is an
  // end that meets Y. Two roots in one part are missed, and a pole passes for a root. Points without a value are left
  // out. With several variables `variable` is the one that varies, and the others stay as they are in `at`.
  std::vector<double> GetRoots(double XMin, double XMax, double Y, int Intervals = 200, std::vector<double> at = {0.0},
                               int variable = 1);

  // The input points, number i from 1. Copies of a model share them.
  std::size_t NumInputX() const { return Input->Y.size(); }
  double InputX(std::size_t i, int variable = 1) const { return Input->X[Index(variable)][i - 1]; }
  double InputY(std::size_t i) const { return Input->Y[i - 1]; }
  double InputXMin(int variable = 1) const { return Statistics.X[Index(variable)].InputXMin; }
  double InputXMax(int variable = 1) const { return Statistics.X[Index(variable)].InputXMax; }
  const std::shared_ptr<const InputPoints>& CopyInputDataTo() const { return Input; }
  void CopyInputDataFrom(std::shared_ptr<const InputPoints> source);
  // What fits to these data note, which is the same for all models of the same type. Null where the form is aborted.
  std::shared_ptr<const FitInput> InputOf(const SolveData& data, ThreadTeam* threads, SolveForm& form) const;
  // For fits to come, which are to the data of that input; with null each makes its own.
  void ShareInput(std::shared_ptr<const FitInput> input) { shared_ = std::move(input); }
  bool IsOfTypeOf(const ModelClass& other) const { return dialect_ == other.dialect_; }

  // What to say when there is no value, or no derivative, at a point.
  virtual std::string EvaluationFailure(std::span<const double> x) const = 0;
  virtual std::string DerivativeFailure(std::span<const double> x) const = 0;
  // A new, empty model of the same type.
  virtual std::unique_ptr<ModelClass> NewModel() const = 0;

 protected:
  ModelClass(Dialect dialect, const LocaleText& locale);

  // The quantity of the data that a rule's text, blank-free and in lower case, scales by. Nothing for an unknown rule.
  virtual std::optional<double> RuleQuantity(std::string_view rule, const SolveData& data) const = 0;
  // The points of the data that the model keeps.
  virtual InputPoints InputTable(const SolveData& data, const LookAround& look) const = 0;
  // The catalogue's row of that ID, or none.
  virtual const CatalogueModel* LookupBuiltInModel(std::string_view sID) const = 0;

  const LocaleText locale_;

 private:
  friend class Differentiator;
  friend class FitRun;

  // What is known of a text, of a built-in model even before it is compiled.
  struct Form {
    bool IsValidEquation = false, HasIndependentVar = false, HasCoefficients = false;
    int NumIndependentVar = 0;
  };

  void StartCoefficients(const std::vector<std::string>& names);
  bool TakeInput(const SolveData& data, ThreadTeam* threads, SolveForm& form);
  void ClearTable();
  static std::size_t Index(int i) { return static_cast<std::size_t>(i - 1); }

  const Dialect dialect_;
  std::vector<std::string> sFuncList_;
  Form form_;
  mutable std::unique_ptr<CompiledModel> compiled_;  // null until something asks for it
  mutable const CatalogueModel* builtIn_ = nullptr;
  mutable std::optional<std::string> unsought_;  // the ID of SetID until something asks for the catalogue's model
  std::unique_ptr<TypedDerivatives> typed_;      // for the duration of a fit
  std::shared_ptr<const FitInput> shared_;
  std::vector<std::vector<double>> XTable_;  // empty for a table at the input points
  std::vector<double> YTable_;
  std::vector<double> Fitted_;
};

// All starts that the ranges span, a row each: a full grid with coefficient 1 changing fastest.
std::vector<std::vector<double>> BuildICSets(const std::vector<ICRange>& ranges);

}  // namespace quorvex
