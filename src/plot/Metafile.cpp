#include "plot/Metafile.h"

#include <string_view>

#include "drawing/MetafileSurface.h"

namespace quorvex {

std::optional<std::string> CreateMetafile(PlotPage& plot, DrawingSurface& target, const char* failure, Prompter& user) {
  using namespace std::string_view_literals;
  const auto hundredths = [&](std::int32_t size, DeviceCap millimetres, DeviceCap units) {
    return MulDiv(size, target.GetDeviceCaps(millimetres) * 100, target.GetDeviceCaps(units));
  };
  const DeviceExtent frame = {hundredths(target.ScaleWidth(), DeviceCap::HORZSIZE, DeviceCap::HORZRES),
                              hundredths(target.ScaleHeight(), DeviceCap::VERTSIZE, DeviceCap::VERTRES)};
  MetafileSurface surface(target, frame, std::string("Quorvex:  Version 9.0\0Plot MetaFile\0\0"sv));
  std::optional<std::string> metafile;
  if (plot.DrawGraph(surface, user)) metafile = surface.Metafile();
  if (!metafile) user.Refuse(failure);
  return metafile;
}

}  // namespace quorvex
