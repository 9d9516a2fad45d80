#include "results/ui/PrintTable.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>
#include <vector>

namespace quorvex {
namespace {

class Press {
 public:
  Press(const TextTable& table, QString title, const QFont& font, QPagedPaintDevice& device)
      : table_(table), title_(std::move(title)), plain_(font), bold_(font), device_(device) {
    bold_.setBold(true);
  }

  bool Run() {
    if (!painter_.begin(&device_)) return false;
    const QFontMetricsF metrics(bold_, &device_);
    line_ = metrics.height() * 1.15;
    gap_ = metrics.horizontalAdvance("  ");
    width_ = painter_.viewport().width();
    height_ = painter_.viewport().height();
    Measure(metrics);
    for (std::size_t first = 0; first < widths_.size();) {
      const std::size_t end = StripEnd(first);
      if (!Strip(first, end)) return false;
      first = end;
    }
    return painter_.end();
  }

 private:
  void Measure(const QFontMetricsF& metrics) {
    widths_.assign(table_.ColumnCount(), 0);
    for (std::size_t c = 0; c < widths_.size(); ++c) {
      const auto fit = [&](const std::string& text) {
        widths_[c] = std::max(widths_[c], metrics.horizontalAdvance(QString::fromStdString(text)) + gap_);
      };
      headed_ = headed_ || !table_.ColumnHeading(c).empty();
      fit(table_.ColumnHeading(c));
      for (std::size_t r = 0; r < table_.RowCount(); ++r) {
        const RowKind kind = table_.Kind(r);
        if (kind != RowKind::Heading && (c == 0 || kind != RowKind::Line)) fit(table_.Cell(r, c));
      }
    }
  }

  // Behind the last column that fits on a page beside column `first`.
  std::size_t StripEnd(std::size_t first) const {
    double used = widths_[first];
    std::size_t end = first + 1;
    while (end < widths_.size() && used + widths_[end] <= width_) used += widths_[end++];
    return end;
  }

  bool Strip(std::size_t first, std::size_t end) {
    double y = height_;
    for (std::size_t r = 0; r < table_.RowCount(); ++r) {
      if (y + line_ > height_) {
        if (page_ > 0 && !device_.newPage()) return false;
        y = PageHead(first, end);
      }
      Row(r, first, end, y);
      y += line_;
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
    double y = line_ * 1.5;
    if (!headed_) return y;
    painter_.setFont(bold_);
    double x = 0;
    for (std::size_t c = first; c < end; x += widths_[c++])
      Text(table_.ColumnHeading(c), x, y, widths_[c] - gap_, c == 0 ? Qt::AlignLeft : Qt::AlignRight);
    return y + line_ * 1.2;
  }

  void Row(std::size_t r, std::size_t first, std::size_t end, double y) {
    const RowKind kind = table_.Kind(r);
    painter_.setFont(kind == RowKind::Heading || kind == RowKind::ColumnHeadings ? bold_ : plain_);
    if (kind == RowKind::Heading || kind == RowKind::Line) {
      if (first > 0) return;  // stands on the first pages
      Text(table_.Cell(r, 0), 0, y, width_, Qt::AlignLeft);
      if (kind == RowKind::Line && table_.ColumnCount() > 1)
        Text(table_.Cell(r, 1), widths_[0], y, width_ - widths_[0], Qt::AlignLeft);
      return;
    }
    double x = 0;
    for (std::size_t c = first; c < end; x += widths_[c++])
      Text(table_.Cell(r, c), x, y, widths_[c] - gap_, c == 0 ? Qt::AlignLeft : Qt::AlignRight);
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
  bool headed_ = false;
  int page_ = 0;
};

}  // namespace

bool PrintTable(const TextTable& table, const QString& title, const QFont& font, QPagedPaintDevice& device) {
  return Press(table, title, font, device).Run();
}

}  // namespace quorvex
