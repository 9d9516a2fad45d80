#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/Prompter.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Whether there is a plot to be `done` to, as in "saved" or "printed"; refused where its settings are in error.
bool CanBe(const char* done, const PlotPage& plot, Prompter& user);

enum class PictureKind { Bitmap, Metafile, Svg, Pdf, Png };

// A kind of picture that plots are saved as.
struct PictureFormat {
  PictureKind Kind;
  const char* Ending;   // of its files' names
  const char* Filter;   // in file dialogs
  const char* Content;  // what such a file is said to contain
  const char* Failure;  // what is said where it could not be written
};

// All of them, as file dialogs offer them.
std::span<const PictureFormat> PictureFormats();
std::string PictureFilters();

// By the ending of a file's name, whatever its case; none where it is of no picture.
const PictureFormat* PictureFormatOf(std::string_view fileName);

// What is said of a name whose ending is that of no picture.
std::string UnknownPicture(const std::string& fileName);

// What became of a picture that was to be written.
void TellPicture(const PictureFormat& format, const std::string& file, bool written, Prompter& user);

}  // namespace quorvex
