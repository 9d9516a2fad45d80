#pragma once

#include <cstdint>
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
#include "engine/Matrix.h"
#include "engine/SeriesTable.h"
#include "engine/SolveForm.h"
#include "engine/TableRange.h"
#include "equation/BlockProgram.h"
#include "equation/Catalogue.h"
#include "equation/CodeLibrary.h"
#include "equation/DataStatistics.h"
#include "equation/Evaluator.h"
#include "equation/Expression.h"
#include "equation/Parser.h"

namespace quorvex {

// Where a coefficient starts: one value (Min = Max, one step) or a range that is searched in steps.
struct ICRange {
  double Min = 1, Max = 1;
  std::int32_t Steps = 1;

  bool operator==(const ICRange&) const = default;
};

// The input as a model keeps it for tables, plots and files, column by column. With one variable a run of neighbours
// with equal X counts once, with the Y of its first point.
struct InputPoints {
  std::vector<std::vector<double>> X;
  std::vector<double> Y;

  bool operator==(const InputPoints&) const = default;
};

// Residuals against what a normal distribution would have in their places, both ascending.
struct NormalTable {
  std::vector<double> Quantiles;  // of the standard normal distribution
  std::vector<double> Sorted;     // the residuals, in units of StdErr where that is not 0
};

// Why a nonlinear search came to its end, by the numbers that project files store.
enum class SearchEnd : int { Converged = 0, Unchanged = 1, IterationLimit = 2, Paused = 3 };

// What one set of initial estimates of a sweep led to.
struct SweepRow {
  std::vector<double> Start;
  std::vector<double> Final;  // empty where a project file tells of the start alone; the numbers below are then 0
  double RSS = 0, R2Adjust = 0, R2 = 0, StdErr = 0, RssNorm = 0;

  bool operator==(const SweepRow&) const = default;
};

// A model with everything a project knows about its fit: text, compiled form, coefficients, statistics. The two model
// types, EqClass with one independent variable and MvClass with several, share all of it and differ in how they reach
// X, in their words, their catalogue and a few messages.
//
// Coefficients and input points are counted from 1 in the accessors, as files and macros count them. Asking beyond
// their end is an error of the caller.
class ModelClass {
 public:
  virtual ~ModelClass() = default;
  ModelClass(const ModelClass&) = delete;
  ModelClass& operator=(const ModelClass&) = delete;

  std::string id;     // the model's text key: the equation or the user model's name
  std::string cfgID;  // the ID given in a macro; when not empty, the name shown
  std::string Description;
  std::string Group;               // of the catalogue
  int SolveType = 0;               // 0 nonlinear, 1 linear
  bool UserType = false;           // a user-defined model
  bool SpecifyIC = false;          // the user wants to give initial estimates before solving
  bool SpecifyICComplete = false;  // the present values are the initial estimates
  bool ForceRuleEstimate = false;  // a built-in model takes its estimates from its rules
  bool Solve = false;              // selected for the next solve
  bool Solved = false;             // the last Fit succeeded
  bool ErrorInfo = false;          // Fit has computed coefficients and covariance
  int SweepCount = 0;              // sets of initial estimates that led to a solution; 0 without a sweep
  int NumIterations = 0;           // of the last nonlinear fit
  // The end of the nonlinear search that the solution comes from.
  SearchEnd Ended = SearchEnd::Converged;

  double RSS = 0;      // residual sum of squares, unweighted
  double RssNorm = 0;  // the same, weighted
  double RST = 0;      // total sum of squares about the mean, weighted
  std::int32_t DOFError = 0, DOFRegression = 0;
  double ResAvg = 0, ResSum = 0, Durbin = 0;
  double R2 = 0, R2Adjust = 0, StdErr = 0;

  int IDIndex = 0;    // catalogue number; 0 for a model that is not in the catalogue
  int NumXBasis = 0;  // number of its linear basis functions
  DataStatistics Statistics;
  std::string ErrorMessage;  // why the last numerical operation failed, where it is known

