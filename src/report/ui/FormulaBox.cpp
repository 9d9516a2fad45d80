#include "report/ui/FormulaBox.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <QXmlStreamReader>
#include <algorithm>
#include <vector>

namespace quorvex {
namespace {

// In parts of the size of the letters, where nothing else is said.
constexpr double kScriptSize = 0.71, kSmallestSize = 0.5;  // the latter of the formula's own
constexpr double kMathAxis = 0.27;                         // above the line that letters stand on
constexpr double kRule = 0.055, kGap = 0.12;
constexpr double kOperatorGap = 0.22, kCommaGap = 0.17;
constexpr double kRootWidth = 0.6;
constexpr double kRowGap = 0.45, kColumnGap = 1;

constexpr QChar kApplication(0x2061);
const QString kFences = QString::fromUtf8("()[]{|\u230A\u230B\u2308\u2309");
const QString kRelations = QString::fromUtf8("=<>\u2260\u2264\u2265+\u2212\u00D7\u00B7\u2227\u2228");

struct Element {
  QString Name, Text;
  QXmlStreamAttributes Attributes = {};
  std::vector<Element> Parts = {};

  QString Attribute(const char* name) const { return Attributes.value(QLatin1String(name)).toString(); }
  bool IsFence() const { return Name == "mo" && Text.size() == 1 && kFences.contains(Text); }
};

// The element that the reader has just begun, with all that is in it.
Element Read(QXmlStreamReader& xml) {
  Element element{xml.name().toString(), "", xml.attributes()};
  while (!xml.atEnd()) {
    switch (xml.readNext()) {
      case QXmlStreamReader::StartElement:
        element.Parts.push_back(Read(xml));
        break;
      case QXmlStreamReader::Characters:
        if (!xml.isWhitespace() || xml.text().contains(QChar::Nbsp)) element.Text += xml.text();
        break;
      case QXmlStreamReader::EndElement:
        return element;
      default:
        break;
    }
  }
  return element;
}

}  // namespace

class FormulaLayout {
 public:
  FormulaLayout(double size, QPaintDevice& device) : whole_(size), device_(device) {}

  FormulaBox Lay(const Element& element, double size, bool isDisplay) const {
    const QString& name = element.Name;
    const auto part = [&](std::size_t i, double partSize) {
      return i < element.Parts.size() ? Lay(element.Parts[i], partSize, false) : FormulaBox();
    };
    if (name == "mi" || name == "mn" || name == "mtext")
      return Text(element.Text, size,
                  name == "mi" && element.Text.size() == 1 && element.Attribute("mathvariant").isEmpty());
    if (name == "mo") return Operator(element, size);
    if (name == "mspace") {
      FormulaBox gap;
      gap.width_ = element.Attribute("width").chopped(2).toDouble() * size;  // behind the number "em"
      return gap;
    }
    const double small = Smaller(size);
    if (name == "msub") return Scripts(part(0, size), part(1, small), {}, size);
    if (name == "msup") return Scripts(part(0, size), {}, part(1, small), size);
    if (name == "msubsup") return Scripts(part(0, size), part(1, small), part(2, small), size);
    if (name == "mfrac") return Fraction(part(0, isDisplay ? size : small), part(1, isDisplay ? size : small), size);
    if (name == "msqrt") return Root(Row(element.Parts, size, false), size);
    if (name == "mtable") return Table(element, size, element.Attribute("displaystyle") == "true");
    return Row(element.Parts, size, isDisplay);
  }

 private:
  double Smaller(double size) const { return std::max(size * kScriptSize, whole_ * kSmallestSize); }

  FormulaBox Text(const QString& text, double size, bool isItalic) const {
    QFont font("serif");
    font.setStyleHint(QFont::Serif);
    font.setPixelSize(std::max(qRound(size), 1));
    font.setItalic(isItalic);
    const QFontMetricsF metrics(font, &device_);
    const QRectF ink = metrics.tightBoundingRect(text);
    FormulaBox box;
    // Slanted letters lean out of their width.
    box.width_ = isItalic ? std::max(metrics.horizontalAdvance(text), ink.right()) : metrics.horizontalAdvance(text);
    box.ascent_ = -ink.top();
    box.descent_ = std::max(ink.bottom(), 0.0);
    box.letters_.append({0, 0, text, font, 1});
    return box;
  }

  FormulaBox Operator(const Element& element, double size) const {
    if (element.Text == kApplication) return {};
    const bool isBetween = kRelations.contains(element.Text) && element.Attribute("form") != "prefix";
    const double gap = isBetween ? kOperatorGap * size : 0;
    FormulaBox box;
    box.Add(Text(element.Text, size, false), gap, 0);
    box.width_ += element.Text == "," ? kCommaGap * size : gap;
    return box;
  }

  // What encloses others is as high as they are.
  FormulaBox Row(const std::vector<Element>& parts, double size, bool isDisplay) const {
    std::vector<FormulaBox> boxes;
    double above = 0, below = 0;  // the axis of the formula
    const double axis = kMathAxis * size;
    for (const Element& part : parts) {
      boxes.push_back(Lay(part, size, isDisplay));
      if (part.IsFence()) continue;
      above = std::max(above, boxes.back().ascent_ - axis);
      below = std::max(below, boxes.back().descent_ + axis);
    }
    FormulaBox row;
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if (parts[i].IsFence()) Stretch(boxes[i], std::max(above, below), axis);
      row.Add(boxes[i], row.width_, 0);
    }
    return row;
  }

