#include "selection/ExecuteSelection.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <new>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr const char* kNoMoreRows = "Maximum number of variables reached, process stopped.";

// The variable of a step that decides it, with its p.
struct Candidate {
  std::size_t Variable;
  double p;
};

class Procedure {
 public:
  Procedure(const SelectionData& data, const VarSelect& choices, const LocaleText& locale, SelectionForm& form,
            SelectionResult& result)
      : data_(data),
        choices_(choices),
        locale_(locale),
        form_(form),
        result_(result),
        solver_(data, choices.Intercept, form),
        inModel_(data.Always) {}

  const SubsetSolver& Solver() const { return solver_; }

  void Forward() {
    for (int step = 1; Goes(); ++step) {
      if (Left().empty()) return End("All variables entered into the model.");
      if (NoRoom()) return End(kNoMoreRows);
      Status(step);
      const std::optional<Candidate> best = BestToEnter();
      if (Stopped()) return;
      if (!best) return EndWithoutEntry(step == 1);
      Enter(best->Variable);
    }
  }

  void Backward() {
    inModel_.assign(inModel_.size(), true);
    Status(1);
    if (!Report("All Variables Entered")) return;
    for (int step = 2; Goes(); ++step) {
      if (Removable().empty()) return End("All variables were removed from the model.");
      Status(step);
      const Candidate worst = WorstToRemove();
      if (worst.p <= choices_.PToRemove)
        return step == 2 ? End("No variables removed from the model.") : EndAllSignificant();
      Remove(worst.Variable);
    }
  }

  // In turns an entry, if one qualifies, and a removal; at its end where neither does.
  void Stepwise() {
    std::optional<std::size_t> entered;  // last
    while (Goes()) {
      if (Steps() >= kMostSelectionSteps) return End("Maximum number of steps reached, solution stopped.");
      Status(static_cast<int>(Steps()) + 1);
      std::optional<Candidate> best;
      if (!Left().empty()) {
        if (NoRoom()) return End(kNoMoreRows);
        best = BestToEnter();
        if (Stopped()) return;
        if (best) {
          Enter(best->Variable);
          entered = best->Variable;
          if (Stopped()) return;
        }
      }
      if (Steps() == 0) return EndWithoutEntry(true);
      const Candidate worst = WorstToRemove();
      if (worst.p <= choices_.PToRemove) {
        if (best) continue;
        if (!Left().empty()) EndWithoutEntry(false);
        return EndAllSignificant();
      }
      if (entered == worst.Variable) {
        End("The same variable was entered at the " + Number(choices_.PToEnter) + " significance level");
        return End("and now can be removed at the " + Number(choices_.PToRemove) + " significance level.");
      }
      Remove(worst.Variable);
      if (Removable().empty()) return End("All variables removed from the model.");
    }
  }

  void AllSubsets() {
    result_.Subsets = quorvex::AllSubsets(
        solver_, {data_.Always, static_cast<std::size_t>(choices_.VarsToReturn), choices_.RankBy}, form_);
    if (Stopped() || !result_.Subsets.empty()) return;
    End("All combinations failed.");
    End("There are possibly identical, or nearly identical variables.");
  }

  void End(const std::string& line) { result_.Endings.push_back(line); }
  bool Stopped() const { return result_.Aborted || result_.Error; }

 private:
  std::string Number(double value) const { return LocalizeExpression(GeneralNumber(value), locale_); }
  std::size_t Steps() const { return result_.Steps.size(); }
  void Status(int step) { form_.SetStatus("Processing Step " + std::to_string(step)); }

  bool Goes() {
    result_.Aborted = result_.Aborted || form_.Aborted();
    return !Stopped();
  }

  Subset InModel() const {
    Subset in;
    for (std::size_t j = 0; j < inModel_.size(); ++j)
      if (inModel_[j]) in.push_back(j);
    return in;
  }
  Subset Left() const {
    Subset left;
    for (std::size_t j = 0; j < inModel_.size(); ++j)
      if (!inModel_[j]) left.push_back(j);
    return left;
  }
  Subset Removable() const {
    Subset removable;
    for (const std::size_t j : InModel())
      if (!data_.Always[j]) removable.push_back(j);
    return removable;
  }
  // Whether one more term would leave no degree of freedom.
  bool NoRoom() const { return solver_.Terms(InModel().size()) + 1 >= solver_.N(); }

  // A later one of equals, the first being compared with PToEnter.
  std::optional<Candidate> BestToEnter() {
    const Subset left = Left();
    const Result<std::vector<double>> p = solver_.EnteringProbabilities(InModel(), left);
    if (!p) {
      result_.Error = p.error();
      return std::nullopt;
    }
    std::optional<Candidate> best;
    for (std::size_t i = 0; i < left.size(); ++i)
      if ((*p)[i] <= (best ? best->p : choices_.PToEnter)) best = Candidate{left[i], (*p)[i]};
    return best;
  }

