#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "project/clsUndoItem.h"

namespace quorvex {

inline constexpr const char* kCannotUndo = "Can't &Undo";

// What taking back an operation did.
struct UndoOutcome {
  bool Ok = false;
  bool MoreLeft = false;
  std::string NextLabel = kCannotUndo;  // of the newest snapshot that is left
  bool DataRestored = false;            // cells were put back
  bool RegressionChanged = false, InterpolationChanged = false;
  std::size_t LostModels = 0;  // user-defined models that have another definition now
};

// The undo stack of one project window: snapshots of what each operation could destroy, the newest last. What a
// snapshot holds follows from its operation (sheet/UndoLabel.h), so that a typed cell costs one cell and only
// operations on the whole sheet cost a sheet.
class clsUndo {
 public:
  // The sheet that is watched; it outlives the stack.
  void Init(DataSheet& grid) {
    grid_ = &grid;
    enabled_ = true;
  }

  bool Enabled() const { return enabled_; }
  void Disable() {
    Reset();
    enabled_ = false;
  }

  // Remembers what the operation of that label is about to change: the cells of `range` where the label stands for a
  // range, and the solved models and interpolations where asked for. Beyond `limit` snapshots the oldest go. False, and
  // nothing remembered, where memory ran out.
  bool PushEvent(const UndoLabel& label, const CellRange& range, const ModelCollection& regressionList,
                 const std::vector<InterpClass>& interpolationList, bool saveRegression, bool saveInterpolation,
                 std::size_t limit);

  // Restores the newest snapshot and removes it. Not Ok where there is none or memory ran out.
  UndoOutcome PopEvent(ModelCollection& regressionList, std::vector<InterpClass>& interpolationList);

  void Reset() { EventList_.clear(); }

  // Removes the newest snapshot without restoring it, for an operation that was called off.
  UndoOutcome ClearEvent();

  // All labels, oldest first. False where the stack is disabled.
  bool ListUndoEvents(std::vector<std::string>& labels) const;

 private:
  void RemoveNewest(UndoOutcome& outcome);

  std::deque<clsUndoItem> EventList_;
  DataSheet* grid_ = nullptr;
  bool enabled_ = false;
};

}  // namespace quorvex
