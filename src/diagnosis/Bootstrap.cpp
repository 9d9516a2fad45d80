#include "diagnosis/Bootstrap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>

#include "diagnosis/TaskForm.h"
#include "engine/ModelClass.h"
#include "engine/RobustFit.h"
#include "engine/SeededRandom.h"

namespace quorvex {
namespace {

// The part of a distribution below the upper limit of each level. The first is that of every report.
constexpr std::array<double, kLimitLevels.size()> kBelowUpper = {0.84, 0.95, 0.975, 0.995};

// The data that samples are made of.
class Urn {
 public:
  // False where the model has no value at some point.
  bool Fill(const ModelClass& model, const SolveData& data, bool cases);
  SolveData Draw(SeededRandom& random) const;

 private:
  SolveData DrawCases(SeededRandom& random) const;

  const SolveData* data_ = nullptr;
  bool cases_ = false;
  std::vector<double> fitted_;
  std::vector<double> residuals_;  // times the root of their weights; centred and widened
};

bool Urn::Fill(const ModelClass& model, const SolveData& data, bool cases) {
  data_ = &data;
  cases_ = cases;
  const std::optional<std::vector<double>> residuals = model.CopyTo()->GenerateResiduals(data);
  if (!residuals) return false;
  const double n = static_cast<double>(data.N());
  double mean = 0;
  for (std::size_t i = 0; i < data.N(); ++i) {
    fitted_.push_back(data.Y[i] - (*residuals)[i]);
    residuals_.push_back((*residuals)[i] * std::sqrt(data.sig[i]));
    mean += residuals_.back() / n;
  }
  const double widen = std::sqrt(n / model.DOFError);
  for (double& r : residuals_) r = (r - mean) * widen;
  return true;
}

SolveData Urn::Draw(SeededRandom& random) const {
  if (cases_) return DrawCases(random);
  SolveData sample = *data_;
  for (std::size_t i = 0; i < sample.N(); ++i) {
    const double root = std::sqrt(sample.sig[i]);
    sample.Y[i] = fitted_[i] + (root > 0 ? residuals_[random.Below(residuals_.size())] / root : 0);
  }
  return sample;
}

SolveData Urn::DrawCases(SeededRandom& random) const {
  const std::size_t n = data_->N();
  // Models keep their input in the order of X.
  std::vector<std::size_t> times(n), rows;
  for (std::size_t i = 0; i < n; ++i) ++times[random.Below(n)];
  rows.reserve(n);
  for (std::size_t row = 0; row < n; ++row) rows.insert(rows.end(), times[row], row);
  SolveData sample = *data_;
  const auto draw = [&rows](std::vector<double>& column) {
    const std::vector<double> all = column;
    for (std::size_t i = 0; i < rows.size(); ++i) column[i] = all[rows[i]];
  };
  for (std::vector<double>& column : sample.X) draw(column);
  for (std::vector<double>* const column : {&sample.Y, &sample.SD, &sample.sig}) draw(*column);
  double sum = 0;
  for (const double weight : sample.sig) sum += weight;
  for (double& weight : sample.sig) weight *= static_cast<double>(n) / sum;
  return sample;
}

// Another stream of numbers for each sample. The first number of a seed is far from those of its neighbours.
SeededRandom RandomOf(std::uint64_t seed, std::size_t sample) {
  return SeededRandom(SeededRandom(SeededRandom(seed).Next() + sample).Next());
}

// The coefficients that the twin of a model is fitted to; empty where there is no answer.
std::vector<double> Refit(const ModelClass& model, const SolveData& sample, const Settings& settings, SolveForm& form) {
  // A twin for each sample: what a model remembers of one evaluation must not reach another sample.
  const std::unique_ptr<ModelClass> twin = model.CopyTo();
  twin->SpecifyICComplete = true;
  for (std::size_t i = 0; i < twin->ICRanges.size(); ++i)
    twin->ICRanges[i] = {twin->CoefficientValues[i], twin->CoefficientValues[i], 1};
  std::string log;
  if (!twin->Fit(sample, settings, log, form) || twin->Ended == SearchEnd::IterationLimit) return {};
  const bool finite = std::ranges::all_of(twin->CoefficientValues, [](double v) { return std::isfinite(v); });
  return finite ? twin->CoefficientValues : std::vector<double>();
}

BootstrapSpread SpreadOf(std::vector<double> values, double solution) {
  std::erase_if(values, [](double v) { return !std::isfinite(v); });
  BootstrapSpread spread;
  if (values.size() < 2) return spread;
  std::ranges::sort(values);
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level)
    spread.Limits[level] = {QuantileOf(values, 1 - kBelowUpper[level]), QuantileOf(values, kBelowUpper[level])};
  // About the median, lest values far from 0 lose their digits, and in its unit, lest squares leave the range.
  const double n = static_cast<double>(values.size()), centre = values[values.size() / 2];
  const double unit = std::max(values.back() - centre, centre - values.front());
  double sum = 0, squares = 0;
  if (unit > 0) {
    for (const double v : values) sum += (v - centre) / unit;
    for (const double v : values) {
      const double d = (v - centre) / unit - sum / n;
      squares += d * d;
    }
  }
  spread.Bias = centre - solution + sum / n * unit;
  spread.StdErr = std::sqrt(squares / (n - 1)) * unit;
  return spread;
}

std::vector<BootstrapSpread> SpreadsOf(const std::vector<std::vector<double>>& rows, std::span<const double> solution) {
  std::vector<BootstrapSpread> spreads;
  for (std::size_t i = 0; i < solution.size(); ++i) {
    std::vector<double> values;
    for (const std::vector<double>& row : rows) values.push_back(row[i]);
    spreads.push_back(SpreadOf(std::move(values), solution[i]));
  }
  return spreads;
}

}  // namespace

