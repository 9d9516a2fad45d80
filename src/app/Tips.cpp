#include "app/Tips.h"

namespace quorvex {

std::span<const std::string_view> Tips() {
  static constexpr std::string_view kTips[] = {
      "Drop a text file of measurements on the window: Quorvex finds its delimiter and takes a first line of words as "
      "the names of the columns.",
      "The Help menu holds examples with published measurements. They have no file, so you can change them freely.",
      "Every change to the sheet can be taken back by Ctrl+Z, as many times as the preferences allow.",
      "The standard deviation of Y is a column of its own: points that are known well pull the curve more.",
      "A column of standard deviations is optional, and an empty cell in it counts as 1.",
      "A row with an X but no Y is left out of a solve. The preferences decide whether you are warned.",
      "Ctrl+F6 goes from one project to the next; the Window menu tiles them side by side.",
      "The notes of a project are saved with it. Write down where the measurements come from.",
      "An empty measurement is no zero: leave the cell empty, or name its marker when you import.",
      "The macro editor writes a fit as a text file that quorvex -runcfg runs without a window, on a server too.",
      "Saving keeps the file that was there before beside the new one, under its name with ~ behind it.",
      "Ranking models by the adjusted R^2 instead of RSS keeps more coefficients from winning by number alone.",
      "Residuals that show a pattern say that the model is wrong, however small they are.",
      "A date may be typed as year-month-day or as you write it; it is stored as a number of days, so it can be "
      "fitted.",
      "Exact derivatives are quicker than central differences and more accurate than Richardson's extrapolation. The "
      "preferences choose.",
      "F1 opens the page of the manual for the window in front.",
  };
  return kTips;
}

}  // namespace quorvex
