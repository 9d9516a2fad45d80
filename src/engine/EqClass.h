#pragma once

#include "engine/ModelClass.h"

namespace quorvex {

// A model with one independent variable, x.
class EqClass final : public ModelClass {
 public:
  explicit EqClass(const LocaleText& locale);

  std::string EvaluationFailure(std::span<const double> x) const override;
  std::string DerivativeFailure(std::span<const double> x) const override;
  std::unique_ptr<ModelClass> NewModel() const override;

 protected:
  std::optional<double> RuleQuantity(std::string_view rule, const SolveData& data) const override;
  InputPoints InputTable(const SolveData& data, const LookAround& look) const override;
  const CatalogueModel* LookupBuiltInModel(std::string_view sID) const override;
};

}  // namespace quorvex
