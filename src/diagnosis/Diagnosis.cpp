#include "diagnosis/Diagnosis.h"

#include <algorithm>
#include <array>

#include "core/NumericFault.h"
#include "core/ParallelRuns.h"
#include "diagnosis/Bootstrap.h"
#include "diagnosis/ChiSquare.h"
#include "diagnosis/CrossValidation.h"
#include "diagnosis/DerivedQuantity.h"
#include "diagnosis/FitGeometry.h"
#include "diagnosis/TaskForm.h"
#include "engine/RankModels.h"
#include "engine/RobustFit.h"
#include "functions/InverseTDistribution.h"

namespace quorvex {
namespace {

using Quantiles = std::array<double, kLimitLevels.size()>;

Quantiles QuantilesOf(const ModelClass& model) {
  try {
    return ConfidenceQuantiles(model.ErrorDegrees());
  } catch (const NumericFault&) {
    Quantiles none;
    none.fill(NAN);
    return none;
  }
}

LimitsByLevel SymmetricLimits(double value, double stdErr, const Quantiles& quantiles) {
  LimitsByLevel limits;
  for (std::size_t level = 0; level < limits.size(); ++level)
    limits[level] = {value - stdErr * quantiles[level], value + stdErr * quantiles[level]};
  return limits;
}

// What is told of one solved model.
class ModelDiagnosis {
 public:
  ModelDiagnosis(ModelClass& model, const SolveData& data, const Settings& settings, SolveForm& form,
                 const LocaleText& locale)
      : model_(model), data_(data), settings_(settings), form_(form), locale_(locale), quantiles_(QuantilesOf(model)) {}

  Diagnosis Make(const DiagnosisChoices& choices, std::vector<std::string>& warnings) {
    const auto geometry = FitGeometry::At(model_, data_, settings_.DerivativeMethod, form_, settings_.Threads);
    diagnosis_.Id = model_.id;
    diagnosis_.Judgement = Judge(model_, data_, geometry, settings_, form_, locale_);
    diagnosis_.AbsoluteDeviations = model_.GivenDeviation > 0;
    const ChiSquare chiSquare = ChiSquareOf(model_, data_.UnitDeviation);
    diagnosis_.ReducedChiSquare = chiSquare.Reduced;
    diagnosis_.ChiSquareProbability = chiSquare.Probability;
    if (model_.Loss != LossKind::Squares) diagnosis_.Outliers = OutlierRows(model_, data_);
    Coefficients();
    Quantities(geometry);
    if (geometry) Correlations(*geometry);
    if (choices.ProfileLimits && model_.Loss == LossKind::Squares) Profiles(warnings);
    if (choices.Bootstrap > 0) Samples(choices);
    return std::move(diagnosis_);
  }

 private:
  void Coefficients() {
    for (int i = 1; i <= model_.NumDependentVar(); ++i) {
      CoefficientDiagnosis& c = diagnosis_.Coefficients.emplace_back();
      c.Name = model_.Variables(i);
      c.Value = model_.Values(i);
      c.StdErr = model_.StandardError(i);
      c.IsHeld = model_.IsHeld(i);
      c.IsAtMinimum = model_.IsAtMinimum(i);
      c.IsAtMaximum = model_.IsAtMaximum(i);
      // What holds a coefficient on its bound is no knowledge of it.
      if (model_.IsAtBound(i)) c.StdErr = NAN;
      c.Symmetric = SymmetricLimits(c.Value, c.StdErr, quantiles_);
    }
  }

  // The first coefficient on a bound that the quantity depends on, by its number; else 0.
  int OnABound(QuantityProgram& program) {
    for (int i = 1; i <= model_.NumDependentVar(); ++i) {
      if (!model_.IsAtBound(i)) continue;
      const auto gradient = program.Gradient(model_.CoefficientValues, {i});
      if (!gradient || (*gradient)[0] != 0) return i;
    }
    return 0;
  }

  // The variance by the gradient: g^T C g (the law of propagation of errors).
  void Quantities(const std::optional<FitGeometry>& geometry) {
    const std::vector<std::string> faults = ReportFaults(model_);
    for (std::size_t i = 0; i < model_.Reports.size(); ++i) {
      QuantityDiagnosis& quantity = diagnosis_.Quantities.emplace_back();
      quantity.Name = model_.Reports[i].Name;
      quantity.Expression = model_.Reports[i].Expression;
      quantity.Fault = faults[i];
      programs_.emplace_back(model_.Reports[i], model_);
      if (!quantity.Fault.empty()) continue;
      const auto value = programs_.back().Value(model_.CoefficientValues);
      if (!value) {
        quantity.Fault = "The quantity '" + quantity.Name + "' has no value for the coefficients found.";
        continue;
      }
      quantity.Value = *value;
      if (!geometry) continue;
      if (const int held = OnABound(programs_.back()); held != 0) {
        diagnosis_.Judgement.Notes.push_back("The error of the quantity '" + quantity.Name + "' is not known: '" +
                                             model_.Variables(held) + "', on which it depends, lies on a bound.");
        continue;
      }
      const auto gradient = programs_.back().Gradient(model_.CoefficientValues, geometry->Free());
      if (!gradient) continue;
      quantity.StdErr = model_.ErrorDeviation() * geometry->Deviation(*gradient);
      quantity.Symmetric = SymmetricLimits(quantity.Value, quantity.StdErr, quantiles_);
    }
  }