double QuantileOf(std::span<const double> ascending, double p) {
  const double place = p * static_cast<double>(ascending.size() - 1);
  const auto below = std::min(static_cast<std::size_t>(std::floor(place)), ascending.size() - 1);
  const double part = place - static_cast<double>(below);
  if (part == 0 || below + 1 == ascending.size()) return ascending[below];
  return ascending[below] * (1 - part) + ascending[below + 1] * part;
}

std::optional<Bootstrapped> BootstrapModel(const ModelClass& model, const SolveData& data, const BootstrapPlan& plan,
                                           const Settings& settings, SolveForm& form, const QuantitiesOf& quantities) {
  Bootstrapped result;
  Urn urn;
  const auto count = static_cast<std::size_t>(std::max(plan.Samples, 0));
  const bool possible = model.Solved && data.N() > 0 && urn.Fill(model, data, plan.ResampleCases);
  std::vector<std::vector<double>> fits(possible ? count : 0);
  Settings each = SettingsOfRefit(model, settings);
  each.TryHarder = false;
  each.Threads = 1;  // they run side by side
  const bool finished =
      RunTasks(fits.size(), settings.Threads, form, "Bootstrap: sample", [&](std::size_t k, SolveForm& own) {
        SeededRandom random = RandomOf(plan.Seed, k);
        fits[k] = Refit(model, urn.Draw(random), each, own);
      });
  if (!finished || form.Aborted) return std::nullopt;
  for (std::vector<double>& fit : fits) {
    if (fit.empty())
      ++result.Failures;
    else
      result.Samples.push_back(std::move(fit));
  }
  result.Coefficients = SpreadsOf(result.Samples, model.CoefficientValues);
  if (!quantities) return result;
  std::vector<std::vector<double>> values;
  for (const std::vector<double>& sample : result.Samples) values.push_back(quantities(sample));
  result.Quantities = SpreadsOf(values, quantities(model.CoefficientValues));
  return result;
}

}  // namespace quorvex