  // Of the model that was reported last.
  Candidate WorstToRemove() const {
    const SubsetFit& fit = result_.Steps.back().Fit;
    Candidate worst{0, -1};
    for (std::size_t i = 0; i < fit.Variables.size(); ++i)
      if (!data_.Always[fit.Variables[i]] && fit.Coefficients[i].p > worst.p)
        worst = {fit.Variables[i], fit.Coefficients[i].p};
    return worst;
  }

  void Enter(std::size_t variable) {
    inModel_[variable] = true;
    Report("Variable " + data_.Names[variable] + " Entered");
  }
  void Remove(std::size_t variable) {
    inModel_[variable] = false;
    Report("Variable " + data_.Names[variable] + " Removed");
  }
  bool Report(const std::string& what) {
    const Result<SubsetFit> fit = solver_.Fit(InModel());
    if (fit)
      result_.Steps.push_back({"Step " + std::to_string(Steps() + 1) + " - " + what, *fit});
    else
      result_.Error = fit.error();
    return !result_.Error;
  }

  void EndWithoutEntry(bool first) {
    End((first ? "No variables met the " : "No other variables met the ") + Number(choices_.PToEnter) +
        " significance level for entry into the model.");
  }
  void EndAllSignificant() {
    End("All variables left in the model are significant at the " + Number(choices_.PToRemove) + " level.");
  }

  const SelectionData& data_;
  const VarSelect& choices_;
  const LocaleText& locale_;
  SelectionForm& form_;
  SelectionResult& result_;
  const SubsetSolver solver_;
  std::vector<bool> inModel_;
};

bool AllFinite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

void Correlate(const SelectionData& data, const SubsetSolver& solver, SelectionForm& form, SelectionResult& result) {
  form.SetStatus("Processing Correlation Matrix");
  // Correlations are about the means, whatever the models are.
  std::optional<SubsetSolver> centred;
  if (!solver.HasIntercept()) centred.emplace(data, true, form);
  if (form.Aborted()) return;
  result.Correlation = (centred ? *centred : solver).Correlation();
  if (std::all_of(result.Correlation.begin(), result.Correlation.end(), AllFinite)) return;
  result.Correlation.clear();
  result.CorrelationError = "Error calculating correlation matrix";
}

void Inflate(const SubsetSolver& solver, SelectionForm& form, SelectionResult& result) {
  form.SetStatus("Processing VIF");
  for (std::size_t j = 0; j < solver.Candidates() && !form.Aborted(); ++j) {
    form.SetProgress(j, solver.Candidates());
    result.R2OnOthers.push_back(solver.R2OnOthers(j));
  }
  if (!form.Aborted() && AllFinite(result.R2OnOthers)) return;
  result.R2OnOthers.clear();
  if (!form.Aborted()) result.VifError = "Error calculating variance inflation factors";
}

void Search(const SelectionData& data, const VarSelect& choices, const LocaleText& locale, SelectionForm& form,
            SelectionResult& result) {
  constexpr const char* kStatus[] = {"Forward Selection", "Backward Selection", "Stepwise Selection", "All Subsets"};
  constexpr void (Procedure::*kRun[])() = {&Procedure::Forward, &Procedure::Backward, &Procedure::Stepwise,
                                           &Procedure::AllSubsets};
  const auto which = static_cast<std::size_t>(choices.WhichModel);
  form.SetStatus(std::string("Processing ") + kStatus[which]);
  Procedure procedure(data, choices, locale, form, result);
  const auto goes = [&] { return !(result.Aborted = result.Aborted || form.Aborted()); };
  if (!goes()) return;
  (procedure.*kRun[which])();
  if (!goes()) return;
  if (!result.Error && choices.WhichModel != SelectionProcedure::AllSubsets)
    procedure.End(std::string(kProcedureNames[which]) + " procedure completed.");
  // After an error, too: they show which variables are alike.
  Correlate(data, procedure.Solver(), form, result);
  if (goes()) Inflate(procedure.Solver(), form, result);
  goes();
}

}  // namespace

std::string CounterStatus(double i, double total, const LocaleText& locale) {
  return LocalizeExpression("Processing: " + GeneralNumber(i) + " of " + GeneralNumber(total), locale);
}

SelectionResult ExecuteSelection(const SelectionData& data, const VarSelect& choices, const LocaleText& locale,
                                 SelectionForm& form) {
  SelectionResult result;
  constexpr int kOutOfMemory = 7, kOther = 5;  // as errors of the program are numbered
  const auto unexpected = [&](int code, const char* text) {
    result.Error = "An unexpected error occurred during the variable selection process - Error " +
                   std::to_string(code) + ": " + text;
  };
  try {
    Search(data, choices, locale, form, result);
  } catch (const std::bad_alloc&) {
    unexpected(kOutOfMemory, "Out of memory");
  } catch (const std::exception& error) {
    unexpected(kOther, error.what());
  }
  if (result.Aborted) {
    result.Error.reset();
    result.Endings = {"Solution process aborted."};
  }
  return result;
}

}  // namespace quorvex
