#include "project/clsUndo.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace quorvex {

bool clsUndo::PushEvent(const UndoLabel& label, const CellRange& range, const ModelCollection& regressionList,
                        const std::vector<InterpClass>& interpolationList, std::size_t limit) {
  if (!enabled_) return false;
  try {
    clsUndoItem item(label);
    item.Copy(*grid_, range, regressionList, interpolationList);
    // Only when it is whole: where memory ends in the middle of a copy, the list is as it was.
    EventList_.push_back(std::move(item));
  } catch (const std::exception&) {  // no memory for the copy
    return false;
  }
  RedoList_.clear();
  while (EventList_.size() > limit) EventList_.pop_front();
  return true;
}

UndoOutcome clsUndo::Restore(Snapshots& from, Snapshots& opposite, ModelCollection& regressionList,
                             std::vector<InterpClass>& interpolationList) {
  UndoOutcome outcome;
  if (from.empty()) return outcome;
  const clsUndoItem& item = from.back();
  try {
    opposite.push_back(item.Opposite(*grid_, regressionList, interpolationList));
    if (item.Extent() == UndoExtent::Formats) item.RecoverFormat(*grid_);
    if (item.HasHeaders()) item.RecoverHeaders(*grid_);
    if (item.HasPatterns()) item.RecoverPatterns(*grid_);
    if (item.HasData()) {
      item.RecoverModels(*grid_, locale_, regressionList);
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
  from.pop_back();
  TellNext(outcome);
  return outcome;
}

UndoOutcome clsUndo::ClearEvent() {
  UndoOutcome outcome;
  if (EventList_.empty()) return outcome;
  EventList_.pop_back();
  TellNext(outcome);
  return outcome;
}

bool clsUndo::ListUndoEvents(std::vector<std::string>& labels) const {
  labels.clear();
  for (const clsUndoItem& item : EventList_) labels.push_back(item.EventString);
  return enabled_;
}

std::vector<std::string> clsUndo::ListRedoEvents() const {
  std::vector<std::string> labels;
  for (const clsUndoItem& item : RedoList_) labels.push_back("&Redo" + item.EventString.substr(kUndoVerb.size()));
  return labels;
}

void clsUndo::TellNext(UndoOutcome& outcome) const {
  outcome.Ok = true;
  outcome.MoreLeft = !EventList_.empty();
  if (outcome.MoreLeft) outcome.NextLabel = EventList_.back().EventString;
}

}  // namespace quorvex
