#include "solve/InitialEstimates.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"
#include "usermodels/RulesEdit.h"

namespace quorvex {
namespace {

constexpr double kMostSolutions = 100;

// A cell that has to hold a number.
struct Check {
  EstimateType Type;
  std::string EstimateRow::*Cell;
  int Column;
  double Least;
  const char* Message;
};

constexpr double kAny = -HUGE_VAL;
constexpr Check kInitial = {EstimateType::InitialEstimate, &EstimateRow::Initial, 3, kAny,
                            "Please enter a valid Initial Value for variable '"};
constexpr Check kChecks[] = {
    kInitial,
    {EstimateType::Constant, &EstimateRow::Initial, 3, kAny,
     "Please enter a valid Initial Value to be held constant for variable '"},
    {EstimateType::Range, kInitial.Cell, kInitial.Column, kInitial.Least, kInitial.Message},
    {EstimateType::Range, &EstimateRow::Final, 4, kAny, "Please enter a valid Final Value for variable '"},
    {EstimateType::Range, &EstimateRow::Steps, 5, 1, "Please enter a valid number of steps for variable '"},
};

std::string Shown(double value, const LocaleText& locale) { return LocalizeExpression(GeneralNumber(value), locale); }

std::optional<EstimateRefusal> CheckCell(const Check& check, const EstimateRow& row, std::size_t number,
                                         const LocaleText& locale) {
  const std::optional<double> value = NumericText(row.*check.Cell, locale.DecimalSeparator);
  if (value && *value >= check.Least) return std::nullopt;
  return EstimateRefusal{check.Message + row.Name + "'.", number, check.Column};
}

double Number(const std::string& text, const LocaleText& locale) { return *NumericText(text, locale.DecimalSeparator); }

// A bound; `none`, which is infinite, where its cell is empty. Nothing where it holds no number.
std::optional<double> BoundOf(const std::string& text, double none, const LocaleText& locale) {
  return Trim(text).empty() ? none : NumericText(text, locale.DecimalSeparator);
}

std::string ShownBound(double bound, const LocaleText& locale) {
  return std::isfinite(bound) ? Shown(bound, locale) : "";
}

std::optional<EstimateRefusal> CheckBounds(const EstimateRow& row, std::size_t number, const LocaleText& locale) {
  const std::optional<double> least = BoundOf(row.Minimum, -HUGE_VAL, locale);
  if (!least) return EstimateRefusal{"Please enter a valid Minimum for variable '" + row.Name + "'.", number, 6};
  const std::optional<double> most = BoundOf(row.Maximum, HUGE_VAL, locale);
  if (!most) return EstimateRefusal{"Please enter a valid Maximum for variable '" + row.Name + "'.", number, 7};
  if (*least <= *most) return std::nullopt;
  return EstimateRefusal{"The Minimum is above the Maximum for variable '" + row.Name + "'.", number, 6};
}

std::optional<EstimateRefusal> CheckRow(const EstimateRow& row, std::size_t number, const LocaleText& locale) {
  for (const Check& check : kChecks)
    if (check.Type == row.Type)
      if (auto refusal = CheckCell(check, row, number, locale)) return refusal;
  return CheckBounds(row, number, locale);
}

}  // namespace

std::vector<EstimateRow> EstimateRows(const ModelClass& model, const LocaleText& locale) {
  std::vector<EstimateRow> rows;
  for (int i = 1; i <= model.NumDependentVar(); ++i) {
    const ICRange& range = model.GetICRange()[static_cast<std::size_t>(i - 1)];
    EstimateRow row{model.Variables(i), EstimateType::InitialEstimate, Shown(model.Values(i), locale), "", ""};
    if (model.Constants(i) == 0) {
      row.Type = EstimateType::Constant;
    } else if (range.Steps > 1) {
      row = {row.Name, EstimateType::Range, Shown(range.Min, locale), Shown(range.Max, locale),
             std::to_string(range.Steps)};
    }
    row.Minimum = ShownBound(model.Minimum(i), locale);
    row.Maximum = ShownBound(model.Maximum(i), locale);
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<EstimateRow> FirstEstimates(const ModelClass& model, const SolveData& data, const LocaleText& locale) {
  // A solution, and what the user has chosen, are better than anything found anew.
  if (model.Solved || model.SpecifyICComplete) return EstimateRows(model, locale);
  // On a copy, as looking at estimates must not change the model.
  const std::unique_ptr<ModelClass> trial = model.CopyTo();
  trial->SetIC(data);
  return EstimateRows(*trial, locale);
}

std::string MovedEstimate(const EstimateRow& row, double base, int steps, double percent, const LocaleText& locale) {
  // A percentage of 0 would move nothing.
  double moved = base + steps * percent / 100 * (base != 0 ? base : 1);
  // A bound that is half typed is none yet, and a value beyond it comes back step by step.
  const double least = BoundOf(row.Minimum, -HUGE_VAL, locale).value_or(-HUGE_VAL);
  const double most = BoundOf(row.Maximum, HUGE_VAL, locale).value_or(HUGE_VAL);
  if (moved < base) moved = std::max(moved, std::min(least, base));
  if (moved > base) moved = std::min(moved, std::max(most, base));
  return Shown(moved, locale);
}

std::optional<EstimateRefusal> CheckInitialValues(std::span<const EstimateRow> rows, const LocaleText& locale) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (auto refusal = CheckCell(kInitial, rows[i], i, locale)) return refusal;
  return std::nullopt;
}

std::vector<double> InitialValues(std::span<const EstimateRow> rows, const LocaleText& locale) {
  std::vector<double> values;
  for (const EstimateRow& row : rows) values.push_back(Number(row.Initial, locale));
  return values;
}

std::optional<EstimateRefusal> CheckEstimates(std::span<const EstimateRow> rows, const LocaleText& locale) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (auto refusal = CheckRow(rows[i], i, locale)) return refusal;
  double solutions = 1;
  for (const EstimateRow& row : rows)
    if (row.Type == EstimateType::Range) solutions *= std::nearbyint(Number(row.Steps, locale));
  if (solutions <= kMostSolutions) return std::nullopt;
  return EstimateRefusal{
      "The maximum number of solutions created by solving variables with ranges is 100. You currently have " +
          Shown(solutions, locale) +
          " specified. Either solve fewer variables with ranges or reduce the number of ranges for each variable.",
      0, 0};
}

bool SetEstimates(Project& project, ProjectEditor& editor, ModelClass& model, std::span<const EstimateRow> rows) {
  if (model.Solved) {
    if (!editor.Edit.User.Ask("This model is currently in the solved list. Modifying the parameters will clear it's "
                              "solution. Do you wish to continue?"))
      return false;
    const UndoLabel label = UndoLabelOfModel(UndoOperation::ModifyParameters, model.id);
    int action = kPushUndo;
    editor.UpdateUndoMenu(action, &label);
  }
  std::vector<ICRange> ranges;
  for (int i = 1; const EstimateRow& row : rows) {
    const double value = Number(row.Initial, project.Locale);
    model.SetValue(i, value);
    model.SetConstant(i, row.Type == EstimateType::Constant ? 0 : 1);
    model.SetBounds(i, *BoundOf(row.Minimum, -HUGE_VAL, project.Locale),
                    *BoundOf(row.Maximum, HUGE_VAL, project.Locale));
    ranges.push_back(row.Type == EstimateType::Range ? ICRange{value, Number(row.Final, project.Locale),
                                                               RoundToInt32(Number(row.Steps, project.Locale))}
                                                     : ICRange{value, value, 1});
    ++i;
  }
  model.SetICRange(std::move(ranges));
  model.SpecifyICComplete = true;
  model.Solved = false;
  return project.Changed = true;
}

bool SaveRules(Project& project, ModelClass& model, std::span<const EstimateRow> rows, Prompter& user) {
  if (const auto refusal = CheckInitialValues(rows, project.Locale)) {
    user.Refuse(refusal->Message);
    return false;
  }
  bool specified = false;
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    specified |= !SameRule(model.Rules(i), kDefaultRule) || model.RuleConstant(i) != kDefaultRuleConstant;
  if (specified && !user.Ask("You have previously specified rules for this equation, this action will overwrite them. "
                             "Are you sure you want to continue?"))
    return false;
  for (int i = 1; const EstimateRow& row : rows) {
    model.SetRule(i, kDefaultRule);
    model.SetRuleConstant(i++, std::string(Trim(row.Initial)));
  }
  return project.Changed = true;
}

}  // namespace quorvex
