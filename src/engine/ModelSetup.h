#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace quorvex {

// Where a coefficient starts: one value (Min = Max, one step) or a range that is searched in steps.
struct ICRange {
  double Min = 1, Max = 1;
  std::int32_t Steps = 1;

  bool operator==(const ICRange&) const = default;
};

// A coefficient of a model, less its value.
struct Coefficient {
  std::string Name;
  int Constant = 1;  // non-zero: adjusted by the fit
  std::string Rule = "Value";
  std::string RuleConstant = "1";  // a number as the user wrote it
  std::string Derivative = "Numerical";
  double Minimum = -HUGE_VAL, Maximum = HUGE_VAL;  // the fit stays between, both included

  bool IsBounded() const { return Minimum > -HUGE_VAL || Maximum < HUGE_VAL; }
  // Not adjusted by the fit: the user holds it, or its bounds leave it one value.
  bool IsHeld() const { return Constant == 0 || Minimum == Maximum; }
};

// Why a coefficient has no place between its bounds, a sentence; empty where it has.
std::string BoundsFault(const Coefficient& coefficient);

// A quantity of the coefficients that is wanted with its standard error: an expression of their names.
struct DerivedQuantity {
  std::string Name, Expression;

  bool operator==(const DerivedQuantity&) const = default;
};

// What a model is to its user, and how it is to be solved. A model's text stands elsewhere: this belongs to one text,
// and a copy of it to a model of the same text.
struct ModelSetup {
  std::string cfgID;  // the ID given in a macro; when not empty, the name shown
  std::string Description;
  std::string Group;               // of the catalogue
  int SolveType = 0;               // 0 nonlinear, 1 linear
  bool UserType = false;           // a user-defined model
  bool SpecifyIC = false;          // the user wants to give initial estimates before solving
  bool SpecifyICComplete = false;  // the present values are the initial estimates
  bool ForceRuleEstimate = false;  // a built-in model takes its estimates from its rules
  bool Solve = false;              // selected for the next solve

  std::vector<Coefficient> Coefficients;
  std::vector<ICRange> ICRanges;  // one per coefficient
  std::vector<DerivedQuantity> Reports;
};

}  // namespace quorvex
