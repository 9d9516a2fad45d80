#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "project/clsUndoItem.h"

namespace quorvex {

inline constexpr const char* kCannotUndo = "Can't &Undo";
inline constexpr const char* kCannotRedo = "Can't &Redo";

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
  // The sheet that is watched, which outlives the stack, and the locale that its models are written in.
  void Init(DataSheet& grid, const LocaleText& locale) {
    grid_ = &grid;
    locale_ = locale;
    enabled_ = true;
  }

  bool Enabled() const { return enabled_; }
  void Disable() {
    Reset();
    enabled_ = false;
  }

  // Remembers what the operation of that label is about to change: the cells of `range` where the label stands for a
  // range, and the solved models and interpolations. Beyond `limit` snapshots the oldest go, and with them all that was
  // taken back before. False, and nothing remembered, where memory ran out.
  bool PushEvent(const UndoLabel& label, const CellRange& range, const ModelCollection& regressionList,
                 const std::vector<InterpClass>& interpolationList, std::size_t limit);

  // Restores the newest snapshot and removes it. Not Ok where there is none or memory ran out.
  UndoOutcome PopEvent(ModelCollection& regressionList, std::vector<InterpClass>& interpolationList) {
    return Restore(EventList_, RedoList_, regressionList, interpolationList);
  }
  // Makes the operation again that was taken back last. Not Ok where there is none or memory ran out.
  UndoOutcome RedoEvent(ModelCollection& regressionList, std::vector<InterpClass>& interpolationList) {
    return Restore(RedoList_, EventList_, regressionList, interpolationList);
  }

  void Reset() {
    EventList_.clear();
    RedoList_.clear();
  }

  // Removes the newest snapshot without restoring it, for an operation that was called off.
  UndoOutcome ClearEvent();

  // All labels, oldest first. False where the stack is disabled.
  bool ListUndoEvents(std::vector<std::string>& labels) const;
  // The labels of what can be made again, such as "&Redo Sort", the next one last.
  std::vector<std::string> ListRedoEvents() const;

 private:
  using Snapshots = std::deque<clsUndoItem>;

  UndoOutcome Restore(Snapshots& from, Snapshots& opposite, ModelCollection& regressionList,
                      std::vector<InterpClass>& interpolationList);
  void TellNext(UndoOutcome& outcome) const;

  Snapshots EventList_;  // the newest last
  Snapshots RedoList_;   // of what was taken back, the last last
  DataSheet* grid_ = nullptr;
  LocaleText locale_;
  bool enabled_ = false;
};

}  // namespace quorvex
