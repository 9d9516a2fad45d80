// Who has the keyboard behind a message: the dialog or the window that it came from.

#include <QPointer>
#include <QPrintDialog>

#include "Accessibility.h"
#include "Frame.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

std::string NameOf(const QWidget& window) {
  const QString name = window.objectName();
  return (name.isEmpty() ? window.windowTitle() : name).toStdString();
}

// Treats every dialog as an impatient user does: fills its fields with nonsense, accepts, closes what message comes,
// and goes on typing.
class Impatient : public QObject {
 public:
  explicit Impatient(std::string file) : file_(QString::fromStdString(file)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(1);
    qApp->installEventFilter(this);
  }

  QWidget* Working = nullptr;  // the window that the user works in
  std::set<std::string> Told;  // dialogs and windows that showed a message
  int Messages = 0;

  // A key that nothing is done by reaches the window.
  void Type(const QWidget& window) {
    QTest::qWait(5);
    // What a window manager does.
    if (QApplication::activeWindow() == nullptr && beneath_ != nullptr) beneath_->activateWindow();
    QTest::qWait(5);
    EXPECT_EQ(QApplication::activeWindow(), &window) << NameOf(window);
    reached_ = nullptr;
    ASSERT_NE(QGuiApplication::focusWindow(), nullptr) << NameOf(window);
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_F24);
    ASSERT_NE(reached_, nullptr) << NameOf(window);
    EXPECT_EQ(reached_->window(), &window) << NameOf(window) << ", but " << NameOf(*reached_);
  }

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F24 && !reached_)
      reached_ = qobject_cast<QWidget*>(receiver);
    return false;
  }

 private:
  void Turn() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || seen_.contains(dialog)) return;
    seen_ << dialog;
    connect(dialog, &QObject::destroyed, this, [this, dialog] { seen_.removeAll(dialog); });
    QTimer::singleShot(0, dialog, [this, dialog] { Answer(*dialog); });
  }

  void Answer(QDialog& dialog) {
    beneath_ = dialog.parentWidget()->window();
    if (qobject_cast<QMessageBox*>(&dialog) != nullptr) {
      QWidget* const from = open_.empty() ? Working : open_.back();
      EXPECT_EQ(dialog.parentWidget(), from) << NameOf(*from) << ", but " << NameOf(*dialog.parentWidget());
      Told.insert(NameOf(*from));
      ++Messages;
      QTest::keyClick(&dialog, Qt::Key_Escape);
    } else if (auto* files = qobject_cast<QFileDialog*>(&dialog)) {
      EXPECT_EQ(dialog.parentWidget()->window(), open_.empty() ? Working : open_.back());
      if (files->acceptMode() != QFileDialog::AcceptSave) return dialog.reject();
      auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
      edit->setText(file_ + QString::number(++files_));
      QTest::keyClick(edit, Qt::Key_Return);
    } else if (qobject_cast<QPrintDialog*>(&dialog) != nullptr) {
      dialog.reject();
    } else {
      const QPointer<QDialog> open(&dialog);
      ExpectTabsFollowTheEye(dialog);
      const int before = Messages;
      open_.push_back(&dialog);
      for (auto* field : dialog.findChildren<QLineEdit*>())
        if (field->isVisible() && field->isEnabled() && !field->isReadOnly()) field->setText("?");
      if (QAbstractButton* button = Accepting(dialog))
        button->click();
      else
        for (QPointer<QPushButton> other : dialog.findChildren<QPushButton*>())
          if (open && open->isVisible() && other && other->isEnabled() && !other->text().contains("Close"))
            other->click();
      open_.pop_back();
      if (open && open->isVisible()) {
        if (Messages > before) Type(*open);
        beneath_ = dialog.parentWidget()->window();
        open->reject();
      }
    }
  }

  static QAbstractButton* Accepting(const QDialog& dialog) {
    for (const auto* box : dialog.findChildren<QDialogButtonBox*>())
      for (QAbstractButton* button : box->buttons())
        if (const auto role = box->buttonRole(button);
            role == QDialogButtonBox::AcceptRole || role == QDialogButtonBox::ApplyRole)
          return button;
    return nullptr;
  }

  const QString file_;
  int files_ = 0;
  QTimer timer_;
  QList<QDialog*> seen_;
  std::vector<QWidget*> open_;  // that wait for the messages of their buttons
  QPointer<QWidget> beneath_;   // the dialog that was closed last
  QWidget* reached_ = nullptr;
};

