#pragma once

#include <map>
#include <string>
#include <string_view>

#include "drawing/GatheredLines.h"
#include "drawing/PenLook.h"
#include "drawing/PictureSurface.h"

namespace quorvex {

// Writes a drawing as an SVG document (Scalable Vector Graphics 1.1, W3C), for browsers and other programs. Its
// coordinates are the pixels of the surface that measures, so that everything stands where it would be seen there, and
// its letters stay text. The same drawing gives the same bytes.
//
// Facets have hard edges, as on screen, by which neighbours meet without a gap at any scale.
class SvgSurface : public PictureSurface {
 public:
  // `measures` must outlive the surface. Nothing is drawn on it.
  explicit SvgSurface(DrawingSurface& measures);

  // The whole document, once everything is drawn. Programs that read pages aloud say the title and the description.
  std::string Document(std::string_view title, std::string_view description);

  SurfaceHandle SelectObject(SurfaceHandle object) override;

  void MoveToEx(std::int32_t x, std::int32_t y) override { lines_.MoveTo({x, y}); }
  void LineTo(std::int32_t x, std::int32_t y) override {
    FlushFacets();
    lines_.LineTo({x, y});
  }
  void Rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
  void Polygon(std::span<const DevicePoint> points) override;

  void SetFacets(bool joined) override;
  void ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                     std::span<const std::int32_t> ramp) override;

  void FillRgn(SurfaceHandle region, SurfaceHandle brush) override;
  void SelectClipRgn(SurfaceHandle region) override;

  void SetBkMode(int mode) override;
  void SetTextColor(std::int32_t colour) override { textColour_ = colour; }
  void TextOutA(std::int32_t x, std::int32_t y, std::string_view text) override;

 private:
  struct FacetLook {
    std::string Style, Fill;  // of the group that it stands in, and its own
    std::string Gradient;     // which it is filled with, empty for none
  };

  // The middle of the place's pixel, or the place itself in that pixel, in pixels of the picture.
  ExactPoint OnPixel(DevicePoint point, double shift) const;
  ExactPoint Exact(DevicePoint point) const;
  PenLook Look() const { return {Objects().Pen(), *this}; }
  std::string Stroke(const PenLook& look, const char* join) const;
  std::string ShapeStyle(const SurfaceBrush& brush, bool outlined, const char* join) const;
  std::string FacetStyle(const std::string& fill) const;
  std::string RampId(std::span<const std::int32_t> ramp);

  void Put(const std::string& style, const std::string& element);  // an element that looks so
  void PutClip(const std::string& shape);
  void EndStyle();
  void EndClip();
  void Flush();  // writes the lines and facets gathered, of which there are one kind at most
  void FlushLines();
  void GatherFacet(std::span<const DevicePoint> corners, FacetLook look);
  void FlushFacets();

  GatheredLines lines_;
  std::vector<std::vector<DevicePoint>> gatheredFacets_;  // those without outlines, in their order,
  std::vector<FacetLook> facetLooks_;                     // with the look of each
  std::int32_t textColour_ = 0;
  bool opaque_ = true, facets_ = false;

  std::string body_;   // with kId where the document's own part of names will stand
  std::string style_;  // of the group that is open, empty for none
  std::string clip_;   // the shape that drawing is confined to, empty for none
  bool inClip_ = false;
  std::map<std::string, std::size_t> clips_, ramps_;  // by what they are, their numbers
  std::size_t gradients_ = 0;
};

}  // namespace quorvex
