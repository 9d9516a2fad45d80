#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "sheet/SheetEdit.h"

namespace quorvex {

// The Smooth command: puts a smooth of Y on X in the place of Y, once the user has seen it. The sheet outlives it.
class SmoothCommand {
 public:
  explicit SmoothCommand(const SheetEdit& edit) : edit_(edit) {}

  // The smoothing window that is tried first, in percent of the points.
  static constexpr const char* kDefaultPercent = "10";

  // Takes the points of the sheet, which has one independent variable, four complete rows and no others; those go if
  // the user wants that. False, and the user is told, where there is nothing to smooth.
  bool Begin();

  // The points in ascending order of X; equal X keep the order of the sheet.
  const std::vector<double>& X() const { return x_; }
  const std::vector<double>& Y() const { return y_; }
  // Y as it was smoothed last, as many as points, or none.
  const std::vector<double>& SmoothY() const { return smooth_; }

  // Smooths with the window typed in percent, which becomes the default where it is no number. False, and what was
  // smoothed before stays, where it is refused, fails or is cancelled.
  bool Apply(std::string& percent);

  // Stores the smooth of that window in the rows that the points came from. False, and nothing stored, where there is
  // none to be had.
  bool Finish(std::string& percent);

  // Whether the sheet has changed since the command began.
  bool Changed() const { return changed_; }

 private:
  std::size_t CompleteRows() const;
  bool TakePoints();

  const SheetEdit& edit_;
  std::vector<double> x_, y_, smooth_;
  std::vector<std::size_t> rows_;  // of the sheet, from 1, one for each point
  std::optional<double> applied_;  // the percentage of smooth_
  bool changed_ = false;
};

}  // namespace quorvex
