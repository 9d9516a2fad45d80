#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "core/SolveData.h"
#include "engine/ModelClass.h"

namespace quorvex {

// The derivatives of a user's model by its coefficients, as the user typed them: each an expression in the parent's
// variables and some of its coefficients, which take the parent's values.
class TypedDerivatives {
 public:
  // Those of `parent`. Null unless every coefficient has a derivative text that compiles.
  static std::unique_ptr<TypedDerivatives> Compile(const ModelClass& parent);

  // Gives them the statistics of the input, which the parent has.
  void TakeStatistics(const ModelClass& parent);

  // Whether all can be computed over blocks.
  bool RunOverBlocks() const;

  // All derivatives at x, and over a block of points, as in ModelClass: times the coefficient's Constant, false where
  // one has no value.
  bool AtPoint(const ModelClass& parent, std::span<const double> x, std::span<double> dyda);
  bool OverBlock(const ModelClass& parent, const SolveData& data, std::size_t first, std::size_t n,
                 double* const* dyda);

 private:
  struct TypedDerivative {
    std::unique_ptr<ModelClass> Model;
    std::vector<int> Parent;  // for each of its coefficients the number of the parent's (from 1; 0: none)

    void TakeValues(const ModelClass& parent);
  };

  std::vector<TypedDerivative> derivatives_;  // one per coefficient of the parent
};

// As long as it lives, a model of the user's own that has typed derivatives is differentiated by them, as in its fit.
class TypedDerivativesInUse {
 public:
  explicit TypedDerivativesInUse(ModelClass& model);
  ~TypedDerivativesInUse();
  TypedDerivativesInUse(const TypedDerivativesInUse&) = delete;
  TypedDerivativesInUse& operator=(const TypedDerivativesInUse&) = delete;

 private:
  ModelClass& model_;
};

}  // namespace quorvex
