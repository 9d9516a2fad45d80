#pragma once

#include <QTextBrowser>

namespace quorvex {

// Shows the pages of the manual, written in HTML or Markdown, and files of examples as they stand. Pictures are not
// wider than the view, headings are places that links lead to, and colours are those of the desktop, light or dark.
class ManualView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit ManualView(QWidget* parent);

  // The first heading of the page.
  QString Title() const;

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Dress(const QUrl& shown);
  void DressTables(QTextFrame& frame);
  void FitPictures();
  QSize PictureSize(const QString& name) const;  // that it has by itself

  int fittedTo_ = 0;  // the width that pictures were made to fit
};

}  // namespace quorvex
