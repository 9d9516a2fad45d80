#include "solve/FailedSolve.h"

#include "solve/InitialEstimates.h"

namespace quorvex {

FailedSolve::FailedSolve(std::string message, std::vector<FailedFit> fits, const SolveData& data,
                         const LocaleText& locale)
    : message_(std::move(message)), fits_(std::move(fits)), data_(data), locale_(locale) {}

std::string FailedSolve::Reason(std::size_t fit) const {
  const FailedFit& failed = fits_[fit];
  return WhyFailed(failed, data_, locale_) +
         (failed.TriedHarder ? " Searches from many other starts failed, too." : "");
}

std::vector<EstimateText> FailedSolve::Estimates(std::size_t fit) const {
  if (!CanBeEstimated(fit)) return {};
  std::vector<EstimateText> estimates;
  for (const EstimateRow& row : EstimateRows(*AtItsStart(fits_[fit], data_), locale_)) {
    std::string value = row.Initial;
    if (row.Type == EstimateType::Constant) value += " (constant)";
    if (row.Type == EstimateType::Range) value += " to " + row.Final + " in " + row.Steps + " steps";
    if (!row.Minimum.empty()) value += ", at least " + row.Minimum;
    if (!row.Maximum.empty()) value += ", at most " + row.Maximum;
    estimates.push_back({row.Name, std::move(value)});
  }
  return estimates;
}

bool FailedSolve::CanBeEstimated(std::size_t fit) const {
  const ModelClass* const model = fits_[fit].Object.Model;
  return model != nullptr && model->SolveType == 0 && static_cast<std::size_t>(model->NumDependentVar()) < data_.N();
}

bool FailedSolve::CanTryHarder(std::size_t fit) const { return CanBeEstimated(fit) && !fits_[fit].TriedHarder; }

}  // namespace quorvex
