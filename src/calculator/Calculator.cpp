#include "calculator/Calculator.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "calculator/CurveFile.h"
#include "calculator/Generators.h"
#include "core/SaveFile.h"

namespace quorvex {
namespace {

constexpr OperationKey kStackKeys[] = {
    {kPushKey, "Push", "Push a copy of the top entry"},
    {kPopKey, "Pop", "Take the top entry away"},
    {kRollDownKey, "RlDn", "Roll down: the bottom entry becomes the top"},
    {kRollUpKey, "RlUp", "Roll up: the top entry becomes the bottom"},
    {kExchangeKey, "Exch", "Exchange the two top entries"},
    {kClearKey, "ClrS", "Clear the stack"},
};

constexpr const char* kFilter = "Data files (*.dat)";

// Whether two series of the same name show the same.
bool SameSeries(const PlotSeries& a, const PlotSeries& b) {
  if (a.Style().LegendText != b.Style().LegendText) return false;
  if (const ModelClass* one = a.Model(), *two = b.Model(); one != nullptr && two != nullptr)
    return one->id == two->id && one->CoefficientValues == two->CoefficientValues;
  if (const InterpClass* one = a.Interpolation(), *two = b.Interpolation(); one != nullptr && two != nullptr)
    return one->id == two->id && one->CopyInterpolationTableTo() == two->CopyInterpolationTableTo();
  if (a.Data() == nullptr || b.Data() == nullptr) return false;
  const SeriesTable one = a.CopyDataTo(), two = b.CopyDataTo();
  return std::ranges::equal(one.X, two.X) && std::ranges::equal(one.Y, two.Y);
}

}  // namespace

std::span<const OperationKey> StackKeys() { return kStackKeys; }

Calculator::Calculator(const Settings& settings, const LocaleText& locale, Prompter& user)
    : settings_(settings), user_(user) {
  Setup.Locale = locale;
  Setup.AskSection = [](const XRange&) { return std::optional<XRange>(); };
}

void Calculator::Init(std::vector<PlotSeries> plot, const std::vector<PlotSeries>& project) {
  available_ = std::move(plot);
  for (const PlotSeries& series : project)
    if (std::ranges::none_of(available_, [&](const PlotSeries& other) { return SameSeries(series, other); }))
      available_.push_back(series);
  for (std::size_t i = 0; i < available_.size(); ++i)
    if (std::string& legend = available_[i].Style().LegendText; legend.empty())
      legend = "Series " + std::to_string(i + 1);
}

std::vector<std::string> Calculator::StackTexts() const {
  std::vector<std::string> texts;
  for (const StackEntry& entry : stack_.Entries()) {
    std::string text = LegendText(entry);
    if (const auto* number = std::get_if<Numberclass>(&entry))
      if (const std::string value = Numberclass::TextOf(number->Value(), Setup.Locale); value != text)
        text += " = " + value;
    texts.push_back(std::move(text));
  }
  std::ranges::reverse(texts);
  return texts;
}

void Calculator::Refuse(CalculatorError error) { user_.Refuse(CalculatorErrorText(error)); }

void Calculator::Do(const std::function<bool(Stackclass&)>& work) {
  Stackclass changed = stack_;
  const auto number = NumericText(Entry, Setup.Locale.DecimalSeparator);
  try {
    if (number) changed.Push(Numberclass(*number, Setup.Locale));
    if (!work(changed)) return;
  } catch (const CalculatorFault& fault) {
    return Refuse(fault.Error);
  } catch (const NumericFault&) {
    return Refuse(CalculatorError::Unknown);
  }
  before_.push_back(std::exchange(stack_, std::move(changed)));
  const auto most = static_cast<std::size_t>(std::max(0, settings_.Integer("undolevels")));
  if (before_.size() > most) before_.erase(before_.begin());
  after_.clear();
  if (number) Entry.clear();
}

void Calculator::arithmetic(int Index) {
  Do([&](Stackclass& stack) {
    quorvex::arithmetic(Index, stack, Setup);
    return true;
  });
}

void Calculator::operations(int Index) {
  Do([&](Stackclass& stack) { return quorvex::operations(Index, stack, Setup); });
}

void Calculator::stackops(int Index) {
  Do([&](Stackclass& stack) {
    if (stack.IsEmpty()) throw CalculatorFault(CalculatorError::StackEmpty);
    switch (Index) {
      case kPushKey:
        stack.Push(stack.Top());
        break;
      case kPopKey:
        stack.Pop();
        break;
      case kRollDownKey:
        stack.RollDown();
        break;
      case kRollUpKey:
        stack.RollUp();
        break;
      case kExchangeKey:
        stack.Exchange();
        break;
      default:
        stack.clear();
    }
    return true;
  });
}

void Calculator::enterconstant() {
  if (Trim(Entry).empty()) return;
  Do([&](Stackclass& stack) {
    if (NumericText(Entry, Setup.Locale.DecimalSeparator)) return true;
    SetLegendText(stack.Top(), CutLegend(Entry));
    Entry.clear();
    return true;
  });
}

// Raw data as they are; a curve by the table that its plot shows, or one of its own where it has not been shown.
PlotSeries Calculator::CurveOf(const PlotSeries& series) const {
  const SeriesTable table = series.CopyDataTo();
  if (series.Data() == nullptr && table.Y.empty()) return TableOf(series, settings_.Integer("pointsperplot"));
  if (table.Y.empty()) throw CalculatorFault(CalculatorError::NothingToCopy);
  // A file may hold what no computation has.
  for (const std::span<const double> column : {table.X, table.Y})
    if (!std::ranges::all_of(column, [](double value) { return std::isfinite(value); }))
      throw CalculatorFault(CalculatorError::InvalidOperation);
  if (series.Data() != nullptr) return series;
  return NewCurve({table.X.begin(), table.X.end()}, {table.Y.begin(), table.Y.end()}, series.Style().LegendText,
                  series.Style());
}

void Calculator::copy(std::span<const std::size_t> rows) {
  Do([&](Stackclass& stack) {
    if (rows.empty()) throw CalculatorFault(CalculatorError::NothingToCopy);
    for (const std::size_t row : rows) stack.Push(CurveOf(available_[row]));
    return true;
  });
}

void Calculator::Push(PlotSeries curve) {
  Do([&](Stackclass& stack) {
    stack.Push(std::move(curve));
    return true;
  });
}

void Calculator::ImportCommand() {
  const auto file = user_.ChooseFileToOpen("Import", kFilter);
  if (!file) return;
  Result<StackEntry> entry = ReadEntry(*file, Setup.Locale);
  if (!entry) return user_.Refuse(entry.error());
  Do([&](Stackclass& stack) {
    stack.Push(std::move(*entry));
    return true;
  });
}

void Calculator::ExportCommand() {
  if (stack_.IsEmpty()) return Refuse(CalculatorError::StackEmpty);
  const auto file = user_.ChooseFileToSave("Export", kFilter, "dat", "calc.dat");
  if (file && SaveFile(*file, EntryText(stack_.Top()), FileCare::Answer) != 0) Refuse(CalculatorError::ExportFailed);
}

const PlotSeries* Calculator::SampleSource(std::span<const std::size_t> rows) {
  const auto error = rows.empty()                                 ? CalculatorError::NothingToSample
                     : rows.size() > 1                            ? CalculatorError::SeveralSelected
                     : available_[rows.front()].Data() != nullptr ? CalculatorError::NotAnEquation
                                                                  : CalculatorError::Unknown;
  if (error == CalculatorError::Unknown) return &available_[rows.front()];
  Refuse(error);
  return nullptr;
}

std::vector<PlotSeries> Calculator::SelectedCurves(std::span<const std::size_t> entries) {
  std::vector<PlotSeries> curves;
  for (const std::size_t entry : entries)
    if (const auto* curve = std::get_if<PlotSeries>(&stack_.Entries()[stack_.Entries().size() - 1 - entry]))
      curves.push_back(*curve);
  if (curves.empty()) Refuse(stack_.IsEmpty() ? CalculatorError::StackEmpty : CalculatorError::NothingToPlot);
  return curves;
}

void Calculator::Undo() {
  if (!CanUndo()) return;
  after_.push_back(std::exchange(stack_, std::move(before_.back())));
  before_.pop_back();
}

void Calculator::Redo() {
  if (!CanRedo()) return;
  before_.push_back(std::exchange(stack_, std::move(after_.back())));
  after_.pop_back();
}

}  // namespace quorvex
