#include "calculator/Stackclass.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "calculator/CalculatorFault.h"

namespace quorvex {

const std::string& LegendText(const StackEntry& entry) {
  if (const auto* number = std::get_if<Numberclass>(&entry)) return number->LegendText;
  return std::get<PlotSeries>(entry).Style().LegendText;
}

void SetLegendText(StackEntry& entry, std::string text) {
  if (auto* number = std::get_if<Numberclass>(&entry))
    number->LegendText = std::move(text);
  else
    std::get<PlotSeries>(entry).Style().LegendText = std::move(text);
}

const StackEntry& Stackclass::Top() const {
  if (IsEmpty()) throw CalculatorFault(CalculatorError::StackEmpty);
  return entries_.back();
}

StackEntry& Stackclass::Top() { return const_cast<StackEntry&>(std::as_const(*this).Top()); }

void Stackclass::Push(StackEntry entry) {
  constexpr std::int16_t kMost = std::numeric_limits<std::int16_t>::max();
  if (entries_.size() >= kMost) throw CalculatorFault(CalculatorError::PushFailed);
  if (auto* number = std::get_if<Numberclass>(&entry)) {
    lastId_ = lastId_ < kMost ? static_cast<std::int16_t>(lastId_ + 1) : std::int16_t{1};
    number->id = lastId_;
  }
  entries_.push_back(std::move(entry));
}

StackEntry Stackclass::Pop() {
  if (IsEmpty()) throw CalculatorFault(CalculatorError::PopFailed);
  StackEntry top = std::move(entries_.back());
  entries_.pop_back();
  return top;
}

void Stackclass::RollDown() {
  if (!IsEmpty()) std::rotate(entries_.begin(), entries_.begin() + 1, entries_.end());
}

void Stackclass::RollUp() {
  if (!IsEmpty()) std::rotate(entries_.begin(), entries_.end() - 1, entries_.end());
}

void Stackclass::Exchange() {
  if (entries_.size() >= 2) std::swap(entries_.back(), entries_[entries_.size() - 2]);
}

}  // namespace quorvex