  // So that a fence reaches as far above and below the axis.
  static void Stretch(FormulaBox& fence, double reach, double axis) {
    const double height = fence.Height();
    if (fence.letters_.empty() || height <= 0 || 2 * reach <= height) return;
    FormulaBox::Letters& sign = fence.letters_.front();
    sign.Stretch = 2 * reach / height;
    sign.Y = reach - axis - fence.descent_ * sign.Stretch;
    fence.ascent_ = reach + axis;
    fence.descent_ = reach - axis;
  }

  static FormulaBox Scripts(const FormulaBox& base, const FormulaBox& below, const FormulaBox& above, double size) {
    FormulaBox box = base;
    const double gap = kRule * size;
    double right = base.width_;
    const auto add = [&](const FormulaBox& script, double y) {
      box.Add(script, base.width_ + gap, y);
      right = std::max(right, box.width_);
    };
    if (below.width_ > 0) add(below, std::max(base.descent_ + below.ascent_ / 2, below.ascent_ - size * kMathAxis));
    if (above.width_ > 0) add(above, -std::max(base.ascent_ - above.ascent_ / 2, size * 0.4 + above.descent_));
    box.width_ = right;
    return box;
  }

  static FormulaBox Fraction(const FormulaBox& above, const FormulaBox& below, double size) {
    const double rule = kRule * size, gap = kGap * size, axis = kMathAxis * size;
    const double width = std::max(above.width_, below.width_) + 2 * gap;
    FormulaBox box;
    box.Add(above, gap + (width - above.width_) / 2, -axis - rule / 2 - gap - above.descent_);
    box.Add(below, gap + (width - below.width_) / 2, -axis + rule / 2 + gap + below.ascent_);
    box.strokes_.append({{{gap, -axis}, {gap + width, -axis}}, rule});
    box.width_ = width + 2 * gap;
    return box;
  }

  static FormulaBox Root(const FormulaBox& inside, double size) {
    const double rule = kRule * size, width = kRootWidth * size;
    const double top = -inside.ascent_ - kGap * size - rule, foot = inside.descent_;
    FormulaBox box;
    box.Add(inside, width, 0);
    box.ascent_ = -top + rule;
    box.strokes_.append({{{0, foot - (foot - top) * 0.4},
                          {width * 0.2, foot - (foot - top) * 0.48},
                          {width * 0.5, foot},
                          {width * 0.9, top},
                          {box.width_, top}},
                         rule});
    box.width_ += rule;
    return box;
  }

  // Centred on the axis.
  FormulaBox Table(const Element& table, double size, bool isDisplay) const {
    std::vector<std::vector<FormulaBox>> rows;
    std::vector<double> widths;
    for (const Element& row : table.Parts) {
      std::vector<FormulaBox>& cells = rows.emplace_back();
      for (const Element& cell : row.Parts) {
        cells.push_back(Row(cell.Parts, size, isDisplay));
        if (widths.size() < cells.size()) widths.push_back(0);
        widths[cells.size() - 1] = std::max(widths[cells.size() - 1], cells.back().width_);
      }
    }
    FormulaBox box;
    double y = 0;
    for (std::size_t r = 0; r < rows.size(); ++r) {
      double ascent = 0, descent = 0;
      for (const FormulaBox& cell : rows[r]) {
        ascent = std::max(ascent, cell.ascent_);
        descent = std::max(descent, cell.descent_);
      }
      if (r > 0) y += kRowGap * size + ascent;
      double x = 0;
      for (std::size_t c = 0; c < rows[r].size(); ++c) {
        const QString style = table.Parts[r].Parts[c].Attribute("style");
        const bool isRight = style.contains("text-align:right");
        // A line that goes on further stands further in.
        const double indent = style.endsWith(" 2em") ? 2 * size : 0;
        box.Add(rows[r][c], x + indent + (isRight ? widths[c] - rows[r][c].width_ : 0), y);
        x += widths[c] + (isDisplay ? 0 : kColumnGap * size);
      }
      y += descent;
    }
    if (isDisplay) return box;
    FormulaBox centred;
    centred.Add(box, 0, (box.ascent_ - box.descent_) / 2 - kMathAxis * size);
    return centred;
  }

  const double whole_;
  QPaintDevice& device_;
};

void FormulaBox::Add(const FormulaBox& part, double x, double y) {
  for (Letters letters : part.letters_) {
    letters.X += x;
    letters.Y += y;
    letters_.append(letters);
  }
  for (Stroke stroke : part.strokes_) {
    for (QPointF& corner : stroke.Corners) corner += QPointF(x, y);
    strokes_.append(stroke);
  }
  width_ = std::max(width_, x + part.width_);
  ascent_ = std::max(ascent_, part.ascent_ - y);
  descent_ = std::max(descent_, part.descent_ + y);
}

FormulaBox FormulaBox::Of(const QString& mathML, double letterSize, QPaintDevice& device) {
  QXmlStreamReader xml(mathML);
  if (!xml.readNextStartElement()) return {};
  const Element math = Read(xml);
  return FormulaLayout(letterSize, device).Lay(math, letterSize, true);
}

void FormulaBox::Paint(QPainter& painter) const {
  painter.save();
  painter.translate(0, ascent_);
  for (const Stroke& stroke : strokes_) {
    painter.setPen(QPen(Qt::black, stroke.Thickness, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawPolyline(stroke.Corners.constData(), static_cast<int>(stroke.Corners.size()));
  }
  painter.setPen(Qt::black);
  for (const Letters& letters : letters_) {
    painter.save();
    painter.translate(letters.X, letters.Y);
    painter.scale(1, letters.Stretch);
    painter.setFont(letters.Font);
    painter.drawText(QPointF(), letters.Text);
    painter.restore();
  }
  painter.restore();
}

}  // namespace quorvex
