#pragma once

#include <string>
#include <vector>

#include "core/Prompter.h"
#include "solve/SolvedList.h"

namespace quorvex {

enum class ClearOption { Selected, BeyondCutoff, NonLinear, Linear, All };

// The choice of solutions to clear.
class FitClearing {
 public:
  // The solved list as it is sorted, and what of it is selected.
  FitClearing(std::vector<SolvedItem> list, std::vector<SolvedItem> selected, int sortIndex, char decimalSeparator);

  std::string CutoffCaption() const;  // "Clear Fits with RSS >", "Clear Fits with R^2 <", ...
  // The ends of the list by the key: their names, and their values, empty where no model is solved.
  std::string BestLabel() const;
  std::string WorstLabel() const;
  std::string BestValue() const;
  std::string WorstValue() const;
  bool AnySelected() const { return !selected_.empty(); }

  ClearOption Option = ClearOption::Selected;
  std::string Cutoff;  // as typed

  // Whether the choice can be carried out; refused where the cutoff is no number.
  bool Accept(Prompter& user) const;

  // What the choice clears. Keys are compared with the cutoff by their magnitude; an interpolation has none, and is
  // neither linear nor nonlinear.
  std::vector<SolvedItem> Chosen() const;

 private:
  bool IsChosen(const SolvedItem& solution) const;
  std::string ValueAt(bool best) const;

  std::vector<SolvedItem> list_, selected_;
  int sortIndex_;
  char decimalSeparator_;
};

}  // namespace quorvex
