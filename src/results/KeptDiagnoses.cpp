#include "results/KeptDiagnoses.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "engine/ModelClass.h"

namespace quorvex {

KeptDiagnoses::Mark KeptDiagnoses::MarkOf(const ModelClass& model) {
  Mark mark{model.id, {}, model.Reports};
  // As bits, since a number that is none equals nothing.
  const auto take = [&](double number) { mark.Numbers.push_back(std::bit_cast<std::uint64_t>(number)); };
  for (const double number :
       {model.RSS, model.RssNorm, model.StdErr, model.GivenDeviation, static_cast<double>(model.DOFError),
        static_cast<double>(model.SolveType), static_cast<double>(model.Ended)})
    take(number);
  for (const double value : model.CoefficientValues) take(value);
  for (const double variance : model.Variances) take(variance);
  for (const Coefficient& one : model.Coefficients)
    for (const double number : {static_cast<double>(one.Constant), one.Minimum, one.Maximum}) take(number);
  return mark;
}

bool KeptDiagnoses::Follow(const std::vector<const ModelClass*>& solved, const SolveData& data) {
  std::vector<Mark> marks;
  for (const ModelClass* model : solved) marks.push_back(MarkOf(*model));
  const bool sameData = data.X == data_.X && data.Y == data_.Y && data.SD == data_.SD;
  if (sameData && marks == marks_) return false;
  std::erase_if(further_, [&](const auto& entry) {
    const auto has = [&](const std::vector<Mark>& list) { return std::ranges::find(list, entry.first, &Mark::Id); };
    const auto before = has(marks_), now = has(marks);
    return !sameData || before == marks_.end() || now == marks.end() || *before != *now;
  });
  // In another order they are ranked as before, but stand in other places.
  all_.reset();
  marks_ = std::move(marks);
  data_ = data;
  return true;
}

void KeptDiagnoses::KeepAll(std::vector<Diagnosis> all, std::vector<std::string> warnings) {
  all_ = std::move(all);
  warnings_ = std::move(warnings);
}

void KeptDiagnoses::Keep(Diagnosis one, const DiagnosisChoices& choices, std::vector<std::string> warnings) {
  const auto found = further_.find(one.Id);
  if (found == further_.end()) {
    const std::string id = one.Id;
    further_.emplace(id, Further{std::move(one), choices, std::move(warnings)});
    return;
  }
  auto& [said, there, told] = found->second;
  for (std::string& warning : warnings)
    if (std::ranges::find(told, warning) == told.end()) told.push_back(std::move(warning));
  const auto take = [](auto& into, const auto& from, auto... parts) {
    for (std::size_t i = 0; i < std::min(into.size(), from.size()); ++i) ((into[i].*parts = from[i].*parts), ...);
  };
  TakeOver(one.Judgement, said.Judgement);  // which has heard what was computed
  if (choices.ProfileLimits) {
    take(said.Coefficients, one.Coefficients, &CoefficientDiagnosis::Profile, &CoefficientDiagnosis::Curve);
    there.ProfileLimits = true;
  }
  if (choices.Bootstrap > 0) {
    take(said.Coefficients, one.Coefficients, &CoefficientDiagnosis::Bootstrapped);
    take(said.Quantities, one.Quantities, &QuantityDiagnosis::Bootstrapped);
    said.BootstrapFailures = one.BootstrapFailures;
    there.Bootstrap = choices.Bootstrap;
    there.ResampleCases = choices.ResampleCases;
  }
  if (choices.CrossValidation > 0) {
    said.Rank.CrossValidated = one.Rank.CrossValidated;
    said.Rank.FailedParts = one.Rank.FailedParts;
    there.CrossValidation = choices.CrossValidation;
  }
}

DiagnosisChoices KeptDiagnoses::Choices(const std::string& id) const {
  const auto found = further_.find(id);
  return found == further_.end() ? DiagnosisChoices() : found->second.Choices;
}

std::vector<std::string> KeptDiagnoses::Warnings(const std::string& id) const {
  std::vector<std::string> warnings = warnings_;
  if (const auto found = further_.find(id); found != further_.end())
    for (const std::string& warning : found->second.Warnings)
      if (std::ranges::find(warnings, warning) == warnings.end()) warnings.push_back(warning);
  return warnings;
}

DiagnosisChoices KeptDiagnoses::Missing(const std::string& id, const DiagnosisChoices& wanted) const {
  const DiagnosisChoices there = Choices(id);
  DiagnosisChoices missing = wanted;
  missing.ProfileLimits = wanted.ProfileLimits && !there.ProfileLimits;
  if (wanted.Bootstrap == there.Bootstrap && wanted.ResampleCases == there.ResampleCases) missing.Bootstrap = 0;
  if (missing.Bootstrap == 0) missing.ResampleCases = false;
  if (wanted.CrossValidation == there.CrossValidation) missing.CrossValidation = 0;
  return missing;
}

std::vector<Diagnosis> KeptDiagnoses::All() const {
  if (!all_) return {};
  std::vector<Diagnosis> all = *all_;
  for (Diagnosis& one : all) {
    const auto found = further_.find(one.Id);
    if (found == further_.end()) continue;
    // Its place among the others is known from all of them alone.
    const Diagnosis& further = found->second.Said;
    TakeOver(further.Judgement, one.Judgement);
    one.Coefficients = further.Coefficients;
    one.Quantities = further.Quantities;
    one.BootstrapFailures = further.BootstrapFailures;
    one.Rank.CrossValidated = further.Rank.CrossValidated;
    one.Rank.FailedParts = further.Rank.FailedParts;
  }
  return all;
}

}  // namespace quorvex
