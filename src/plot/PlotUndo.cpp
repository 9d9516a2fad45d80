#include "plot/PlotUndo.h"

#include <utility>

namespace quorvex {

void PlotUndo::Record(const PlotPage& plot, std::string_view what, std::size_t limit) {
  const bool goesOn = turning_ && what == kTurnChange && !before_.empty();
  State changed{plot.Clone(), {}, ++numbers_};
  if (!goesOn) {
    present_.What = what;
    before_.push_back(std::move(present_));
  }
  present_ = std::move(changed);
  after_.clear();
  while (before_.size() > limit) before_.pop_front();
  turning_ = what == kTurnChange;
}

const PlotPage* PlotUndo::Step(std::deque<State>& from, std::deque<State>& to) {
  if (from.empty()) return nullptr;
  turning_ = false;
  State next = std::move(from.back());
  from.pop_back();
  present_.What = std::move(next.What);
  to.push_back(std::exchange(present_, std::move(next)));
  return present_.Plot.get();
}

std::string PlotUndo::UndoText() const { return CanUndo() ? "&Undo " + before_.back().What : "Can't &Undo"; }
std::string PlotUndo::RedoText() const { return CanRedo() ? "&Redo " + after_.back().What : "Can't &Redo"; }

void PlotUndo::Saved() {
  saved_ = present_.Number;
  turning_ = false;  // the state that was saved can be come back to
}

}  // namespace quorvex