class Keyboard : public Frame {
 protected:
  void TearDown() override {}  // nobody answers by then
  void Open() {
    Start();
    dialogs.Rest();
    user = std::make_unique<Impatient>(folder.Path("out"));
  }
  void Fill() {
    Document() = LineProject();
    SolveModel(Document(), "a*x+b", 1);
    Active().Refresh();
    Select(1, 1, 5, 2);
    Grid().setFocus();
  }
  void Work(QWidget& window) {
    window.activateWindow();
    QTest::qWait(5);
    user->Working = &window;
  }
  static bool Leaves(const QPushButton& button) {
    constexpr const char* kLeaving[] = {"exitcalc", "plotnew"};
    return button.text().remove('&').startsWith("Close") ||
           std::ranges::find(kLeaving, button.objectName()) != std::end(kLeaving);
  }
  // Everything that can be clicked in a window, and what comes to sight by that.
  void ClickThrough(QWidget& window) {
    Work(window);
    ExpectTabsFollowTheEye(window);
    for (QAction* action : window.findChildren<QAction*>()) {
      const QString name = action->objectName();
      // The modes of a plot take all else away, and another plot stays in front; the project's menu makes each kind.
      if (!action->isEnabled() || name == "mnuPlotClose" || name == "mnuPlotFormatZoom" ||
          name == "mnuPlotShowCoords" || name.startsWith("mnuPlotMove") || name.startsWith("mnuPlotNew") ||
          name.startsWith("mnuSolve") || name == "mnuPlotData" || name == "mnuPlotSelected")
        continue;
      action->trigger();
      QTest::qWait(5);
      if (auto* beside = qobject_cast<QDialog*>(QApplication::activeWindow()); beside != nullptr && beside != &window) {
        ClickThrough(*beside);
        Work(window);
      }
      user->Type(window);
    }
    for (int pass = 0; pass < 2; ++pass)
      for (auto* button : window.findChildren<QPushButton*>())
        if (button->isEnabled() && button->isVisible() && !Leaves(*button)) {
          button->click();
          user->Type(window);
        }
    // What is not saved would ask, be cancelled and stay.
    if (auto* save = window.findChild<QAction*>("mnuPlotSave")) save->trigger();
    window.close();
  }

  std::unique_ptr<Impatient> user;
};

// Before the window manager came to give it to the dialog.
TEST_F(Keyboard, GoesBackToTheWindowWhereAMessageAndItsDialogCloseTogether) {
  Start();
  dialogs.Do([this](QDialog& form) {
    dialogs.Do([](QDialog& box) {
      EXPECT_TRUE(box.isActiveWindow());
      box.reject();
    });
    MessageBoxPrompter(frame.get()).Inform("Done.");
    form.reject();
  });
  Trigger("mnuFileNewKind");
  QTest::qWait(5);
  EXPECT_TRUE(frame->isActiveWindow());
}

TEST_F(Keyboard, StaysWhereTheMessageCameFrom) {
  Open();
  for (QAction* action : frame->findChildren<QAction*>()) {
    const QString name = action->objectName();
    constexpr const char* kElsewhere[] = {"mnuFileQuit", "mnuFileClose", "mnuWindowCloseAll"};
    if (!name.startsWith("mnu") || std::ranges::find(kElsewhere, name) != std::end(kElsewhere)) continue;
    Fill();
    Work(*frame);
    if (name == "mnuSolveResults")
      Active().ShowResults(Active().Solved().front());
    else
      action->trigger();
    QTest::qWait(5);
    const QList<QWidget*> now = QApplication::topLevelWidgets();
    for (const QPointer<QWidget>& window : QList<QPointer<QWidget>>(now.begin(), now.end()))
      if (window && window != frame.get() && window->isVisible()) ClickThrough(*window);
    Work(*frame);
    user->Type(*frame);
    QTest::qWait(5);  // what was closed is gone
    ASSERT_FALSE(HasFailure()) << name.toStdString();
  }
  for (const char* name : {"parentfrm", "frmResults", "Dataplot", "calcfrm", "frmEqEdit", "usereq", "frmExcelRef",
                           "frmMacro", "PSetup", "FilePref", "frmGenPref", "frmGoto", "frmZeroSelect", "Factor"})
    EXPECT_TRUE(user->Told.contains(name)) << name;
}

}  // namespace
}  // namespace quorvex
