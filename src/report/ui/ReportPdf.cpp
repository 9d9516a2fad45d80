#include "report/ui/ReportPdf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextObjectInterface>
#include <QTextTable>
#include <algorithm>
#include <memory>

#include "core/NotingPrompter.h"
#include "core/ui/PdfBytes.h"
#include "drawing/ui/QtSurface.h"
#include "files/PlotFile.h"
#include "plot/PictureSize.h"
#include "plot/ui/PlotOutput.h"
#include "report/ui/FormulaBox.h"

namespace quorvex {
namespace {

constexpr int kUnitsPerInch = 1200;
constexpr double kUnitsPerPoint = kUnitsPerInch / 72.0;
constexpr double kMargin = 50 * kUnitsPerPoint, kFoot = 30 * kUnitsPerPoint;
constexpr double kFormulaLetters = 12 * kUnitsPerPoint;
constexpr double kPlotWidth = 370 * kUnitsPerPoint;  // two stand on a page, with what is said of them
constexpr PictureSize kPlotPixels{800, 600, 96};
constexpr double kSmallestLetters = 3;  // of a table, in points
constexpr int kRowsKeptTogether = 25;

constexpr const char* kStyle =
    "body { font-family: sans-serif; font-size: 9.5pt; }"
    "h1 { font-size: 18pt; margin-top: 0; margin-bottom: 4px; }"
    "h2 { font-size: 13pt; margin-top: 18px; margin-bottom: 5px; }"
    "h4 { font-size: 9.5pt; margin-top: 8px; margin-bottom: 2px; }"
    ".verdict { font-weight: bold; margin-top: 5px; margin-bottom: 5px; }"
    ".about { font-size: 8pt; }"
    "p, li { margin-top: 4px; margin-bottom: 4px; }"
    "table { border-collapse: collapse; margin-top: 2px; margin-bottom: 8px; }"
    "th, td { padding: 2px 8px; border-bottom: 1px solid #999999; font-size: 8.5pt; font-weight: normal; }"
    "thead th { font-weight: bold; background-color: #f0f2f4; }"
    "pre { font-family: monospace; font-size: 7.5pt; white-space: pre-wrap; margin-top: 5px; margin-bottom: 5px; "
    "background-color: #f0f2f4; }";

// Paints the formulas and the plots, whose places in the text are pictures with their numbers as names: f0, p0.
class Pictures : public QObject, public QTextObjectInterface {
  Q_OBJECT
  Q_INTERFACES(QTextObjectInterface)

 public:
  std::vector<FormulaBox> Formulas;
  std::vector<std::unique_ptr<PlotPage>> Plots;
  double Width = 0;     // of the text
  std::string Failure;  // of a plot, in a sentence

  QSizeF intrinsicSize(QTextDocument*, int, const QTextFormat& format) override {
    const auto [kind, number] = Named(format);
    if (kind == 'p') return QSizeF(kPlotPixels.Width, kPlotPixels.Height) * (kPlotWidth / kPlotPixels.Width);
    if (kind != 'f') return {};
    const FormulaBox& formula = Formulas[number];
    return QSizeF(formula.Width(), formula.Height()) * Scale(formula);
  }

  void drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int, const QTextFormat& format) override {
    const auto [kind, number] = Named(format);
    painter->save();
    if (kind == 'f') {
      painter->translate(place.topLeft());
      painter->scale(Scale(Formulas[number]), Scale(Formulas[number]));
      Formulas[number].Paint(*painter);
    } else if (kind == 'p') {
      // The plot has the painter's window to itself.
      const QRect onPage = painter->combinedTransform().mapRect(place).toAlignedRect();
      painter->resetTransform();
      painter->setViewport(onPage);
      painter->setWindow(0, 0, kPlotPixels.Width, kPlotPixels.Height);
      QImage measures = BlankPicture(kPlotPixels);
      NotingPrompter noting;
      QtSurface surface(*painter, measures);
      if (!Plots[number]->DrawGraph(surface, noting)) Failure = noting.Last();
    }
    painter->restore();
  }

