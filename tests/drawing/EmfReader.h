#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/TextEncoding.h"
#include "drawing/DrawingSurface.h"

namespace quorvex {

// Reads an enhanced metafile record by record, by the published layout and not by the program's writer, and fails the
// test where it isn't sound: sizes, counts, and that nothing is used that isn't there. What it draws reads as in
// RecordingSurface's calls, lines as "Line x y x y ...".
class EmfReader {
 public:
  explicit EmfReader(std::string bytes) : bytes_(std::move(bytes)) {
    std::size_t count = 0, at = 0;
    std::uint32_t kind = 0;
    for (; at + 8 <= bytes_.size() && kind != kEof; ++count) {
      kind = U32(at);
      const std::uint32_t size = U32(at + 4);
      EXPECT_EQ(count == 0, kind == kHeader);
      EXPECT_EQ(size % 4, 0u);
      if (size < 8 || size > bytes_.size() - at) {
        ADD_FAILURE() << "record " << count << " of kind " << kind << " has " << size << " bytes";
        return;
      }
      Kinds.insert(kind);
      start_ = at;
      end_ = at + size;
      Read(kind);
      at += size;
    }
    EXPECT_EQ(kind, kEof);
    EXPECT_EQ(at, bytes_.size());
    EXPECT_EQ(U32(48), bytes_.size());
    EXPECT_EQ(U32(52), count);
    EXPECT_EQ(U16(56), highest_ + 1);
  }

  std::vector<std::string> Calls;
  std::set<std::uint32_t> Kinds;                    // of records
  std::vector<std::vector<std::int32_t>> Advances;  // of each text

  std::size_t ObjectCount() const { return live_.size(); }  // made and not deleted

  std::vector<std::string> Only(std::initializer_list<std::string_view> words) const {
    std::vector<std::string> calls;
    for (const std::string& call : Calls)
      for (const std::string_view word : words)
        if (std::string_view(call).substr(0, call.find(' ')) == word) calls.push_back(call);
    return calls;
  }

  std::uint32_t U32(std::size_t at) const { return Value<std::uint32_t>(at); }
  std::int32_t I32(std::size_t at) const { return Value<std::int32_t>(at); }
  std::uint16_t U16(std::size_t at) const { return Value<std::uint16_t>(at); }
  std::string Text(std::size_t at, std::size_t units) const {
    return DecodeUtf16("\xFF\xFE" + bytes_.substr(at, 2 * units)).value_or("?");
  }

 private:
  static constexpr std::uint32_t kHeader = 1, kEof = 14, kStock = 0x80000000;

  template <typename T>
  T Value(std::size_t at) const {
    T value{};
    if (at + sizeof value <= bytes_.size())
      std::memcpy(&value, bytes_.data() + at, sizeof value);
    else
      ADD_FAILURE() << "reads beyond the end";
    return value;
  }
  // Of the record, from behind its kind and size.
  std::uint32_t Field(std::size_t i) const { return U32(start_ + 8 + 4 * i); }
  std::int32_t Signed(std::size_t i) const { return I32(start_ + 8 + 4 * i); }

  template <typename... Values>
  void Write(const char* name, const Values&... values) {
    std::ostringstream line;
    line << name;
    ((line << ' ' << values), ...);
    Calls.push_back(line.str());
  }

  void Make(std::uint32_t handle) {
    EXPECT_TRUE(handle > 0 && handle < U16(56) && !live_.contains(handle)) << handle;
    highest_ = std::max(highest_, handle);
    live_.insert(handle);
  }

  // Points behind a rectangle around them, which must be theirs.
  std::string Points(std::size_t first, std::size_t count) {
    std::ostringstream text;
    DevicePoint low{INT32_MAX, INT32_MAX}, high{INT32_MIN, INT32_MIN};
    EXPECT_LE(start_ + 8 + 4 * (first + 2 * count), end_);
    for (std::size_t i = 0; i < count; ++i) {
      const DevicePoint point{Signed(first + 2 * i), Signed(first + 2 * i + 1)};
      text << ' ' << point.x << ' ' << point.y;
      low = {std::min(low.x, point.x), std::min(low.y, point.y)};
      high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    EXPECT_TRUE(Signed(0) <= low.x && Signed(1) <= low.y && Signed(2) >= high.x && Signed(3) >= high.y);
    return text.str();
  }

  void Read(std::uint32_t kind) {
    switch (kind) {
      case 3:
        return Calls.push_back("Polygon" + Points(5, Field(4)));
      case 4:
        return Calls.push_back("Line" + Points(5, Field(4)));
      case 7: {
        const std::uint32_t lines = Field(4);
        std::size_t first = 6 + lines, points = 0;
        for (std::uint32_t i = 0; i < lines; ++i) {
          const std::uint32_t count = Field(6 + i);
          Calls.push_back("Line" + Points(first, count));
          first += 2 * count;
          points += count;
        }
        EXPECT_EQ(points, Field(5));
        return;
      }
      case 18:
        return Write("SetBkMode", Field(0));
      case 24:
        return Write("SetTextColor", Field(0));
      case 30:
        return Write("IntersectClipRect", Signed(0), Signed(1), Signed(2), Signed(3));
      case 37:
        EXPECT_TRUE(Field(0) >= kStock || live_.contains(Field(0))) << Field(0);
        return Write("SelectObject", Field(0));
      case 38:
        EXPECT_EQ(Field(1), 5u);  // a pen that draws nothing
        return Make(Field(0));
      case 39:
        Write("CreateSolidBrush", Field(2));
        return Make(Field(0));
      case 40:
        EXPECT_EQ(live_.erase(Field(0)), 1u) << Field(0);
        return;
      case 42:
        return Write("Ellipse", Signed(0), Signed(1), Signed(2), Signed(3));
      case 43:
        return Write("Rectangle", Signed(0), Signed(1), Signed(2), Signed(3));
      case 75:
        EXPECT_EQ(Field(0), 0u);  // of a region: all lies open
        return Write("SelectClipRgn", 0);
      case 82:
        EXPECT_EQ(Signed(3), Signed(4));  // the letters turn with their line
        Write("CreateFontIndirectA", Signed(1), Signed(3), Signed(5), U32(start_ + 32) & 1, U32(start_ + 32) >> 8 & 1,
              U32(start_ + 32) >> 16 & 1, U32(start_ + 36) >> 16 & 0xFF, Face());
        return Make(Field(0));
      case 84:
        return ReadText();
      case 95:
        Write("CreatePen", 0, Field(6), Field(8));
        return Make(Field(0));
      default:
        return;
    }
  }

  std::string Face() const {
    const std::string name = Text(start_ + 40, 32);
    EXPECT_NE(name.find('\0'), std::string::npos);
    return name.substr(0, name.find('\0'));
  }

  void ReadText() {
    const std::uint32_t units = Field(9), text = Field(10), advances = Field(16);
    EXPECT_LE(text + 2 * units, advances);
    EXPECT_LE(start_ + advances + 4 * units, end_);
    std::vector<std::int32_t>& all = Advances.emplace_back();
    for (std::uint32_t i = 0; i < units; ++i) all.push_back(I32(start_ + advances + 4 * i));
    Write("TextOutA", Signed(7), Signed(8), Text(start_ + text, units));
  }

  std::string bytes_;
  std::size_t start_ = 0, end_ = 0;  // of the record
  std::set<std::uint32_t> live_;
  std::uint32_t highest_ = 0;
};

}  // namespace quorvex
