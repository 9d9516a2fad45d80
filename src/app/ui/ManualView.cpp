#include "app/ui/ManualView.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFontDatabase>
#include <QImageReader>
#include <QTextBlock>
#include <QTextTable>
#include <vector>

#include "app/HelpPages.h"

namespace quorvex {
namespace {

constexpr double kMargin = 14;       // pixels around a page
constexpr double kLineHeight = 120;  // percent, of text that is read

// Readable on the ground that it stands on, which a dark desktop's own colour of links is not always.
QColor LinkColor(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < 128 ? QColor(110, 175, 255) : QColor(0, 80, 190);
}

// Between ground and text, to be seen on dark ground, too.
QColor LineColor(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Base), text = palette.color(QPalette::Text);
  const auto between = [](int from, int to) { return from + (to - from) * 3 / 10; };
  return {between(ground.red(), text.red()), between(ground.green(), text.green()),
          between(ground.blue(), text.blue())};
}

struct Piece {
  int From, Length;
  QTextCharFormat Format;
};

// The pieces of a page of one format each. They are gathered before any is changed, which would move them.
std::vector<Piece> Pieces(const QTextDocument& page) {
  std::vector<Piece> pieces;
  for (QTextBlock block = page.begin(); block.isValid(); block = block.next())
    for (auto at = block.begin(); !at.atEnd(); ++at)
      pieces.push_back({at.fragment().position(), at.fragment().length(), at.fragment().charFormat()});
  return pieces;
}

QTextCursor Select(QTextDocument& page, int from, int length) {
  QTextCursor cursor(&page);
  cursor.setPosition(from);
  cursor.setPosition(from + length, QTextCursor::KeepAnchor);
  return cursor;
}

}  // namespace

ManualView::ManualView(QWidget* parent) : QTextBrowser(parent) {
  setObjectName("page");
  setAccessibleName("Page of the manual");
  setOpenLinks(true);
  setUndoRedoEnabled(false);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // so that pictures keep their width whatever the page's length
  connect(this, &QTextBrowser::sourceChanged, this, &ManualView::Dress);
}

QString ManualView::Title() const {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
    if (block.blockFormat().headingLevel() > 0) return block.text();
  return {};
}

void ManualView::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
  // A page that the manual doesn't have is one of the network, which is the browser's.
  if (!url.isRelative() && !url.isLocalFile())
    QDesktopServices::openUrl(url);
  else
    QTextBrowser::doSetSource(url, type);
}

QVariant ManualView::loadResource(int type, const QUrl& name) {
  if (type == QTextDocument::StyleSheetResource) return {};  // that of browsers
  const QVariant found = QTextBrowser::loadResource(type, name);
  const QString file = name.fileName();
  if (type != QTextDocument::HtmlResource || file.endsWith(".html")) return found;
  return "<pre>" + QString::fromUtf8(found.toByteArray()).toHtmlEscaped() + "</pre>";
}

// `shown` is where the page stands; source() is still the page before.
void ManualView::Dress(const QUrl& shown) {
  QTextDocument& page = *document();
  page.setDocumentMargin(kMargin);
  const QString fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
  for (const Piece& piece : Pieces(page)) {
    QTextCharFormat look;
    if (!piece.Format.anchorHref().isEmpty()) look.setForeground(LinkColor(palette()));
    if (piece.Format.fontFixedPitch()) look.setFontFamilies({fixed});
    if (!look.isEmpty()) Select(page, piece.From, piece.Length).mergeCharFormat(look);
  }
  for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
    const QTextBlockFormat format = block.blockFormat();
    QTextCursor cursor(block);
    if (format.headingLevel() > 0 && block.length() > 1) {
      cursor.setPosition(block.position() + 1, QTextCursor::KeepAnchor);
      QTextCharFormat place;
      place.setAnchor(true);
      place.setAnchorNames(cursor.charFormat().anchorNames() +
                           QStringList(QString::fromStdString(HeadingAnchor(block.text().toStdString()))));
      cursor.mergeCharFormat(place);
    } else if (format.nonBreakableLines() || format.hasProperty(QTextFormat::BlockCodeFence)) {
      QTextBlockFormat code;
      code.setBackground(palette().alternateBase());
      code.setNonBreakableLines(true);
      cursor.mergeBlockFormat(code);
    } else if (!block.text().contains(QChar::ObjectReplacementCharacter)) {  // a picture would become higher, too
      QTextBlockFormat lines;
      lines.setLineHeight(kLineHeight, QTextBlockFormat::ProportionalHeight);
      cursor.mergeBlockFormat(lines);
    }
  }
  DressTables(*page.rootFrame());
  fittedTo_ = 0;
  FitPictures();
  if (shown.hasFragment()) scrollToAnchor(shown.fragment());
}

void ManualView::DressTables(QTextFrame& frame) {
  for (QTextFrame* child : frame.childFrames()) {
    if (auto* table = qobject_cast<QTextTable*>(child)) {
      QTextTableFormat format = table->format();
      format.setBorder(1);
      format.setBorderCollapse(true);
      format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
      format.setBorderBrush(LineColor(palette()));
      format.setCellPadding(4);
      format.setCellSpacing(0);
      table->setFormat(format);
    }
    DressTables(*child);
  }
}

QSize ManualView::PictureSize(const QString& name) const {
  return QImageReader(document()->baseUrl().resolved(QUrl(name)).toLocalFile()).size();
}

void ManualView::FitPictures() {
  const int room = viewport()->width() - static_cast<int>(2 * kMargin);
  if (room == fittedTo_ || room <= 0) return;
  fittedTo_ = room;
  for (const Piece& piece : Pieces(*document())) {
    if (!piece.Format.isImageFormat()) continue;
    QTextImageFormat picture = piece.Format.toImageFormat();
    const QSize own = PictureSize(picture.name());
    if (own.isEmpty()) continue;
    const int width = std::min(own.width(), room);
    picture.setWidth(width);
    picture.setHeight(double(own.height()) * width / own.width());
    Select(*document(), piece.From, piece.Length).setCharFormat(picture);
  }
}

void ManualView::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  FitPictures();
}

void ManualView::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && !source().isEmpty()) reload();
}

}  // namespace quorvex
