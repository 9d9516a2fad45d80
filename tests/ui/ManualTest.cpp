// The manual in its window: that every page, part and picture that something leads to is there.

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QWindow>
#include <set>

#include "Accessibility.h"
#include "Frame.h"
#include "Paths.h"
#include "app/HelpPages.h"
#include "app/ui/ManualView.h"
#include "app/ui/ManualWindow.h"

namespace quorvex {
namespace {

// What a page of the manual holds, as the window shows it.
struct Page {
  std::set<QString> Places, Links, Pictures;
};

Page ReadPage(ManualView& view, const QString& file) {
  view.setSource(QUrl::fromLocalFile(file));
  Page page;
  for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextCharFormat format = at.fragment().charFormat();
      for (const QString& name : format.anchorNames()) page.Places.insert(name);
      if (!format.anchorHref().isEmpty()) page.Links.insert(format.anchorHref());
      if (format.isImageFormat()) page.Pictures.insert(format.toImageFormat().name());
    }
  return page;
}

// The pages of the manual that can be read from the contents, by the names of their files.
std::map<QString, Page> PagesFrom(const QStringList& starts) {
  ManualView view(nullptr);
  view.resize(800, 600);
  std::map<QString, Page> pages;
  QStringList ahead = starts;
  while (!ahead.isEmpty()) {
    const QString file = ahead.takeFirst();
    if (pages.contains(file)) continue;
    pages[file] = ReadPage(view, file);
    for (const QString& link : pages[file].Links) {
      const QUrl to = QUrl::fromLocalFile(file).resolved(QUrl(link));
      if (to.isLocalFile() && (to.path().endsWith(".md") || to.path().endsWith(".html"))) ahead << to.toLocalFile();
    }
  }
  return pages;
}

TEST(Manual, LeadsToEveryPageAndPartThatItNames) {
  const QString root = QDir(QString::fromStdString(TestData("../.."))).canonicalPath();
  const auto pages = PagesFrom({root + "/docs/manual/index.html", root + "/README.md", root + "/CONTRIBUTING.md",
                                root + "/bench/README.md", root + "/examples/data/README.md"});
  for (const auto& [file, page] : pages) {
    for (const QString& link : page.Links) {
      const QUrl to = QUrl::fromLocalFile(file).resolved(QUrl(link));
      if (!to.isLocalFile()) continue;
      const std::string told = file.toStdString() + " to " + link.toStdString();
      EXPECT_TRUE(QFileInfo::exists(to.toLocalFile())) << told;
      if (!to.hasFragment()) continue;
      const auto target = pages.find(to.toLocalFile());
      EXPECT_TRUE(target != pages.end() && target->second.Places.contains(to.fragment())) << told;
    }
    for (const QString& picture : page.Pictures)
      EXPECT_TRUE(QFileInfo::exists(QUrl::fromLocalFile(file).resolved(QUrl(picture)).toLocalFile()))
          << file.toStdString() << " to " << picture.toStdString();
  }
  const auto fromContents = PagesFrom({root + "/docs/manual/index.html"});
  for (const char* folder : {"/docs/", "/docs/manual/"})
    for (const QFileInfo& file : QDir(root + folder).entryInfoList({"*.md", "*.html"}))
      EXPECT_TRUE(fromContents.contains(file.absoluteFilePath())) << file.fileName().toStdString();
  // A picture that no page shows is one that was forgotten.
  std::set<QString> shown;
  for (const auto& [file, page] : pages)
    for (const QString& picture : page.Pictures) shown.insert(QDir::cleanPath(QFileInfo(file).dir().filePath(picture)));
  for (const char* folder : {"/docs/images", "/docs/images/plots"})
    for (const QFileInfo& file : QDir(root + folder).entryInfoList({"*.png"}))
      EXPECT_TRUE(shown.contains(file.absoluteFilePath())) << file.fileName().toStdString();
  for (const HelpPage& help : HelpPages()) {
    const QString place = QString::fromUtf8(help.Page.data(), qsizetype(help.Page.size()));
    const auto page = pages.find(root + "/docs/manual/" + place.section('#', 0, 0));
    ASSERT_NE(page, pages.end()) << help.Page;
    EXPECT_TRUE(!place.contains('#') || page->second.Places.contains(place.section('#', 1))) << help.Page;
  }
}

TEST(Manual, IsReadByKeys) {
  ManualWindow window;
  ASSERT_TRUE(window.Open("plots.html#calculator"));
  EXPECT_FALSE(window.Open("nowhere.html"));
  window.activateWindow();
  QTest::qWait(20);
  auto& view = *window.findChild<ManualView*>();
  auto& wanted = *window.findChild<QLineEdit*>("wanted");
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
    QTest::qWait(5);
  };
  EXPECT_GT(view.verticalScrollBar()->value(), 0);
  EXPECT_EQ(window.windowTitle(), "Plots - Quorvex Manual");

