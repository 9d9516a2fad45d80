#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "plot/PlotPage.h"

namespace quorvex {

// What changes a plot, as the labels of Undo and Redo call it.
inline constexpr std::string_view kZoomChange = "Zoom", kFitAllChange = "Fit All", kTurnChange = "Turn",
                                  kMoveLegendChange = "Move Legend", kMoveFootNoteChange = "Move Footnote",
                                  kPropertiesChange = "Properties", kTemplateChange = "Apply Template",
                                  kImportChange = "Import", kAddChange = "Add from Project";

// The states of a plot that its user can go back to, and forward again. A state is a copy of the plot, which shares the
// data of its series with all others.
class PlotUndo {
 public:
  explicit PlotUndo(const PlotPage& plot) : present_{plot.Clone(), {}} {}

  // Remembers the state before the change that has just been made to the plot, and forgets the changes that were taken
  // back. Turns that follow each other are one change. Beyond `limit` states the oldest go.
  void Record(const PlotPage& plot, std::string_view what, std::size_t limit);

  // Takes the newest change back, or makes it again. The state that the plot then is in; null where there is none.
  const PlotPage* Undo() { return Step(before_, after_); }
  const PlotPage* Redo() { return Step(after_, before_); }

  bool CanUndo() const { return !before_.empty(); }
  bool CanRedo() const { return !after_.empty(); }
  // For the menu, such as "&Undo Zoom".
  std::string UndoText() const;
  std::string RedoText() const;

  // Whether the present state is another than that when the plot was last saved, or than the first.
  bool Changed() const { return present_.Number != saved_; }
  void Saved();
  // No state is saved: the plot was changed before it came here.
  void NeverSaved() { saved_.reset(); }

 private:
  struct State {
    std::unique_ptr<PlotPage> Plot;
    std::string What;  // the change between this state and the next one towards the present
    std::size_t Number = 0;
  };

  // Makes the last state of `from` the present one, and the present one the last of `to`.
  const PlotPage* Step(std::deque<State>& from, std::deque<State>& to);

  State present_;
  std::deque<State> before_;  // the oldest first
  std::deque<State> after_;   // the one next to the present last
  std::size_t numbers_ = 0;   // given so far
  std::optional<std::size_t> saved_ = 0;
  bool turning_ = false;  // a further turn belongs to the newest change
};

}  // namespace quorvex
