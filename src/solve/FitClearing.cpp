#include "solve/FitClearing.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"

namespace quorvex {

FitClearing::FitClearing(std::vector<SolvedItem> list, std::vector<SolvedItem> selected, int sortIndex,
                         char decimalSeparator)
    : list_(std::move(list)),
      selected_(std::move(selected)),
      sortIndex_(sortIndex),
      decimalSeparator_(decimalSeparator) {
  if (!AnySelected()) Option = ClearOption::All;
}

std::string FitClearing::CutoffCaption() const {
  return "Clear Fits with " + std::string(SortKeyName(sortIndex_)) + (LargestIsBest(sortIndex_) ? " <" : " >");
}

std::string FitClearing::BestLabel() const {
  return sortIndex_ == kSortByStdErr ? "Best StdEerr" : "Best " + std::string(SortKeyName(sortIndex_));  // so spelt
}

std::string FitClearing::WorstLabel() const { return "Worst " + std::string(SortKeyName(sortIndex_)); }
std::string FitClearing::BestValue() const { return ValueAt(true); }
std::string FitClearing::WorstValue() const { return ValueAt(false); }

// Interpolations stand behind the models.
std::string FitClearing::ValueAt(bool best) const {
  const auto models = std::find_if(list_.begin(), list_.end(), [](const SolvedItem& s) { return s.Model == nullptr; });
  if (models == list_.begin()) return "";
  constexpr int kDigits = 15;
  return SortKeyText(*(best ? list_.begin() : models - 1), sortIndex_, decimalSeparator_, kDigits);
}

bool FitClearing::Accept(Prompter& user) const {
  if (Option != ClearOption::BeyondCutoff || NumericText(Cutoff, decimalSeparator_)) return true;
  user.Refuse("Please enter a value for the " + std::string(SortKeyName(sortIndex_)) +
              " cutoff or select a different option.");
  return false;
}

std::vector<SolvedItem> FitClearing::Chosen() const {
  std::vector<SolvedItem> chosen;
  std::copy_if(list_.begin(), list_.end(), std::back_inserter(chosen),
               [this](const SolvedItem& solution) { return IsChosen(solution); });
  return chosen;
}

bool FitClearing::IsChosen(const SolvedItem& solution) const {
  const ModelClass* const model = solution.Model;
  switch (Option) {
    case ClearOption::Selected:
      return std::find(selected_.begin(), selected_.end(), solution) != selected_.end();
    case ClearOption::NonLinear:
      return model != nullptr && model->SolveType == 0;
    case ClearOption::Linear:
      return model != nullptr && model->SolveType == 1;
    case ClearOption::BeyondCutoff: {
      const auto cutoff = NumericText(Cutoff, decimalSeparator_);
      if (model == nullptr || !cutoff) return false;
      // The designed keys count by their size; AICc and BIC of good fits are often below 0.
      const double value = SortKeyValue(*model, sortIndex_);
      const double key = IsRankingKey(sortIndex_) ? value : std::abs(value);
      return LargestIsBest(sortIndex_) ? key < *cutoff : key > *cutoff;
    }
    default:
      return true;
  }
}

}  // namespace quorvex
