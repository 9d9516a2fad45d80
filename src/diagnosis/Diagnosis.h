#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "diagnosis/Bootstrap.h"
#include "diagnosis/DiagnosisChoices.h"
#include "diagnosis/LimitLevels.h"
#include "diagnosis/ProfileLikelihood.h"
#include "diagnosis/Ranking.h"
#include "diagnosis/Verdict.h"
#include "engine/ModelCollection.h"
#include "engine/SolveForm.h"
#include "linear/Matrix.h"

namespace quorvex {

struct CoefficientDiagnosis {
  std::string Name;
  double Value = NAN, StdErr = NAN;  // no error at a bound
  bool IsHeld = false, IsAtMinimum = false, IsAtMaximum = false;
  LimitsByLevel Symmetric;                      // value -+ se t; the value itself where it is held
  std::optional<LimitsByLevel> Profile;         // where asked for
  ProfileCurve Curve;                           // behind these
  std::optional<BootstrapSpread> Bootstrapped;  // where asked for
};

// A quantity of the coefficients (DerivedQuantity).
struct QuantityDiagnosis {
  std::string Name, Expression;
  std::string Fault;  // why it has no value, a sentence; else empty
  double Value = NAN, StdErr = NAN;
  LimitsByLevel Symmetric;
  std::optional<BootstrapSpread> Bootstrapped;
};

// All that is told of an answer beside the designed reports. What could not be computed is NaN or empty.
struct Diagnosis {
  std::string Id;
  Verdict Judgement;
  bool AbsoluteDeviations = false;  // errors come from the given standard deviations; else from the scatter, too
  double ReducedChiSquare = NAN, ChiSquareProbability = NAN;  // of data with standard deviations
  std::vector<CoefficientDiagnosis> Coefficients;
  std::vector<std::string> CorrelationNames;  // of the free coefficients
  Matrix Correlation;                         // empty where the derivatives are singular
  double Condition = NAN;                     // of the derivatives, their columns scaled to equal lengths
  std::vector<QuantityDiagnosis> Quantities;
  Ranking Rank;
  std::vector<std::size_t> Outliers;  // rows, by OutlierRows (engine/RobustFit.h)
  int BootstrapFailures = 0;          // samples without an answer
};

// The diagnoses of the solved models, in the order of RankModels, and behind them of those that were to be solved and
// were not, in the order of the collection. `warnings` gets what is to be said of all together, a sentence each. Ends
// early, with nothing, where `form` is aborted. Never throws for what the models or the data are. The models stay as
// they were, but for the errors of cross-validation, which they keep (FitResult). The same bits on every machine and
// for any number of threads.
std::vector<Diagnosis> Diagnose(const ModelCollection& models, const SolveData& data, const DiagnosisChoices& choices,
                                int sortIndex, const Settings& settings, SolveForm& form,
                                std::vector<std::string>& warnings, const LocaleText& locale = {});

}  // namespace quorvex
