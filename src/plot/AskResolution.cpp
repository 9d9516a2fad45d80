#include "plot/AskResolution.h"

#include "core/NumberText.h"

namespace quorvex {

std::optional<PictureSize> AskResolution(const PictureSize& screen, Settings& settings, const LocaleText& locale,
                                         Prompter& user) {
  constexpr const char* kKey = "pngresolution";
  constexpr double kLeast = 72, kMost = 1200;
  const double last = settings.Number(kKey);
  const std::string initial = LocalizeExpression(GeneralNumber(last != 0 ? last : screen.PixelsPerInch), locale);
  const auto typed = user.AskText("Resolution of the picture, 72 to 1200 dots per inch:", initial);
  if (!typed) return std::nullopt;
  const std::optional<double> resolution = NumericText(Trim(*typed), locale.DecimalSeparator);
  if (!resolution || *resolution < kLeast || *resolution > kMost) {
    user.Refuse("Please enter a resolution from 72 to 1200 dots per inch.");
    return std::nullopt;
  }
  settings.SetNumber(kKey, *resolution);
  return screen.At(*resolution);
}

}  // namespace quorvex
