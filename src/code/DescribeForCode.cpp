#include <algorithm>
#include <cstddef>

#include "code/CodeModel.h"
#include "core/NumberText.h"
#include "core/Version.h"
#include "engine/ModelClass.h"

namespace quorvex {
namespace {

// Outwards from the middle, so that the value is one that the data speak of.
std::optional<CodeProof> FindProof(ModelClass& model) {
  const std::size_t n = model.NumInputX();
  for (std::size_t step = 0; step < n; ++step) {
    const std::size_t offset = (step + 1) / 2;
    const std::size_t i = 1 + n / 2 + (step % 2 == 1 ? offset : 0) - (step % 2 == 0 ? offset : 0);
    if (i < 1 || i > n) continue;
    CodeProof proof;
    for (int v = 1; v <= std::max(1, model.NumIndependentVar()); ++v) proof.X.push_back(model.InputX(i, v));
    if (model.Evaluate(proof.X, proof.Y)) return proof;
  }
  return std::nullopt;
}

}  // namespace

CodeModel DescribeForCode(ModelClass& model) {
  CodeModel code{.Title = model.cfgID.empty() ? model.id : model.cfgID,
                 .Definition = model.GenerateTextInfix(1, 0),
                 .Remarks = {std::string("Written by Quorvex ") + kVersion + "."},
                 .Compiled = model.Compiled(),
                 .Values = model.CoefficientValues,
                 .Statistics = model.Statistics,
                 .Variables = std::max(1, model.NumIndependentVar()),
                 .Proof = FindProof(model)};
  if (model.Solved) {
    code.Remarks.push_back("R2 = " + GeneralNumber(model.R2) + ", adjusted R2 = " + GeneralNumber(model.R2Adjust) +
                           ", standard error = " + GeneralNumber(model.StdErr));
  }
  return code;
}

}  // namespace quorvex
