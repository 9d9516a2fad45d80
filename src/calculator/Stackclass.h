#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "calculator/Numberclass.h"
#include "plot/PlotSeries.h"

namespace quorvex {

// What the calculator computes with: a curve, which is raw data with the look of its series, or a number. No operation
// changes the points of a curve, it makes a new one; so copies of a curve may share them.
using StackEntry = std::variant<PlotSeries, Numberclass>;

// The text of an entry, which tells how it was computed.
const std::string& LegendText(const StackEntry& entry);
void SetLegendText(StackEntry& entry, std::string text);

// The calculator's stack. Its top is the last entry.
class Stackclass {
 public:
  // The top, which stays; fails on an empty stack, as Pop does.
  const StackEntry& Top() const;
  StackEntry& Top();
  bool IsEmpty() const { return entries_.empty(); }
  std::int16_t NumElements() const { return static_cast<std::int16_t>(entries_.size()); }
  const std::vector<StackEntry>& Entries() const { return entries_; }

  // Fails where the stack has as many entries as its count can tell. A number gets an identifier of its own.
  void Push(StackEntry entry);
  StackEntry Pop();

  // Of fewer than two entries these leave everything as it is.
  void RollDown();  // the bottom becomes the top
  void RollUp();    // the top becomes the bottom
  void Exchange();  // the two top entries change places

  void clear() { entries_.clear(); }

 private:
  std::vector<StackEntry> entries_;
  std::int16_t lastId_ = 0;
};

}  // namespace quorvex
