#pragma once

#include <string>
#include <utility>
#include <vector>

#include "equation/Catalogue.h"

namespace quorvex {

// What the makers of the catalogues share.

// The models of one independent variable, of two, and of `n` from 3 to 20, in the order of display.
std::vector<CatalogueModel> OneVariableModels();
std::vector<CatalogueModel> TwoVariableModels();
std::vector<CatalogueModel> ManyVariableModels(int n);

// The letter of coefficient `index`, from 0.
inline char CoefficientLetter(int index) { return static_cast<char>('a' + index); }

// "*x1", "*ln(x1)^2", "/x1^3": coefficient and term, as formulas write a whole power of a quantity. `variable` is the
// variable's name in formulas.
std::string PowerText(XFunction of, int power, const std::string& variable);

// Makes `model` the nested sum of one constant, coefficient number `constantAt`, and of runs: basis, runs and count.
void MakeNested(CatalogueModel& model, int constantAt, std::vector<NestedRun> runs);

}  // namespace quorvex