  // Compiles the model: [0] the model line, [n] the right-hand side of Fn. The coefficients start anew.
  void SetID(std::string sID, std::vector<std::string> sFuncList);

  // Becomes a model of the catalogue, of the type for its number of variables. Its text is compiled when something
  // first asks for it: of a loaded catalogue most models are never looked at.
  void SetBuiltIn(const CatalogueModel& row);

  const Expression& Compiled() const;
  bool IsValidEquation() const { return expression_.IsValidEquation; }
  bool HasIndependentVar() const { return expression_.HasIndependentVar; }
  bool HasCoefficients() const { return expression_.HasCoefficients; }
  int NumIndependentVar() const { return expression_.NumIndependentVar; }
  int NumDependentVar() const { return static_cast<int>(values_.size()); }  // the number of coefficients

  // Line n of the model; empty beyond the last.
  const std::string& FunctionList(int n) const;
  int FunctionCount() const { return static_cast<int>(sFuncList_.size()); }

  // Coefficient i, from 1.
  const std::string& Variables(int i) const { return coefficients_[Index(i)].Name; }
  int Constants(int i) const { return coefficients_[Index(i)].Constant; }  // non-zero: adjusted by the fit
  double Values(int i) const { return values_[Index(i)]; }
  double Covariance(int i) const { return covariance_[Index(i)]; }  // diagonal of the unscaled covariance
  const std::string& Rules(int i) const { return coefficients_[Index(i)].Rule; }
  const std::string& RuleConstant(int i) const { return coefficients_[Index(i)].RuleConstant; }
  const std::string& Derivatives(int i) const { return coefficients_[Index(i)].Derivative; }
  void SetConstant(int i, int free) { coefficients_[Index(i)].Constant = free; }
  void SetValue(int i, double value) { values_[Index(i)] = value; }
  void SetCovariance(int i, double value) { covariance_[Index(i)] = value; }
  void SetRule(int i, std::string rule) { coefficients_[Index(i)].Rule = std::move(rule); }
  void SetRuleConstant(int i, std::string text) { coefficients_[Index(i)].RuleConstant = std::move(text); }
  void SetDerivative(int i, std::string text) { coefficients_[Index(i)].Derivative = std::move(text); }
  // The standard error of the coefficient: StdErr times the root of its covariance. Half the width of a confidence
  // interval is this times the quantile of the level.
  double StandardError(int i) const;

  const std::vector<ICRange>& GetICRange() const { return ranges_; }
  void SetICRange(std::vector<ICRange> ranges) { ranges_ = std::move(ranges); }
  // Puts the ranges back to one step at their present values.
  void ICCancel();

  // The sets of initial estimates that a sweep solved, in their order.
  const std::vector<SweepRow>& GetSweepInfo() const { return sweep_; }
  void SetSweepInfo(std::vector<SweepRow> rows) { sweep_ = std::move(rows); }

  // The data changed: unsolved, no estimates, every coefficient free and 1.
  void Datachange();

  // The statistics of the input, to a model that is evaluated beside this one.
  void CopyStatsTo(ModelClass& other) const { other.Statistics = Statistics; }
  // An independent twin: compiled anew, then everything of the fit copied.
  std::unique_ptr<ModelClass> CopyTo() const;
  // The latter alone, to a model of the same text.
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
  // The derivative with respect to independent variable `varindex` (from 1), by Richardson's extrapolation. Throws
  // NumericFault where it has none.
  double DDX(std::span<const double> x, int varindex = 1);

  // The same over a block: points first to first + n - 1 of the data, n at most kBlock; `y` receives n values and each
  // column of `dyda` n derivatives, by Derivative where `analytical`, else by NumericalDerivatives. Results are the
  // same bits as point by point. False where some point has no value or derivative, or the model cannot be run over a
  // block; the points are then to be taken one by one.
  bool EvaluateBlock(const SolveData& data, std::size_t first, std::size_t n, double* y);
  bool DifferentiateBlock(const SolveData& data, std::size_t first, std::size_t n, bool analytical, double* y,
                          double* const* dyda);
  // After a DifferentiateBlock that succeeded, of the same n points: computes numerical derivatives anew for the
  // coefficients in which the model is linear, with a step so wide that the rounding of the model's values doesn't
  // show.
  void SharpenDerivatives(std::size_t n, double* const* dyda);

