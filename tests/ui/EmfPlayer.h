#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>

namespace quorvex {

// Draws an enhanced metafile by the published meaning of its records, and by none of the program's code: the frame
// fills the image. Fails the test at a record that plots do not need.
class EmfPlayer {
 public:
  EmfPlayer(const std::string& bytes, QImage& image) : bytes_(bytes), painter_(&image) {
    painter_.setRenderHint(QPainter::Antialiasing);
    // The frame is in hundredths of a millimetre, the drawing in units of the device.
    const double across = 100.0 * I32(80) / I32(72), down = 100.0 * I32(84) / I32(76);
    painter_.setTransform(QTransform::fromTranslate(-I32(24) / across, -I32(28) / down) *
                          QTransform::fromScale(image.width() * across / (I32(32) - I32(24)),
                                                image.height() * down / (I32(36) - I32(28))));
    for (std::size_t size = 0; start_ + 8 <= bytes_.size(); start_ += size) {
      size = static_cast<std::size_t>(I32(start_ + 4));
      Play(I32(start_));
      if (size < 8) return;
    }
  }

 private:
  std::int32_t I32(std::size_t at) const {
    std::int32_t value = 0;
    if (at + sizeof value <= bytes_.size())
      std::memcpy(&value, bytes_.data() + at, sizeof value);
    else
      ADD_FAILURE() << "reads beyond the end";
    return value;
  }
  std::int32_t Field(std::size_t i) const { return I32(start_ + 8 + 4 * i); }
  QPointF Point(std::size_t first) const { return QPointF(Field(first), Field(first + 1)); }
  QRectF Box() const { return QRectF(Point(0), Point(2)); }
  QPolygonF Points(std::size_t first, std::int32_t count) const {
    QPolygonF points;
    for (std::int32_t i = 0; i < count; ++i) points.append(Point(first + 2 * static_cast<std::size_t>(i)));
    return points;
  }
  static QColor Colour(std::int32_t colour) { return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF}; }

  void Play(std::int32_t kind) {
    switch (kind) {
      case 1:   // header
      case 14:  // end
      case 18:  // of the ground behind letters: drawn as transparent, and plots ask for nothing else
      case 27:  // a place that nothing starts from
      case 40:  // deleted; its handle's next object takes its place
        return;
      case 3:
        if (inPath_) return path_.addPolygon(Points(5, Field(4)));
        return painter_.drawPolygon(Points(5, Field(4)));
      case 4:
        return painter_.drawPolyline(Points(5, Field(4)));
      case 7:
        for (std::size_t line = 0, lines = static_cast<std::size_t>(Field(4)), first = 6 + lines; line < lines;
             ++line) {
          painter_.drawPolyline(Points(first, Field(6 + line)));
          first += 2 * static_cast<std::size_t>(Field(6 + line));
        }
        return;
      case 24:
        textColour_ = Colour(Field(0));
        return;
      case 30:
        return painter_.setClipRect(Box(), Qt::IntersectClip);
      case 37:
        return Select(static_cast<std::uint32_t>(Field(0)));
      case 38:
        pens_[Field(0)] = QPen(Qt::NoPen);
        return Forget(Field(0), kPen);
      case 39:
        brushes_[Field(0)] = Field(1) == 0 ? QBrush(Colour(Field(2))) : QBrush(Qt::NoBrush);
        return Forget(Field(0), kBrush);
      case 42:
        return painter_.drawEllipse(Box());
      case 43:
        return painter_.drawRect(Box());
      case 59:
        inPath_ = true;
        path_ = QPainterPath();
        return;
      case 60:
        inPath_ = false;
        return;
      case 67:
        return painter_.setClipPath(path_);
      case 75:
        return painter_.setClipping(false);
      case 82:
        fonts_[Field(0)] = start_;
        return Forget(Field(0), kFont);
      case 84:
        return PlayText();
      case 95:
        pens_[Field(0)] = QPen(Colour(Field(8)), Field(6), Qt::SolidLine,
                               (Field(5) & 0xF00) == 0x200 ? Qt::FlatCap : Qt::RoundCap, Qt::RoundJoin);
        return Forget(Field(0), kPen);
      default:
        ADD_FAILURE() << "record of kind " << kind;
    }
  }

  enum Kind { kPen, kBrush, kFont };
  // A handle is of one kind at a time.
  void Forget(std::int32_t handle, Kind made) {
    if (made != kPen) pens_.erase(handle);
    if (made != kBrush) brushes_.erase(handle);
    if (made != kFont) fonts_.erase(handle);
  }

  void Select(std::uint32_t handle) {
    const auto place = static_cast<std::int32_t>(handle);
    if (handle == 0x80000007) return painter_.setPen(QPen(Qt::black, 0));
    if (handle == 0x80000000) return painter_.setBrush(Qt::white);
    if (handle == 0x80000005) return painter_.setBrush(Qt::NoBrush);
    if (pens_.contains(place)) return painter_.setPen(pens_[place]);
    if (brushes_.contains(place)) return painter_.setBrush(brushes_[place]);
    if (fonts_.contains(place)) font_ = fonts_[place];
  }

  // Each letter at its place: the text's reference point is the upper left corner of its cell.
  void PlayText() {
    if (font_ == 0) return;
    const auto units = [&](std::size_t at, std::int32_t count) {
      QString text;
      for (std::int32_t i = 0; i < count; ++i) {
        std::uint16_t unit = 0;
        std::memcpy(&unit, bytes_.data() + at + 2 * static_cast<std::size_t>(i), sizeof unit);
        if (unit == 0) break;
        text.append(QChar(unit));
      }
      return text;
    };
    QFont font(units(font_ + 12 + 28, 32));
    font.setPixelSize(std::abs(I32(font_ + 12)));
    font.setWeight(static_cast<QFont::Weight>(I32(font_ + 28)));
    const std::int32_t looks = I32(font_ + 32);
    font.setItalic((looks & 0xFF) != 0);
    font.setUnderline((looks & 0xFF00) != 0);
    font.setStrikeOut((looks & 0xFF0000) != 0);
    const QString text = units(start_ + static_cast<std::size_t>(Field(10)), Field(9));
    painter_.save();
    painter_.translate(Point(7));
    painter_.rotate(-I32(font_ + 20) / 10.0);
    painter_.setFont(font);
    painter_.setPen(textColour_);
    double along = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
      painter_.drawText(QPointF(along, QFontMetricsF(font).ascent()), text.mid(i, 1));
      along += I32(start_ + static_cast<std::size_t>(Field(16)) + 4 * static_cast<std::size_t>(i));
    }
    painter_.restore();
  }

  const std::string& bytes_;
  QPainter painter_;
  std::size_t start_ = 0, font_ = 0;  // where the record and that of the font begin
  std::map<std::int32_t, QPen> pens_;
  std::map<std::int32_t, QBrush> brushes_;
  std::map<std::int32_t, std::size_t> fonts_;
  QPainterPath path_;
  bool inPath_ = false;
  QColor textColour_ = Qt::black;
};

}  // namespace quorvex
