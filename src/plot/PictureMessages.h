#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/Prompter.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Whether there is a plot to be `done` to, as in "saved" or "printed"; refused where its settings are in error.
bool CanBe(const char* done, const PlotPage& plot, Prompter& user);

inline constexpr std::string_view kPlotFileEnding = ".plt";

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

// The ending of a plot's file name, be it of a plot file or a picture, in lower case; empty where it is of neither.
std::string PlotEnding(std::string_view fileName);

// What is said of such a name.
std::string UnknownEndingText(const std::string& fileName);

// What became of a picture that was to be written, by the number of the file error, 0 for none. There is no number
// where the picture itself could not be made.
void TellPicture(const PictureFormat& format, const std::string& file, std::optional<int> error, Prompter& user);

}  // namespace quorvex