 private:
  std::pair<char, std::size_t> Named(const QTextFormat& format) const {
    const QString name = format.toImageFormat().name();
    const std::size_t number = name.mid(1).toUInt();
    const bool isThere = name.startsWith('f') ? number < Formulas.size() : number < Plots.size();
    return {isThere ? name.front().toLatin1() : ' ', number};
  }
  // Formulas wider than the page are smaller.
  double Scale(const FormulaBox& formula) const { return std::min(1.0, Width / std::max(formula.Width(), 1.0)); }
};

// Puts a picture of that name, and a number, into the place of each such element, and gives the elements.
QStringList TakeOut(QString& html, const QString& element, const QString& name) {
  QStringList taken;
  for (qsizetype from = html.indexOf("<" + element); from >= 0; from = html.indexOf("<" + element, from)) {
    const QString end = "</" + element + ">";
    const qsizetype length = html.indexOf(end, from) + end.size() - from;
    const QString picture = QString("<p align=\"center\"><img src=\"%1%2\"/></p>").arg(name).arg(taken.size());
    taken.append(html.mid(from, length));
    html.replace(from, length, picture);
  }
  return taken;
}

// The page's HTML in the words that a QTextDocument knows.
void Reword(QString& html) {
  html.remove(QRegularExpression("<style>.*</style>", QRegularExpression::DotMatchesEverythingOption));
  html.replace(QRegularExpression("(<table>)\\s*<caption>([^<]*)</caption>"), "<h4>\\2</h4>\\1");
  html.replace("<figcaption>", "<p class=\"about\">").replace("</figcaption>", "</p>");
  html.replace("<table>", "<table cellspacing=\"0\">");
  html.replace("<th scope=\"row\">", "<th align=\"left\">").replace("<th scope=\"col\">", "<th align=\"left\">");
  html.replace(" class=\"number\"", " align=\"right\" style=\"white-space: nowrap\"").replace("\n</code>", "</code>");
}

// What stands by itself between the margins: a paragraph or a table.
struct Item {
  QTextBlock First, Last;
  QTextTable* Table = nullptr;

  bool LeadsOn() const {
    return First.blockFormat().headingLevel() > 0 || First.text().contains(QChar::ObjectReplacementCharacter);
  }
  bool StaysWhole() const { return Table == nullptr || Table->rows() <= kRowsKeptTogether; }
};

std::vector<Item> ItemsOf(const QTextDocument& document) {
  std::vector<Item> items;
  const QTextFrame& root = *document.rootFrame();
  for (auto it = root.begin(); !it.atEnd(); ++it) {
    if (QTextFrame* const frame = it.currentFrame())
      items.push_back({document.findBlock(frame->firstPosition()), document.findBlock(frame->lastPosition()),
                       qobject_cast<QTextTable*>(frame)});
    else
      items.push_back({it.currentBlock(), it.currentBlock()});
  }
  return items;
}

// Tables that are too wide for the page get smaller letters.
void Fit(QTextDocument& document) {
  QAbstractTextDocumentLayout& layout = *document.documentLayout();
  for (const Item& item : ItemsOf(document)) {
    if (item.Table == nullptr) continue;
    const auto isTooWide = [&] { return layout.frameBoundingRect(item.Table).width() > document.pageSize().width(); };
    for (double size = 8; size >= kSmallestLetters && isTooWide(); --size)
      for (int row = 0; row < item.Table->rows(); ++row)
        for (int column = 0; column < item.Table->columns(); ++column) {
          const QTextTableCell cell = item.Table->cellAt(row, column);
          QTextCursor cursor = cell.firstCursorPosition();
          cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
          QTextCharFormat letters;
          letters.setFontPointSize(size);
          cursor.mergeCharFormat(letters);
        }
  }
}

// A heading goes to the next page with what it is of, which a short table stays in one piece for.
void BreakPages(QTextDocument& document) {
  QAbstractTextDocumentLayout& layout = *document.documentLayout();
  const double height = document.pageSize().height();
  const auto pageOf = [&](const QTextBlock& block, bool itsEnd) {
    const QRectF place = layout.blockBoundingRect(block);
    return static_cast<int>((itsEnd ? place.bottom() - 1 : place.top()) / height);
  };
  const std::vector<Item> items = ItemsOf(document);
  for (std::size_t i = 0; i < items.size(); ++i) {
    std::size_t last = i;
    while (last + 1 < items.size() && items[last].LeadsOn()) ++last;
    const Item& end = items[last];
    const int page = pageOf(items[i].First, false);
    const bool isBroken = page != (end.StaysWhole() ? pageOf(end.Last, true) : pageOf(end.First, true));
    const bool isOnTop = layout.blockBoundingRect(items[i].First).top() < page * height + 1;
    if (isBroken && !isOnTop && items[i].Table == nullptr) {
      QTextBlockFormat format;
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      QTextCursor(items[i].First).mergeBlockFormat(format);
    }
    i = last;
  }
}

void PaintPages(QTextDocument& document, QPdfWriter& pdf) {
  const QSizeF text = document.pageSize();
  QPainter painter(&pdf);
  QFont small("sans-serif");
  small.setPointSizeF(8);
  const int pages = document.pageCount();
  for (int page = 0; page < pages; ++page) {
    if (page > 0) pdf.newPage();
    painter.save();
    painter.translate(kMargin, kMargin - page * text.height());
    document.drawContents(&painter, QRectF(QPointF(0, page * text.height()), text));
    painter.restore();
    painter.setFont(small);
    painter.drawText(QRectF(kMargin, kMargin + text.height(), text.width(), 2 * kFoot), Qt::AlignCenter,
                     QString("%1 / %2").arg(page + 1).arg(pages));
  }
}

}  // namespace

