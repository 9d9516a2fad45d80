#pragma once

#include <memory>
#include <utility>

#include "equation/BlockProgram.h"
#include "equation/Evaluator.h"
#include "equation/Expression.h"

namespace quorvex {

// A model's text made ready to compute with, at single points and over blocks of them.
class CompiledModel {
 public:
  explicit CompiledModel(Expression expression) : Instructions(std::move(expression)) {}

  const Expression Instructions;
  Evaluator AtPoints;

  // Made when the first block is asked for.
  BlockProgram& OverBlocks() {
    if (!overBlocks_) overBlocks_ = std::make_unique<BlockProgram>(Instructions);
    return *overBlocks_;
  }

 private:
  std::unique_ptr<BlockProgram> overBlocks_;
};

}  // namespace quorvex
