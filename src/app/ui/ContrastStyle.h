#pragma once

#include <QProxyStyle>

namespace quorvex {

// How far apart two opaque colours are to the eye, 1 to 21: (L1 + 0.05) / (L2 + 0.05) with the relative luminances of
// the lighter and the darker one. (Web Content Accessibility Guidelines 2.1.)
double ContrastRatio(const QColor& a, const QColor& b);

// The style that Qt brings along where a desktop has none of its own, with edges of boxes, option buttons and group
// frames that stand out from what is around and within them by 3 : 1 at least, on light and dark grounds.
class ContrastStyle : public QProxyStyle {
 public:
  static constexpr const char* kBase = "fusion";

  ContrastStyle() : QProxyStyle(kBase) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};

}  // namespace quorvex
