#pragma once

#include <QPushButton>
#include <cstdint>

namespace quorvex {

// A button that shows a colour and lets the user choose another one.
class ColorButton : public QPushButton {
  Q_OBJECT

 public:
  explicit ColorButton(QWidget* parent);

  // Red in the low byte, then green, then blue.
  std::int32_t Color() const { return color_; }
  void SetColor(std::int32_t color);

 signals:
  void Chosen();

 private:
  void Choose();

  std::int32_t color_ = 0;
};

}  // namespace quorvex
