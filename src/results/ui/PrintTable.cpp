#include "results/ui/PrintTable.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>
#include <functional>
#include <numeric>
#include <vector>

#include "results/ui/WrappedText.h"

namespace quorvex {
namespace {

constexpr double kLeastScale = 0.7;  // of letters, to get all columns on a page

bool RunsOn(RowKind kind) { return kind == RowKind::Heading || kind == RowKind::Line; }

class Press {
 public:
  Press(const TextTable& table, QString title, const QFont& font, QPagedPaintDevice& device)
      : table_(table), title_(std::move(title)), plain_(font), bold_(font), device_(device) {
    bold_.setBold(true);
  }

  bool Run(const QMargins& margins) {
    if (!painter_.begin(&device_)) return false;
    const QFontMetricsF metrics(bold_, &device_);
    line_ = metrics.height() * 1.15;
    gap_ = metrics.horizontalAdvance("  ");
    const QRect page = painter_.viewport().marginsRemoved(margins);
    painter_.translate(page.topLeft());
    width_ = page.width();
    height_ = page.height();
    Measure(metrics);
    Shrink();
    for (std::size_t first = 0; first < widths_.size();) {
      const std::size_t end = StripEnd(first);
      if (!Strip(first, end)) return false;
      first = end;
    }
    return painter_.end();
  }

 private:
  // On one line.
  std::string Heading(std::size_t c) const {
    std::string heading = table_.ColumnHeading(c);
    std::replace(heading.begin(), heading.end(), '\n', ' ');
    return heading;
  }

  void Measure(const QFontMetricsF& metrics) {
    const auto widthOf = [&](const std::string& text) {
      return metrics.horizontalAdvance(QString::fromStdString(text)) + gap_;
    };
    widths_.assign(table_.ColumnCount(), 0);
    for (std::size_t c = 0; c < widths_.size(); ++c) {
      headed_ = headed_ || !Heading(c).empty();
      widths_[c] = widthOf(Heading(c));
      for (std::size_t r = 0; r < table_.RowCount(); ++r)
        if (!RunsOn(table_.Kind(r)) && !(table_.Kind(r) == RowKind::Remarked && IsRemark(table_, r, c)))
          widths_[c] = std::max(widths_[c], widthOf(table_.Cell(r, c)));
    }
    for (std::size_t r = 0; r < table_.RowCount(); ++r)
      if (table_.Kind(r) == RowKind::Line && !table_.Cell(r, 1).empty())
        valueAt_ = std::max(valueAt_, widthOf(table_.Cell(r, 0)));
  }

  // Smaller letters, where they put all columns on a page.
  void Shrink() {
    const double scale = width_ / std::accumulate(widths_.begin(), widths_.end(), 0.0);
    if (scale < 1 && scale >= kLeastScale) {
      painter_.scale(scale, scale);
      // In the units of smaller letters the page is larger.
      width_ /= scale;
      height_ /= scale;
    }
    valueAt_ = std::min(valueAt_, width_ / 2);
    repeatsFirst_ = !widths_.empty() && widths_[0] <= width_ / 2;
  }

  // Where column `first` of a strip begins: beside the first one of the table, which stands on every page.
  double StripStart(std::size_t first) const { return first > 0 && repeatsFirst_ ? widths_[0] : 0; }

  // Behind the last column that fits on a page beside column `first`.
  std::size_t StripEnd(std::size_t first) const {
    double used = StripStart(first) + widths_[first];
    std::size_t end = first + 1;
    while (end < widths_.size() && used + widths_[end] <= width_) used += widths_[end++];
    return end;
  }

  bool Strip(std::size_t first, std::size_t end) {
    // As if a page were full, so that the first row begins one.
    double y = height_;
    for (std::size_t r = 0; r < table_.RowCount(); ++r) {
      const double height = RowHeight(r, first);
      if (height == 0) continue;
      if (y + height > height_) {
        // The device begins with a page of its own.
        if (page_ > 0 && !device_.newPage()) return false;
        y = PageHead(first, end);
      }
      Row(r, first, end, y);
      y += height;
    }
    return true;
  }