  press(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(QApplication::focusWidget(), &wanted);
  QTest::keyClicks(&wanted, "metafile");
  const int first = view.textCursor().selectionStart();
  EXPECT_EQ(view.textCursor().selectedText().toLower(), "metafile");
  press(Qt::Key_F3);
  EXPECT_NE(view.textCursor().selectionStart(), first);
  press(Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(view.textCursor().selectionStart(), first);
  QTest::keyClicks(&wanted, "xyz");
  EXPECT_EQ(window.findChild<QLabel*>("missing")->text(), " Not on this page.");
  const AccessibilityWalk walk(window);
  press(Qt::Key_Escape);
  EXPECT_FALSE(wanted.isVisible());

  press(Qt::Key_Home, Qt::AltModifier);
  EXPECT_EQ(view.source().fileName(), "index.html");
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(view.source().fileName(), "plots.html");
  press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(view.source().fileName(), "index.html");
  const double before = view.font().pointSizeF();
  press(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_GT(view.font().pointSizeF(), before);
  press(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST(Manual, KeepsPicturesWithinTheWindowAndLinksReadable) {
  ManualWindow window;
  ASSERT_TRUE(window.Open("../windows.md"));
  auto& view = *window.findChild<ManualView*>();
  const auto widest = [&] {
    double width = 0;
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
      for (auto at = block.begin(); !at.atEnd(); ++at)
        if (at.fragment().charFormat().isImageFormat())
          width = std::max(width, at.fragment().charFormat().toImageFormat().width());
    return width;
  };
  for (const int room : {500, 900}) {
    window.resize(room, 600);
    QTest::qWait(20);
    EXPECT_GT(widest(), room / 2);
    EXPECT_LT(widest(), view.viewport()->width());
  }
  // Of the colours of a dark desktop those of links are the ones that may stay dark.
  QPalette dark = view.palette();
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Text, Qt::white);
  view.setPalette(dark);
  for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
    for (auto at = block.begin(); !at.atEnd(); ++at)
      if (!at.fragment().charFormat().anchorHref().isEmpty()) {
        EXPECT_GT(at.fragment().charFormat().foreground().color().lightness(), 150);
      }
}

// A dialog that waits for its answer blocks other windows, but the manual is for reading beside it.
TEST_F(Frame, ReadsTheManualBesideADialog) {
  Start();
  Trigger("mnuHelpManual");
  dialogs.Do([this](QDialog& form) {
    QTest::qWait(20);
    QWindow* manual = nullptr;
    for (QWindow* window : QGuiApplication::topLevelWindows())
      if (window->isVisible() && window->title().endsWith("Quorvex Manual")) manual = window;
    EXPECT_TRUE(manual != nullptr && manual->transientParent() == form.windowHandle());
    form.reject();
  });
  Trigger("mnuFilePref");
}

}  // namespace
}  // namespace quorvex