  void Correlations(const FitGeometry& geometry) {
    diagnosis_.Condition = 1 / geometry.ReciprocalCondition();
    const Matrix correlation = geometry.Correlation();
    for (std::size_t i = 1; i < correlation.Order(); ++i)
      for (std::size_t j = 0; j < i; ++j)
        if (std::isnan(correlation(i, j))) return;
    for (const int i : geometry.Free()) diagnosis_.CorrelationNames.push_back(model_.Variables(i));
    diagnosis_.Correlation = correlation;
  }

  void Profiles(std::vector<std::string>& warnings) {
    const double deviation = model_.ErrorDeviation();
    const auto profiled = ProfileCoefficients(model_, data_, {deviation * deviation, quantiles_}, settings_, form_);
    if (!profiled) return;
    if (!profiled->Refusal.empty())
      warnings.push_back("There are no profile limits of '" + (model_.cfgID.empty() ? model_.id : model_.cfgID) +
                         "': " + profiled->Refusal);
    std::vector<LimitsByLevel> symmetric;
    for (const CoefficientDiagnosis& c : diagnosis_.Coefficients) symmetric.push_back(c.Symmetric);
    JudgeByProfiles(model_, *profiled, symmetric, diagnosis_.Judgement);
    for (const CoefficientProfile& profile : profiled->Coefficients) {
      CoefficientDiagnosis& c = diagnosis_.Coefficients[static_cast<std::size_t>(profile.Coefficient - 1)];
      c.Profile = profile.Limits;
      c.Curve = profile.Curve;
    }
  }

  void Samples(const DiagnosisChoices& choices) {
    const QuantitiesOf quantities = [this](std::span<const double> coefficients) {
      std::vector<double> values;
      for (QuantityProgram& program : programs_) values.push_back(program.Value(coefficients).value_or(NAN));
      return values;
    };
    const auto samples = BootstrapModel(model_, data_, {choices.Bootstrap, choices.ResampleCases, choices.Seed},
                                        settings_, form_, quantities);
    if (!samples) return;
    diagnosis_.BootstrapFailures = samples->Failures;
    JudgeBySamples(choices.Bootstrap, samples->Failures, diagnosis_.Judgement);
    for (std::size_t i = 0; i < samples->Coefficients.size(); ++i)
      if (!diagnosis_.Coefficients[i].IsHeld) diagnosis_.Coefficients[i].Bootstrapped = samples->Coefficients[i];
    for (std::size_t i = 0; i < samples->Quantities.size(); ++i)
      if (diagnosis_.Quantities[i].Fault.empty()) diagnosis_.Quantities[i].Bootstrapped = samples->Quantities[i];
  }

  ModelClass& model_;
  const SolveData& data_;
  const Settings& settings_;
  SolveForm& form_;
  const LocaleText& locale_;
  const Quantiles quantiles_;
  std::vector<QuantityProgram> programs_;  // of the reports
  Diagnosis diagnosis_;
};

}  // namespace

std::vector<Diagnosis> Diagnose(const ModelCollection& models, const SolveData& data, const DiagnosisChoices& choices,
                                int sortIndex, const Settings& settings, SolveForm& form,
                                std::vector<std::string>& warnings, const LocaleText& locale) {
  if (!CrossValidate(models, data, choices.CrossValidation, choices.Seed, settings, form)) return {};
  const std::vector<ModelClass*> ranked = RankModels(models, sortIndex);
  const std::vector<Ranking> rankings = RankingOf(ranked);
  std::vector<ModelClass*> told = ranked;
  for (const auto& model : models)
    if (!model->Solved && (model->Solve || !model->Failure.empty())) told.push_back(model.get());
  std::vector<Diagnosis> diagnoses(told.size());
  std::vector<std::vector<std::string>> warningsOf(told.size());
  const auto diagnose = [&](std::size_t i, const Settings& own, SolveForm& ownForm) {
    if (i < ranked.size()) {
      diagnoses[i] = ModelDiagnosis(*told[i], data, own, ownForm, locale).Make(choices, warningsOf[i]);
      diagnoses[i].Rank = rankings[i];
    } else {
      diagnoses[i].Id = told[i]->id;
      diagnoses[i].Judgement = Judge(*told[i], data, std::nullopt, own, ownForm, locale);
    }
  };
  if (choices.ProfileLimits || choices.Bootstrap > 0) {
    // These are side by side in themselves, and show how far they are.
    for (std::size_t i = 0; i < told.size(); ++i) {
      diagnose(i, settings, form);
      if (form.Aborted) return {};
    }
  } else {
    Settings each = settings;
    each.Threads = ThreadsOfEach(settings.Threads, told.size());
    if (!RunTasks(told.size(), settings.Threads, form, "Diagnosis: model",
                  [&](std::size_t i, SolveForm& own) { diagnose(i, each, own); }))
      return {};
  }
  for (const std::vector<std::string>& of : warningsOf) warnings.insert(warnings.end(), of.begin(), of.end());
  const auto isRobust = [](const ModelClass* model) { return model->Loss != LossKind::Squares; };
  if (choices.ProfileLimits && std::ranges::any_of(ranked, isRobust))
    warnings.emplace_back("Profile limits are for least squares alone: with another loss there are none.");
  for (std::string& warning : RankingWarnings(ranked, diagnoses.size())) warnings.push_back(std::move(warning));
  if (settings.AbsoluteDeviations && !(data.UnitDeviation > 0) && !ranked.empty())
    warnings.emplace_back(
        "Standard deviations are to be taken at their word, but the data have none: errors come from "
        "the scatter of the points.");
  return diagnoses;
}

}  // namespace quorvex
