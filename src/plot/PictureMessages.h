#pragma once

#include <string>

#include "core/Prompter.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Whether there is a plot to be `done` to, as in "saved" or "printed"; refused where its settings are in error.
inline bool CanBe(const char* done, const PlotPage& plot, Prompter& user) {
  if (!plot.PlotCreated)
    user.Refuse("An error in the current plot settings prohibits the plot from being " + std::string(done) +
                " in it's current state. Check the plot settings in the Graph Properties window.");
  return plot.PlotCreated;
}

enum class PictureKind { Bitmap, Pdf };

// What became of a picture that was to be written.
inline void TellPicture(PictureKind kind, const std::string& file, bool written, Prompter& user) {
  const bool pdf = kind == PictureKind::Pdf;
  if (written)
    return user.Inform("The file '" + file + (pdf ? "' contains the PDF document." : "' contains the Bitmap."));
  user.Refuse(pdf ? "An error occurred saving the PDF document to file."
                  : "An error occurred saving the bitmap to file.");
}

}  // namespace quorvex
