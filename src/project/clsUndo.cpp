#include "project/clsUndo.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace quorvex {

bool clsUndo::PushEvent(const UndoLabel& label, const CellRange& range, const ModelCollection& regressionList,
                        const std::vector<InterpClass>& interpolationList, bool saveRegression, bool saveInterpolation,
                        std::size_t limit) {
  if (!enabled_) return false;
  try {
    clsUndoItem item(label);
    const UndoExtent extent = item.Extent();
    if (extent == UndoExtent::Formats) {
      item.CopyFormat(*grid_);
    } else if (extent == UndoExtent::Headers) {
      item.CopyHeaders(*grid_);
    } else {
      if (extent == UndoExtent::HeadersAndCells || extent == UndoExtent::Import) item.CopyHeaders(*grid_);
      item.CopyData(*grid_, range);
      if (saveRegression) item.CopyRegression(regressionList);
      if (saveInterpolation) item.CopyInterpolation(interpolationList);
    }
    // Only when it is whole: where memory ends in the middle of a copy, the list is as it was.
    EventList_.push_back(std::move(item));
  } catch (const std::exception&) {  // no memory for the copy
    return false;
  }
  while (EventList_.size() > limit) EventList_.pop_front();
  return true;
}

UndoOutcome clsUndo::PopEvent(ModelCollection& regressionList, std::vector<InterpClass>& interpolationList) {
  UndoOutcome outcome;
  if (EventList_.empty()) return outcome;
  const clsUndoItem& item = EventList_.back();
  try {
    if (item.Extent() == UndoExtent::Formats) {
      item.RecoverFormat(*grid_);
    } else if (item.Extent() == UndoExtent::Headers) {
      item.RecoverHeaders(*grid_);
    } else {
      if (item.Extent() == UndoExtent::HeadersAndCells || item.Extent() == UndoExtent::Import)
        item.RecoverHeaders(*grid_);
      item.RecoverData(*grid_);
      outcome.DataRestored = item.Extent() != UndoExtent::Models;
      // An empty list is put back too: before the first solve nothing was solved.
      outcome.RegressionChanged =
          item.RegressionCount() != 0 ||
          std::any_of(regressionList.begin(), regressionList.end(), [](const auto& m) { return m->Solved; });
      outcome.InterpolationChanged =
          item.InterpolationCount() != 0 ||
          std::any_of(interpolationList.begin(), interpolationList.end(), [](const auto& i) { return i.Solved; });
      outcome.LostModels = item.RecoverRegression(regressionList);
      item.RecoverInterpolation(interpolationList);
    }
  } catch (const std::exception&) {
    return outcome;
  }
  RemoveNewest(outcome);
  return outcome;
}

UndoOutcome clsUndo::ClearEvent() {
  UndoOutcome outcome;
  if (!EventList_.empty()) RemoveNewest(outcome);
  return outcome;
}

bool clsUndo::ListUndoEvents(std::vector<std::string>& labels) const {
  labels.clear();
  for (const clsUndoItem& item : EventList_) labels.push_back(item.EventString);
  return enabled_;
}

void clsUndo::RemoveNewest(UndoOutcome& outcome) {
  EventList_.pop_back();
  outcome.Ok = true;
  outcome.MoreLeft = !EventList_.empty();
  if (outcome.MoreLeft) outcome.NextLabel = EventList_.back().EventString;
}

}  // namespace quorvex
