#include "app/ui/ManualWindow.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

#include "app/HelpPages.h"
#include "app/ui/ManualView.h"
#include "core/Version.h"

namespace quorvex {
namespace {

// Where the program is installed, or beside it where it was built.
QString ManualFile(const QString& name) {
  const QString program = QCoreApplication::applicationDirPath() + '/';
  for (const QString& folder : {program + kDataFolder, program + "share/quorvex"})
    if (const QFileInfo page(folder + "/docs/manual/" + name); page.exists()) return page.absoluteFilePath();
  return {};
}

}  // namespace

ManualWindow::ManualWindow() : view_(new ManualView(this)) {
  setObjectName("ManualWindow");
  setWindowTitle("Quorvex Manual");
  setAttribute(Qt::WA_QuitOnClose, false);  // the program ends with its frame
  setCentralWidget(view_);
  MakeToolbar();
  MakeFindBar();
  const QSize room = screen()->availableSize();
  resize(std::min(900, room.width() * 9 / 10), std::min(760, room.height() * 9 / 10));
  connect(view_, &ManualView::sourceChanged, this, [this] { setWindowTitle(view_->Title() + " - Quorvex Manual"); });
}

QAction* ManualWindow::NewAction(QToolBar& bar, const char* name, const QString& text,
                                 const QList<QKeySequence>& keys) {
  QAction* action = bar.addAction(text);
  action->setObjectName(name);
  action->setShortcuts(keys);
  action->setToolTip(action->iconText() + " (" + action->shortcut().toString(QKeySequence::NativeText) + ')');
  return action;
}

void ManualWindow::MakeToolbar() {
  QToolBar& bar = *addToolBar("Manual");
  bar.setObjectName("manualBar");
  bar.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar.setContextMenuPolicy(Qt::PreventContextMenu);
  bar.setMovable(false);
  QAction* contents = NewAction(bar, "contents", "Contents", {QKeySequence("Alt+Home")});
  QAction* back = NewAction(bar, "back", "Back", {QKeySequence("Alt+Left"), QKeySequence("Backspace")});
  QAction* forward = NewAction(bar, "forward", "Forward", {QKeySequence("Alt+Right")});
  bar.addSeparator();
  QAction* find = NewAction(bar, "find", "Find in Page", {QKeySequence::Find});
  bar.addSeparator();
  QAction* larger = NewAction(bar, "larger", "Larger", {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")});
  QAction* smaller = NewAction(bar, "smaller", "Smaller", {QKeySequence("Ctrl+-")});
  back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
  forward->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(contents, &QAction::triggered, this, [this] { Open("index.html"); });
  connect(back, &QAction::triggered, view_, &ManualView::backward);
  connect(forward, &QAction::triggered, view_, &ManualView::forward);
  connect(view_, &ManualView::backwardAvailable, back, &QAction::setEnabled);
  connect(view_, &ManualView::forwardAvailable, forward, &QAction::setEnabled);
  connect(find, &QAction::triggered, this, &ManualWindow::ShowFindBar);
  connect(larger, &QAction::triggered, view_, [this] { view_->zoomIn(); });
  connect(smaller, &QAction::triggered, view_, [this] { view_->zoomOut(); });
  auto* leave = new QAction(this);
  leave->setObjectName("leave");
  leave->setShortcuts({QKeySequence("Escape"), QKeySequence("Ctrl+W")});
  connect(leave, &QAction::triggered, this, &ManualWindow::Leave);
  addAction(leave);
}

void ManualWindow::MakeFindBar() {
  findBar_ = new QToolBar("Find", this);
  findBar_->setObjectName("findBar");
  findBar_->setContextMenuPolicy(Qt::PreventContextMenu);
  findBar_->setMovable(false);
  addToolBar(Qt::BottomToolBarArea, findBar_);
  wanted_ = new QLineEdit(findBar_);
  wanted_->setObjectName("wanted");
  wanted_->setAccessibleName("Text to find");
  wanted_->setPlaceholderText("Find in this page");
  findBar_->addWidget(wanted_);
  QAction* next = NewAction(*findBar_, "findNext", "Next", {QKeySequence("F3")});
  QAction* previous = NewAction(*findBar_, "findPrevious", "Previous", {QKeySequence("Shift+F3")});
  missing_ = new QLabel(findBar_);
  missing_->setObjectName("missing");
  findBar_->addWidget(missing_);
  connect(next, &QAction::triggered, this, [this] { Find(false); });
  connect(previous, &QAction::triggered, this, [this] { Find(true); });
  connect(wanted_, &QLineEdit::returnPressed, this, [this] { Find(false); });
  // Looks on from where the text began that was found so far, which grows while it is typed.
  connect(wanted_, &QLineEdit::textEdited, this, [this] {
    QTextCursor cursor = view_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    view_->setTextCursor(cursor);
    Find(false);
  });
  findBar_->hide();
}

bool ManualWindow::Open(const QString& page) {
  const QString file = ManualFile(page.section('#', 0, 0));
  if (file.isEmpty()) return false;
  QUrl url = QUrl::fromLocalFile(file);
  if (page.contains('#')) url.setFragment(page.section('#', 1));
  if (windowHandle() != nullptr && !isVisible()) windowHandle()->setTransientParent(nullptr);
  // Shown first: a page finds its place in a window that has its size.
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  view_->setSource(url);
  raise();
  activateWindow();
  view_->setFocus();
  return true;
}

bool ManualWindow::event(QEvent* event) {
  // Sent while the dialog is being put on the list of those that block; by the next turn it is there.
  if (event->type() == QEvent::WindowBlocked) QTimer::singleShot(0, this, &ManualWindow::FollowDialog);
  return QMainWindow::event(event);
}

// A dialog blocks all windows but those that belong to it. The window manager is not told, so that either may be
// brought in front of the other.
void ManualWindow::FollowDialog() {
  const QWidget* dialog = QApplication::activeModalWidget();
  if (dialog != nullptr && windowHandle() != nullptr) windowHandle()->setTransientParent(dialog->windowHandle());
}

void ManualWindow::ShowFindBar() {
  findBar_->show();
  wanted_->setFocus();
  wanted_->selectAll();
}

void ManualWindow::Find(bool backward) {
  if (wanted_->text().isEmpty()) return ShowFindBar();
  const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  bool found = view_->find(wanted_->text(), flags);
  if (!found) {  // from the other end of the page
    const QTextCursor here = view_->textCursor();
    view_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    found = view_->find(wanted_->text(), flags);
    if (!found) view_->setTextCursor(here);
  }
  missing_->setText(found ? "" : " Not on this page.");
}

// Escape closes what was opened last.
void ManualWindow::Leave() {
  if (!findBar_->isVisible()) {
    close();
    return;
  }
  findBar_->hide();
  view_->setFocus();
}

}  // namespace quorvex