  // Initial estimates from linearisation, rules or, failing these, 1.0. True unless it had to fall back on 1.0.
  bool SetIC(const SolveData& data);
  // Estimates by the rules of the coefficients. False for an unknown rule, an empty one, or a fault.
  bool RuleEstimate(const SolveData& data, std::vector<double>& a) const;

  // Solves the model. True when the solution stands; `LogString` grows by a readable account, and says why not.
  bool Fit(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form);

  // Fills the statistics of the fit; false where the model has no value at some point, and nothing changes.
  bool GetGoodnessOfFit(const SolveData& data, int numcoef);
  // The same with turns of the event loop for `form`. False, too, where its user aborts, which `form` tells.
  bool GetGoodnessOfFit(const SolveData& data, int numcoef, SolveForm& form);

  // The model as text, as code (statements and the library functions they need) and as a spreadsheet formula; see the
  // functions of the same names in equation/.
  std::string GenerateTextInfix(int ReplaceOption, int AppendParameters) const;
  void GenerateInfix(ExprType language, std::vector<std::string>& InFixList, std::vector<std::string>& FnList) const;
  Result<std::string> GenerateExcelInfix(std::string_view CellReferance, bool XInColumns) const;
  // The source of a whole function; see FunctionSource.
  std::string ExportFunction(ExprType language, std::string_view name, const std::tm& created) const;

  // The table of the curve: at every input point for a range of kInputPoints; else one range per independent variable,
  // and with several the last one changes fastest. False, and an empty table, where the model has no value at
  // some point or a range has no points.
  bool GenerateTable(const std::vector<TableRange>& ranges, bool Extrapolate = false);
  std::size_t NumTablePoints() const { return YTable_.size(); }
  double XTableData(std::size_t i, int variable = 1) const {
    return XTable_.empty() ? InputX(i, variable) : XTable_[Index(variable)][i - 1];
  }
  double YTableData(std::size_t i) const { return YTable_[i - 1]; }
  // The table as a series of a plot, with the X of one variable.
  SeriesTable CopyDataTo(int variable = 1) const;

  // Y minus the model's value at each point of the data, in their order. Nothing where the model has no value.
  std::optional<std::vector<double>> GenerateResiduals(const SolveData& data);
  // The normal probability table of the residuals.
  std::optional<NormalTable> GenerateQQTable(const SolveData& data);

  // Where the model takes the value Y between XMin and XMax, ascending, no two neighbours equal. `Intervals` equal
  // parts are searched: a part whose ends lie on different sides of Y holds a root, found by bisection, and so is an
  // end that meets Y. Two roots in one part are missed, and a pole passes for a root. Points without a value are left
  // out. With several variables `variable` is the one that varies, and the others stay as they are in `at`.
  std::vector<double> GetRoots(double XMin, double XMax, double Y, int Intervals = 200, std::vector<double> at = {0.0},
                               int variable = 1);

  // The input points, number i from 1. Copies of a model share them.
  std::size_t NumInputX() const { return input_->Y.size(); }
  double InputX(std::size_t i, int variable = 1) const { return input_->X[Index(variable)][i - 1]; }
  double InputY(std::size_t i) const { return input_->Y[i - 1]; }
  const std::shared_ptr<const InputPoints>& CopyInputDataTo() const { return input_; }
  void CopyInputDataFrom(std::shared_ptr<const InputPoints> source);

  // What to say when there is no value, or no derivative, at a point.
  virtual std::string EvaluationFailure(std::span<const double> x) const = 0;
  virtual std::string DerivativeFailure(std::span<const double> x) const = 0;
  // A new, empty model of the same type.
  virtual std::unique_ptr<ModelClass> NewModel() const = 0;

 protected:
  ModelClass(Dialect dialect, const LocaleText& locale) : locale_(locale), parser_(dialect, locale) {}

