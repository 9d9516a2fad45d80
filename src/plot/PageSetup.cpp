#include "plot/PageSetup.h"

#include "core/NumberText.h"

namespace quorvex {

PageSetup PageSetup::Read(const Settings& settings) {
  const auto margin = [&](const char* key) { return settings.Number(key, "printsetup"); };
  return {margin("mleft"),
          margin("mtop"),
          margin("mright"),
          margin("mbottom"),
          settings.Text("munits", "printsetup"),
          settings.Flag("printbackground", "printsetup")};
}

DeviceRect ConvertMargins(const PageSetup& page, const DrawingSurface& printer) {
  const double unit = page.Units == "mm" ? 1 : page.Units == "cm" ? 10 : 25.4;  // millimetres
  const auto pixels = [&](DeviceCap sheet, DeviceCap millimetres) {
    return unit * printer.GetDeviceCaps(sheet) / printer.GetDeviceCaps(millimetres);
  };
  constexpr double kFar = 1e8;  // farther than any paper reaches
  const auto rounded = [=](double margin) { return RoundToInt32(std::clamp(margin, -kFar, kFar)); };
  const double across = pixels(DeviceCap::PHYSICALWIDTH, DeviceCap::HORZSIZE);
  const double down = pixels(DeviceCap::PHYSICALHEIGHT, DeviceCap::VERTSIZE);
  return {rounded(across * page.Left), rounded(down * page.Top), rounded(across * page.Right),
          rounded(down * page.Bottom)};
}

std::optional<std::string> CheckMargins(const DeviceRect& margins, std::int32_t pageWidth, std::int32_t pageHeight) {
  const std::int32_t right = pageWidth - margins.right, bottom = pageHeight - margins.bottom;
  const struct {
    bool Wrong;
    const char* Text;
  } checks[] = {
      {margins.left > pageWidth, "The left margin specified is more than the actual page width. "},
      {right > pageWidth, "The right margin specified is more than the actual page width. "},
      {margins.top > pageHeight, "The top margin specified is more than the actual page height. "},
      {bottom > pageHeight, "The bottom margin specified is more than the actual page height. "},
      {margins.left >= right, "The left and right margins specified are incorrect for the page width. "},
      {margins.top >= bottom, "The top and bottom margins specified are incorrect for the page height. "},
  };
  for (const auto& check : checks)
    if (check.Wrong) return std::string(check.Text) + "Please check the margin settings in the Page Setup Dialog.";
  return std::nullopt;
}

}  // namespace quorvex
