#include "drawing/EmfWriter.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr std::uint32_t kMicrometres = 1000;  // to a millimetre

// Places in the header.
constexpr std::size_t kSizeOfFile = 48, kCountOfRecords = 52, kCountOfHandles = 56;

}  // namespace

EmfWriter::EmfWriter(const EmfPicture& picture) {
  constexpr std::uint32_t kSignature = 0x464D4520, kVersion = 0x10000;  // " EMF", 1.0
  constexpr std::uint32_t kHeaderSize = 108, kNoPalette = 0, kNoPixelFormat = 0, kNoOpenGl = 0;
  const std::u16string description(picture.Description.begin(), picture.Description.end());
  Record(EmfRecord::Header, EmfRect{0, 0, picture.Units.cx - 1, picture.Units.cy - 1},
         EmfRect{0, 0, picture.Frame.cx, picture.Frame.cy}, kSignature, kVersion, std::uint32_t{0}, std::uint32_t{0},
         std::uint32_t{0}, static_cast<std::uint32_t>(description.size()), kHeaderSize, kNoPalette, picture.Units,
         picture.Millimetres, kNoPixelFormat, kNoPixelFormat, kNoOpenGl,
         static_cast<std::uint32_t>(picture.Millimetres.cx) * kMicrometres,
         static_cast<std::uint32_t>(picture.Millimetres.cy) * kMicrometres, std::u16string_view(description));
}

void EmfWriter::UseHandles(std::uint32_t places) { handles_ = std::max(handles_, places + 1); }

std::string EmfWriter::Finish() {
  constexpr std::uint32_t kNoPalette = 0, kSize = 20;
  Record(EmfRecord::Eof, kNoPalette, kNoPalette, kSize);
  PutAt(kSizeOfFile, static_cast<std::uint32_t>(bytes_.size()));
  PutAt(kCountOfRecords, records_);
  PutAt(kCountOfHandles, handles_);  // of two bytes; the two behind it are 0
  return std::move(bytes_);
}

std::size_t EmfWriter::Begin(EmfRecord kind) {
  ++records_;
  const std::size_t start = bytes_.size();
  Put(static_cast<std::uint32_t>(kind));
  Put(std::uint32_t{0});
  return start;
}

void EmfWriter::End(std::size_t start) {
  constexpr std::size_t kWord = 4;
  bytes_.resize((bytes_.size() + kWord - 1) / kWord * kWord);
  PutAt(start + kWord, static_cast<std::uint32_t>(bytes_.size() - start));
}

void EmfWriter::Put(DevicePoint point) {
  Put(point.x);
  Put(point.y);
}

void EmfWriter::Put(DeviceExtent extent) {
  Put(extent.cx);
  Put(extent.cy);
}

void EmfWriter::Put(const EmfRect& rectangle) {
  for (const std::int32_t edge : {rectangle.Left, rectangle.Top, rectangle.Right, rectangle.Bottom}) Put(edge);
}

void EmfWriter::Put(std::span<const DevicePoint> points) {
  for (const DevicePoint& point : points) Put(point);
}

void EmfWriter::Put(std::span<const std::uint32_t> numbers) {
  for (const std::uint32_t number : numbers) Put(number);
}

void EmfWriter::Put(std::u16string_view text) {
  for (const char16_t unit : text) Put(static_cast<std::uint16_t>(unit));
}

void EmfWriter::PutAt(std::size_t place, std::uint32_t number) {
  for (std::size_t i = 0; i < sizeof number; ++i) bytes_[place + i] = static_cast<char>(number >> 8 * i);
}

}  // namespace quorvex
