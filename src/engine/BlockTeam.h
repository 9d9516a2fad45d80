#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "core/Limits.h"
#include "core/ThreadTeam.h"

namespace quorvex {

class ModelClass;

// Threads for passes over so many points, counted as in Settings::Threads; null where one does as well.
std::shared_ptr<ThreadTeam> ThreadsFor(std::size_t points, int threads);

// A model that is computed over many points, block by block, by several threads, each of which has a model of its own:
// the first is the model itself, the others are twins of it. What is made of the blocks is taken in their order, so
// that the outcome is the same, to the bit, for any number of threads.
class BlockTeam {
 public:
  // Of `threads` as Settings::Threads counts them; of one where the points are few, and for a model that has to be
  // computed point by point. The model has its start by then: statistics, setup and typed derivatives go into the
  // twins.
  BlockTeam(ModelClass& model, std::size_t points, int threads);
  // Of these threads, or with null of the calling one.
  BlockTeam(ModelClass& model, std::size_t points, std::shared_ptr<ThreadTeam> threads);
  ~BlockTeam();
  BlockTeam(const BlockTeam&) = delete;
  BlockTeam& operator=(const BlockTeam&) = delete;

  std::size_t Size() const { return models_.size(); }
  ModelClass& Model(std::size_t member = 0) const { return *models_[member]; }
  // Gives the twins the coefficients of the model.
  void ShareCoefficients();

  // Computes as many blocks of the points as `take` takes. `compute(member, block, slot)` may run on any thread, for
  // blocks in any order, and leaves what it finds in a slot of its own, of which there are as many as Slots tells.
  // `take(block, slot)` runs on the calling thread, in the order of the blocks. Before each block that it computes the
  // calling thread asks whether to go on. All three return false to end it. Returns how many blocks were taken.
  //
  // A NumericFault of `compute` counts as false where there are several threads.
  std::size_t Run(std::size_t slots, const std::function<bool()>& goOn,
                  const std::function<bool(std::size_t member, std::size_t block, std::size_t slot)>& compute,
                  const std::function<bool(std::size_t block, std::size_t slot)>& take);
  // Room for so many numbers of each block.
  std::size_t Slots(std::size_t numbers) const;

 private:
  std::size_t blocks_;
  std::vector<std::unique_ptr<ModelClass>> twins_;
  std::vector<ModelClass*> models_;
  std::shared_ptr<ThreadTeam> threads_;  // null for one
};

}  // namespace quorvex
