#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/EmfWriter.h"
#include "drawing/GatheredLines.h"
#include "drawing/LinePattern.h"
#include "drawing/PenLook.h"
#include "drawing/PictureSurface.h"

namespace quorvex {

// Records what is drawn as an enhanced metafile, the picture format of office programs: lines, shapes and letters that
// stay sharp at any size and can be edited there.
//
// A place of the plot is the middle of its pixel, as on screen; in the file it is between the pixel's edges. What
// stands on whole pixels on screen does so here.
//
// Records keep to what readers agree on. Coordinates are the device's own units, since not all of them scale pens by a
// map; regions become clip rectangles and paths, and shapes without an outline; the patterns of outlines become
// strokes.
class MetafileSurface : public PictureSurface {
 public:
  // A picture as large as `target`, which measures it, and must outlive the surface. `frame` is its size in hundredths
  // of a millimetre; the description is that of EmfPicture.
  MetafileSurface(DrawingSurface& target, DeviceExtent frame, const std::string& description);

  SurfaceHandle CreatePen(int style, std::int32_t width, std::int32_t colour) override;
  SurfaceHandle CreateSolidBrush(std::int32_t colour) override;
  SurfaceHandle CreateFontIndirectA(const LogicalFont& font) override;
  SurfaceHandle SelectObject(SurfaceHandle object) override;
  void DeleteObject(SurfaceHandle object) override;

  void MoveToEx(std::int32_t x, std::int32_t y) override { lines_.MoveTo({x, y}); }
  void LineTo(std::int32_t x, std::int32_t y) override {
    FlushFacets();
    lines_.LineTo({x, y});
  }
  void Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Polygon(std::span<const DevicePoint> points) override;
  void SetFacets(bool joined) override;

  void FillRgn(SurfaceHandle region, SurfaceHandle brush) override;
  void SelectClipRgn(SurfaceHandle region) override;

  void SetBkMode(int mode) override;
  void SetTextColor(std::int32_t colour) override;
  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override;

  // Ends the recording; nothing may be drawn any more.
  SurfaceHandle CloseEnhMetaFile() override;

  // The content of the file, once the recording has ended.
  const std::optional<std::string>& Metafile() const { return metafile_; }

 private:
  std::uint32_t PlaceOf(SurfaceHandle handle);
  PenLook Look() const { return {Objects().Pen(), *this}; }
  DevicePoint Exact(DevicePoint point) const;
  DevicePoint OnPixel(DevicePoint point, double shift) const;  // shifted by a part of a pixel
  EmfRect BoxOnPixels(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) const;
  void Flush();  // writes the lines and facets gathered, of which there are one kind at most
  void FlushLines();
  void FlushFacets();
  void WriteLines(const PaintedLines& lines);
  // Of points as the file has them:
  void WritePolygon(std::span<const DevicePoint> points);
  void WriteStrokes(std::span<const DevicePoint> polygon);
  LinePattern Pattern() const;

  EmfWriter writer_;
  GatheredLines lines_;
  bool facets_ = false;
  std::vector<std::vector<DevicePoint>> gatheredFacets_;  // those without outlines, in their order,
  std::vector<std::int32_t> facetColours_;                // with the colour of each
  std::optional<std::string> metafile_;
};

}  // namespace quorvex