  // The quantity of the data that a rule's text, blank-free and in lower case, scales by. Nothing for an unknown rule.
  virtual std::optional<double> RuleQuantity(std::string_view rule, const SolveData& data) const = 0;
  // The points of the data that the model keeps.
  virtual InputPoints InputTable(const SolveData& data) const = 0;
  // The catalogue's row of that ID, or none.
  virtual const CatalogueModel* LookupBuiltInModel(std::string_view sID) const = 0;

  const LocaleText locale_;

 private:
  struct Coefficient {
    std::string Name;
    int Constant = 1;
    std::string Rule = "Value";
    std::string RuleConstant = "1";  // a number as the user wrote it
    std::string Derivative = "Numerical";
  };
  // A typed derivative: its own model, and for each of its coefficients the number of the parent's (from 1; 0: none).
  struct DerivativeModel {
    std::unique_ptr<ModelClass> Model;
    std::vector<int> Parent;
  };
  // How one nonlinear search ended.
  struct Search {
    int iter = 1;
    SearchEnd ended = SearchEnd::IterationLimit;
    double change = 0, chisq = 0;
    Matrix covar;
  };

  void StartCoefficients();
  static std::size_t Index(int i) { return static_cast<std::size_t>(i - 1); }
  bool ClosedFormDerivatives(std::span<const double> x, std::span<double> dyda) const;
  bool EvaluateAt(std::size_t coefficient, double value, std::span<const double> x, double& y);
  bool TypedDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString);
  bool DerivativesBy(std::span<const double> x, std::span<double> dyda, std::string& ErrString, bool extrapolate);
  bool CompileDerivatives();
  void TakeParentsValues(DerivativeModel& derivative) const;
  bool ClosedFormBlock(const SolveData& data, std::size_t first, std::size_t n, double* y, double* const* dyda);
  bool TypedDerivativesBlock(const SolveData& data, std::size_t first, std::size_t n, double* const* dyda);
  bool CentredQuotientBlock(std::size_t coefficient, double h, std::size_t n, double* quotient);
  bool ExtrapolateBlock(std::size_t coefficient, std::size_t n, double* answer);

  void TakeInput(const SolveData& data);
  bool Linearize(const SolveData& data, std::vector<double>& a);
  void TakeEstimates(const std::vector<double>& a);
  void TakeDefaults();

  bool FitLinear(const SolveData& data, std::string& LogString);
  bool FitNonlinear(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form);
  bool FitOneStart(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form);
  bool FitSweep(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form,
                const std::vector<std::vector<double>>& sets);
  std::optional<Search> FitOneSet(const SolveData& data, const Settings& settings, std::vector<double>& a,
                                  const std::vector<int>& ia, SolveForm& form);
  bool Judge(const SolveData& data, int numcoef, std::string& LogString, SolveForm& form);
  std::vector<int> FreeFlags() const;
  void Store(const std::vector<double>& a, const Matrix& covar);
  void ShowParameters(const std::vector<double>& a, SolveForm& form) const;
  void ReportParameters(std::string& LogString) const;

  mutable Parser parser_;
  mutable Expression expression_;  // of a built-in model that is not compiled yet, all but the lists
  mutable bool compiled_ = true;
  Evaluator evaluator_;
  std::unique_ptr<BlockProgram> program_;  // made when the first block is asked for
  const CatalogueModel* builtIn_ = nullptr;
  std::vector<std::string> sFuncList_;
  std::vector<Coefficient> coefficients_;
  std::vector<double> values_, covariance_;
  std::vector<ICRange> ranges_;
  std::vector<SweepRow> sweep_;
  std::vector<DerivativeModel> DerivativeModels_;  // for the duration of a fit
  std::shared_ptr<const InputPoints> input_ = std::make_shared<const InputPoints>();
  std::vector<std::vector<double>> XTable_;  // empty for a table at the input points
  std::vector<double> YTable_;
};

// All starts that the ranges span, a row each: a full grid with coefficient 1 changing fastest.
std::vector<std::vector<double>> BuildICSets(const std::vector<ICRange>& ranges);

}  // namespace quorvex
