#include "results/ui/WrappedText.h"

namespace quorvex {

WrappedText::WrappedText(const std::string& text, const QFont& font, double width, const QPaintDevice* device)
    : layout_(QString::fromStdString(text), font, device) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout_.setTextOption(option);
  layout_.beginLayout();
  double height = 0;
  for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
    line.setLineWidth(width);
    line.setPosition({0, height});
    height += line.height();
  }
  layout_.endLayout();
}

}  // namespace quorvex
