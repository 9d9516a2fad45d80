#pragma once

#include <QTextLayout>
#include <string>

class QPainter;

namespace quorvex {

// A text in lines of a width, in the units of the device (of the screen without one). Lines end between words; within
// a word, as a formula is one, only where it alone is wider than a line.
class WrappedText {
 public:
  WrappedText(const std::string& text, const QFont& font, double width, const QPaintDevice* device = nullptr);

  double Height() const { return layout_.boundingRect().height(); }
  void Draw(QPainter& painter, const QPointF& corner) const { layout_.draw(&painter, corner); }

 private:
  QTextLayout layout_;
};

}  // namespace quorvex
