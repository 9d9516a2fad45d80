#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "drawing/DrawingSurface.h"

namespace quorvex {

// The records of an enhanced metafile that plots need, by their numbers in the file format.
enum class EmfRecord : std::uint32_t {
  Header = 1,
  Polygon = 3,
  Polyline = 4,
  PolyPolyline = 7,
  Eof = 14,
  SetBkMode = 18,
  SetTextColor = 24,
  MoveToEx = 27,
  IntersectClipRect = 30,
  SelectObject = 37,
  CreatePen = 38,
  CreateBrushIndirect = 39,
  DeleteObject = 40,
  Ellipse = 42,
  Rectangle = 43,
  BeginPath = 59,
  EndPath = 60,
  SelectClipPath = 67,
  ExtSelectClipRgn = 75,
  ExtCreateFontIndirectW = 82,
  ExtTextOutW = 84,
  ExtCreatePen = 95,
};

// A rectangle of a metafile, all of whose edges belong to it.
struct EmfRect {
  std::int32_t Left = 0, Top = 0, Right = -1, Bottom = -1;  // as it stands: nothing
};

// The size of a metafile's picture, and the device that it is measured on.
struct EmfPicture {
  DeviceExtent Units;        // of the device, which the picture covers
  DeviceExtent Millimetres;  // of the device, too
  DeviceExtent Frame;        // of the picture, in hundredths of a millimetre
  std::string Description;   // program and picture in ASCII, each ended by a null character, and one more
};

// The bytes of an enhanced metafile: a header and records, each a whole number of four bytes, numbers with their low
// byte first.
class EmfWriter {
 public:
  explicit EmfWriter(const EmfPicture& picture);

  // Writes a record: its number, its size and its content.
  template <typename... Content>
  void Record(EmfRecord kind, const Content&... content) {
    const std::size_t start = Begin(kind);
    (Put(content), ...);
    End(start);
  }

  // Of all that is made in the file: how many places it takes, so that each has one of its own.
  void UseHandles(std::uint32_t places);

  // Writes the last record, and in the header what only now is known. The file's content.
  std::string Finish();

 private:
  std::size_t Begin(EmfRecord kind);
  void End(std::size_t start);
  template <std::integral Number>
  void Put(Number number) {
    for (std::size_t i = 0; i < sizeof number; ++i) bytes_ += static_cast<char>(number >> 8 * i);
  }
  void Put(float number) { Put(std::bit_cast<std::uint32_t>(number)); }
  void Put(DevicePoint point);
  void Put(DeviceExtent extent);
  void Put(const EmfRect& rectangle);
  void Put(std::span<const DevicePoint> points);
  void Put(std::span<const std::uint32_t> numbers);
  void Put(std::u16string_view text);
  void PutAt(std::size_t place, std::uint32_t number);

  std::string bytes_;
  std::uint32_t records_ = 0, handles_ = 1;  // the metafile itself has handle 0
};

}  // namespace quorvex