  // Returns where the rows begin.
  double PageHead(std::size_t first, std::size_t end) {
    ++page_;
    painter_.setFont(plain_);
    const QRectF head(0, 0, width_, line_);
    painter_.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, title_);
    painter_.drawText(head, Qt::AlignRight | Qt::AlignVCenter, QString("Page %1").arg(page_));
    painter_.drawLine(QPointF(0, line_ * 1.2), QPointF(width_, line_ * 1.2));
    const double y = line_ * 1.5;
    if (!headed_) return y;
    painter_.setFont(bold_);
    Cells(first, end, y, [this](std::size_t c) { return Heading(c); });
    return y + line_ * 1.2;
  }

  // 0 for what stands on the first pages alone.
  double RowHeight(std::size_t r, std::size_t first) const {
    if (table_.Kind(r) != RowKind::Line) return line_;
    if (first > 0) return 0;
    return std::max(line_, Value(r).Height() * 1.15);
  }

  void Row(std::size_t r, std::size_t first, std::size_t end, double y) {
    const RowKind kind = table_.Kind(r);
    painter_.setFont(kind == RowKind::Heading || kind == RowKind::ColumnHeadings ? bold_ : plain_);
    if (!RunsOn(kind))
      return Cells(
          first, end, y, [&](std::size_t c) { return table_.Cell(r, c); },
          [&](std::size_t c) { return IsRemark(table_, r, c); });
    Text(table_.Cell(r, 0), 0, y, width_, Qt::AlignLeft);
    if (kind == RowKind::Line) Value(r).Draw(painter_, QPointF(valueAt_, y + line_ * 0.065));
  }

  WrappedText Value(std::size_t r) const { return {table_.Cell(r, 1), plain_, width_ - valueAt_, &device_}; }

  // A remark takes the rest of the width.
  template <typename CellOf>
  void Cells(
      std::size_t first, std::size_t end, double y, CellOf cellOf,
      const std::function<bool(std::size_t)>& isRemark = [](std::size_t) { return false; }) {
    double x = StripStart(first);
    if (x > 0) Text(cellOf(0), 0, y, widths_[0] - gap_, Qt::AlignLeft);
    for (std::size_t c = first; c < end; x += widths_[c++])
      if (isRemark(c))
        Text(cellOf(c), x, y, width_ - x, Qt::AlignLeft);
      else
        Text(cellOf(c), x, y, widths_[c] - gap_, c == 0 ? Qt::AlignLeft : Qt::AlignRight);
  }

  void Text(const std::string& text, double x, double y, double width, Qt::Alignment alignment) {
    painter_.drawText(QRectF(x, y, width, line_), static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                      QString::fromStdString(text));
  }

  const TextTable& table_;
  const QString title_;
  QFont plain_, bold_;
  QPagedPaintDevice& device_;
  QPainter painter_;
  double line_ = 0, gap_ = 0, width_ = 0, height_ = 0;
  std::vector<double> widths_;
  double valueAt_ = 0;  // where the values of lines begin
  bool headed_ = false, repeatsFirst_ = false;
  int page_ = 0;
};

}  // namespace

bool PrintTable(const TextTable& table, const QString& title, const QFont& font, QPagedPaintDevice& device,
                const QMargins& margins) {
  return Press(table, title, font, device).Run(margins);
}

QSizeF LeastRoom(const QFont& font, QPagedPaintDevice& device) {
  constexpr double kLines = 4, kLetters = 40;  // a head and a row of a label and a number
  const QFontMetricsF metrics(font, &device);
  return {metrics.averageCharWidth() * kLetters, metrics.height() * 1.15 * kLines};
}

}  // namespace quorvex
