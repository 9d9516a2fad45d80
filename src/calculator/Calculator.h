#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "calculator/CalculatorFault.h"
#include "calculator/Operations.h"
#include "core/Prompter.h"
#include "core/Settings.h"

namespace quorvex {

// Index of the keys that move the stack's entries, which have these captions.
enum StackKey : int { kPushKey, kPopKey, kRollDownKey, kRollUpKey, kExchangeKey, kClearKey };
std::span<const OperationKey> StackKeys();

// A reverse Polish calculator of curves and numbers. What it can't do it refuses, and its stack stays as it was; what
// it does can be taken back. A number that is being entered goes on the stack first, as on a pocket calculator.
class Calculator {
 public:
  // Settings and prompter outlive it.
  Calculator(const Settings& settings, const LocaleText& locale, Prompter& user);

  // What can be copied: the series of a plot, then what its project has besides. A series without a legend gets one.
  void Init(std::vector<PlotSeries> plot, const std::vector<PlotSeries>& project);
  const std::vector<PlotSeries>& Available() const { return available_; }

  OperationSetup Setup;
  std::string Entry;  // the number or name that is being entered

  const Stackclass& Stack() const { return stack_; }
  // The entries as a list shows them, the top first. Here and below they count from 0 at the top.
  std::vector<std::string> StackTexts() const;

  void arithmetic(int Index);
  void operations(int Index);
  void stackops(int Index);
  void enterconstant();                          // a number is pushed, any other text names the top
  void copy(std::span<const std::size_t> rows);  // of what is available
  void Push(PlotSeries curve);                   // one that has been made
  void ImportCommand();
  void ExportCommand();

  // The one equation among the selected rows that can be sampled; null, and refused, where there is none.
  const PlotSeries* SampleSource(std::span<const std::size_t> rows);
  // The curves among the selected entries of the stack; none, and refused, where there are none.
  std::vector<PlotSeries> SelectedCurves(std::span<const std::size_t> entries);

  bool CanUndo() const { return !before_.empty(); }
  bool CanRedo() const { return !after_.empty(); }
  void Undo();
  void Redo();

 private:
  // Does `work` on the stack, with the entered number pushed. All or nothing: where it fails, which is told, or returns
  // false nothing has changed.
  void Do(const std::function<bool(Stackclass&)>& work);
  void Refuse(CalculatorError error);
  PlotSeries CurveOf(const PlotSeries& series) const;

  const Settings& settings_;
  Prompter& user_;
  std::vector<PlotSeries> available_;
  Stackclass stack_;
  std::vector<Stackclass> before_, after_;  // the newest last
};

}  // namespace quorvex