Result<std::string> PdfOfReport(std::string_view printed, const Settings& settings, const LocaleText& locale) {
  const std::string_view page = printed.substr(0, printed.find('\0'));
  QString html = QString::fromUtf8(page.data(), static_cast<qsizetype>(page.size()));
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  {
    QPdfWriter pdf(&file);
    pdf.setResolution(kUnitsPerInch);
    pdf.setCreator("Quorvex");
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageMargins({});
    const QSizeF text(pdf.width() - 2 * kMargin, pdf.height() - 2 * kMargin - kFoot);

    Pictures pictures;
    pictures.Width = text.width();
    for (const QString& formula : TakeOut(html, "math", "f"))
      pictures.Formulas.push_back(FormulaBox::Of(formula, kFormulaLetters, pdf));
    TakeOut(html, "svg", "p");
    for (std::size_t at = page.size(); at < printed.size();) {
      const std::size_t end = std::min(printed.find('\0', at + 1), printed.size());
      Result<std::unique_ptr<PlotPage>> plot =
          ParsePlotFile(printed.substr(at + 1, end - at - 1), "report", settings, locale);
      NotingPrompter noting;
      if (!plot) return Failure{plot.error()};
      if (!(*plot)->CreateGraph({.Regenerate = true}, noting)) return Failure{noting.Last()};
      pictures.Plots.push_back(std::move(*plot));
      at = end;
    }
    Reword(html);

    QTextDocument document;
    document.documentLayout()->setPaintDevice(&pdf);
    document.documentLayout()->registerHandler(QTextFormat::ImageObject, &pictures);
    document.setDocumentMargin(0);
    // Letters that stand a trace apart don't grow together, by which words would not be found.
    QFont letters("sans-serif");
    letters.setPointSizeF(9.5);
    letters.setLetterSpacing(QFont::AbsoluteSpacing, 0.1);
    document.setDefaultFont(letters);
    document.setDefaultStyleSheet(kStyle);
    document.setPageSize(text);
    document.setHtml(html);
    pdf.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    Fit(document);
    BreakPages(document);
    PaintPages(document, pdf);
    if (!pictures.Failure.empty()) return Failure{pictures.Failure};
  }
  return PdfBytes(file.buffer());
}

}  // namespace quorvex

#include "ReportPdf.moc"
