#pragma once

#include <QFont>
#include <QList>
#include <QString>

class QPaintDevice;
class QPainter;

namespace quorvex {

// A formula laid out to be painted, letters as text. Its parts stand on one line; lengths are units of the device.
class FormulaBox {
 public:
  // Of a "math" element as MathMLFormula (code/Formula.h) writes it, in letters of so many units, with the resolution
  // of the device. An element that it doesn't know stands as the row of its parts.
  static FormulaBox Of(const QString& mathML, double letterSize, QPaintDevice& device);

  double Width() const { return width_; }
  double Height() const { return ascent_ + descent_; }
  // With the upper left corner at the painter's origin.
  void Paint(QPainter& painter) const;

 private:
  friend class FormulaLayout;
  struct Letters {
    double X, Y;  // where they stand, from the left end of the box's line
    QString Text;
    QFont Font;
    double Stretch;  // upwards and downwards
  };
  struct Stroke {
    QList<QPointF> Corners;
    double Thickness;
  };

  void Add(const FormulaBox& part, double x, double y);

  double width_ = 0, ascent_ = 0, descent_ = 0;
  QList<Letters> letters_;
  QList<Stroke> strokes_;
};

}  // namespace quorvex
