#include "plot/PictureMessages.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr PictureFormat kFormats[] = {
    {PictureKind::Bitmap, ".bmp", "Bitmap files (*.bmp)", "Bitmap", "An error occurred saving the bitmap to file."},
    {PictureKind::Metafile, ".emf", "Enhanced MetaFile (*.emf)", "Enhanced Metafile",
     "An error occurred saving the Metafile to disk."},
    {PictureKind::Svg, ".svg", "SVG files (*.svg)", "SVG picture", "An error occurred saving the SVG picture to file."},
    {PictureKind::Pdf, ".pdf", "PDF documents (*.pdf)", "PDF document",
     "An error occurred saving the PDF document to file."},
    {PictureKind::Png, ".png", "PNG files (*.png)", "PNG picture", "An error occurred saving the PNG picture to file."},
};

}  // namespace

bool CanBe(const char* done, const PlotPage& plot, Prompter& user) {
  if (!plot.PlotCreated)
    user.Refuse(std::string("An error in the current plot settings prohibits the plot from being ") + done +
                " in it's current state. Check the plot settings in the Graph Properties window.");
  return plot.PlotCreated;
}

std::span<const PictureFormat> PictureFormats() { return kFormats; }

std::string PictureFilters() {
  std::string filters;
  for (const PictureFormat& format : kFormats) filters += (filters.empty() ? "" : ";;") + std::string(format.Filter);
  return filters;
}

const PictureFormat* PictureFormatOf(std::string_view fileName) {
  const std::string lower = ToLower(fileName);
  const auto* const known = std::ranges::find_if(
      kFormats, [&](const PictureFormat& format) { return std::string_view(lower).ends_with(format.Ending); });
  return known == std::end(kFormats) ? nullptr : known;
}

std::string UnknownPicture(const std::string& fileName) {
  std::string endings;
  for (const PictureFormat& format : kFormats)
    endings += (&format == kFormats                 ? ""
                : &format == std::end(kFormats) - 1 ? " or "
                                                    : ", ") +
               std::string(format.Ending);
  return "The plot cannot be saved as '" + fileName + "', for the name of a picture ends in " + endings + '.';
}

std::string PlotEnding(std::string_view fileName) {
  if (const PictureFormat* const picture = PictureFormatOf(fileName)) return picture->Ending;
  return ToLower(fileName).ends_with(kPlotFileEnding) ? std::string(kPlotFileEnding) : "";
}

std::string UnknownEndingText(const std::string& fileName) {
  std::string endings;
  for (const PictureFormat& picture : kFormats) endings.append(picture.Ending).append(", ");
  return "The plot '" + fileName + "' is not written: its name ends in none of " + endings.append(kPlotFileEnding) +
         ".";
}

void TellPicture(const PictureFormat& format, const std::string& file, std::optional<int> error, Prompter& user) {
  if (error == 0)
    user.Inform("The file '" + file + "' contains the " + format.Content + '.');
  else
    user.Refuse(format.Failure + (error ? " The file '" + file + "' cannot be written. " + FileErrorText(*error) : ""));
}

}  // namespace quorvex
