#pragma once

#include <QPushButton>

#include "drawing/PlotFont.h"

namespace quorvex {

// A button that shows a font and lets the user choose another one.
class FontButton : public QPushButton {
  Q_OBJECT

 public:
  explicit FontButton(QWidget* parent);

  const PlotFont& Chosen() const { return font_; }
  void Show(const PlotFont& font);

 signals:
  void FontChosen();

 private:
  void Choose();

  PlotFont font_;
};

}  // namespace quorvex
