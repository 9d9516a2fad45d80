#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/ModelClass.h"

namespace quorvex {

// A derived quantity made ready to compute: an expression of the equation language in the names of a model's
// coefficients. It may have constants and functions, and the words that stand for statistics of the data, but no X. It
// keeps nothing of the model; each thread has its own.
class QuantityProgram {
 public:
  QuantityProgram(const DerivedQuantity& quantity, const ModelClass& model);

  // Why it can't be computed, one sentence; empty where it can.
  const std::string& Fault() const { return fault_; }

  // The quantity for these coefficients, one per coefficient of the model. Nothing where it has no value, or a fault.
  std::optional<double> Value(std::span<const double> coefficients);
  // Its derivatives with respect to the coefficients of these numbers, from 1, to some ten digits (Ridders, see
  // engine/Ridders.h). Nothing where one has no value.
  std::optional<std::vector<double>> Gradient(std::span<const double> coefficients, const std::vector<int>& numbers);

 private:
  void Put(std::span<const double> coefficients);

  std::string fault_;
  std::unique_ptr<ModelClass> expression_;  // with some of the model's coefficients as its own
  std::vector<std::size_t> coefficients_;   // which, from 0
  std::vector<double> x_;                   // of no account
};

// What is wrong with the reports of a model, one sentence each in the order of the reports, empty where nothing is: an
// expression that can't be read or names what is no coefficient, a name that is missing, that of a coefficient, or of
// an earlier report.
std::vector<std::string> ReportFaults(const ModelClass& model);

// The quantity's value for these coefficients of the model.
std::optional<double> Evaluate(const DerivedQuantity& quantity, const ModelClass& model,
                               std::span<const double> coefficients);

}  // namespace quorvex
