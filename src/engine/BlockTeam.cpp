#include "engine/BlockTeam.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <utility>

#include "core/NumericFault.h"
#include "core/ParallelRuns.h"
#include "engine/Differentiator.h"
#include "engine/ModelClass.h"

namespace quorvex {
namespace {

// Below, a pass takes less time than its threads need to begin it.
constexpr std::size_t kLeastPoints = 20'000;

// Of what is kept of blocks until it is their turn: half a megabyte.
constexpr std::size_t kMostNumbers = std::size_t{1} << 16;

enum class Progress : std::uint8_t { Open, Computed, Failed };

}  // namespace

std::shared_ptr<ThreadTeam> ThreadsFor(std::size_t points, int threads) {
  if (points < kLeastPoints) return nullptr;
  const auto wanted = static_cast<std::size_t>(ThreadCount(threads));
  return wanted == 1 ? nullptr : std::make_shared<ThreadTeam>(wanted);
}

BlockTeam::BlockTeam(ModelClass& model, std::size_t points, int threads)
    : BlockTeam(model, points, ThreadsFor(points, threads)) {}

BlockTeam::BlockTeam(ModelClass& model, std::size_t points, std::shared_ptr<ThreadTeam> threads)
    : blocks_((points + kBlock - 1) / kBlock), models_{&model} {
  if (!threads || !model.RunsOverBlocks()) return;
  threads_ = std::move(threads);
  while (models_.size() < threads_->Size()) {
    ModelClass& twin = *twins_.emplace_back(model.CopyTo());
    if (model.TakesTypedDerivatives()) Differentiator(twin).UseTyped(true);
    models_.push_back(&twin);
  }
}

BlockTeam::~BlockTeam() = default;

void BlockTeam::ShareCoefficients() {
  for (const auto& twin : twins_) twin->CoefficientValues = Model().CoefficientValues;
}

std::size_t BlockTeam::Slots(std::size_t numbers) const {
  if (!threads_) return 1;
  return std::clamp(kMostNumbers / numbers, std::min(16 * Size(), blocks_), blocks_);
}

std::size_t BlockTeam::Run(std::size_t slots, const std::function<bool()>& goOn,
                           const std::function<bool(std::size_t, std::size_t, std::size_t)>& compute,
                           const std::function<bool(std::size_t, std::size_t)>& take) {
  if (!threads_) {
    for (std::size_t block = 0; block < blocks_; ++block)
      if (!goOn() || !compute(0, block, 0) || !take(block, 0)) return block;
    return blocks_;
  }
  std::vector<std::atomic<Progress>> progress(slots);
  for (std::size_t first = 0; first < blocks_; first += slots) {
    const std::size_t count = std::min(slots, blocks_ - first);
    for (std::size_t i = 0; i < count; ++i) progress[i].store(Progress::Open, std::memory_order_relaxed);
    std::atomic<std::size_t> next = 0;
    std::size_t taken = 0;
    bool ended = false;
    const auto takeComputed = [&] {
      for (; !ended && taken < count; ++taken) {
        const Progress of = progress[taken].load(std::memory_order_acquire);
        if (of == Progress::Open) return;
        ended = of == Progress::Failed || !take(first + taken, taken);
        if (ended) return;
      }
    };
    threads_->Run([&](std::size_t member) {
      for (;;) {
        if (member == 0) {
          takeComputed();
          ended = ended || !goOn();
          if (ended) next = count;
        }
        const std::size_t i = next++;
        if (i >= count) return;
        bool computed = false;
        try {
          computed = compute(member, first + i, i);
        } catch (const NumericFault&) {
        }
        progress[i].store(computed ? Progress::Computed : Progress::Failed, std::memory_order_release);
        // All blocks before this one have begun, and none behind it is of use.
        if (!computed) next = count;
      }
    });
    takeComputed();
    if (taken < count) return first + taken;
  }
  return blocks_;
}

}  // namespace quorvex
