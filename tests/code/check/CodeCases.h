#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/ModelClass.h"

namespace quorvex {

// A model with coefficients, and the points where its code is to give its value.
struct CodeCase {
  std::string Name;  // of its function and its file
  std::unique_ptr<ModelClass> Model;
  std::vector<std::vector<double>> X;
  std::vector<double> Y;
  double Limit = 0;  // of the relative difference: how accurate the program itself is
};

// All models of the catalogue of one variable, every function of the language, and what is hard in the rest of it:
// signs, powers, rounding, truths as numbers, branches, supporting functions, data words, names. Up to 20 points each.
std::vector<CodeCase> CodeCases();

// What could break a file: titles of any text, functions and coefficients that are called like words of a language,
// numbers at the ends of their range. One point each, the proof; the files are run as their reader would run them.
std::vector<CodeCase> ProofCases();

}  // namespace quorvex
