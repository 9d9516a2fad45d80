
#include <QKeyEvent>
#include <new>
#include <stdexcept>

#include "Frame.h"
#include "app/ui/DesktopApplication.h"

namespace quorvex {
namespace {

// A window whose handlers end by an exception.
class Failing : public QWidget {
 public:
  std::function<void()> OnKey, OnPaint;

 protected:
  void keyPressEvent(QKeyEvent*) override { OnKey(); }
  void paintEvent(QPaintEvent*) override {
    if (OnPaint) OnPaint();
  }
};

TEST_F(Frame, GoesOnAfterAnExceptionInAWindow) {
  Start();
  auto* application = static_cast<DesktopApplication*>(qApp);
  QObject::connect(application, &DesktopApplication::Failed, frame.get(), &parentfrm::GoOnAfterFailure);
  const struct {
    std::function<void()> Throw;
    std::string Said;
  } kCases[] = {
      {[] { throw std::bad_alloc(); }, "There is not enough memory for that."},
      {[] { throw std::runtime_error("no folder"); }, "An unexpected error occurred: no folder."},
      {[] { throw 1; }, "An unexpected error occurred."},
  };
  const std::string kept =
      " The command did not come to its end. What is not saved was copied aside, and is offered at the next start if "
      "Quorvex ends.";
  int row = 0;
  for (const auto& c : kCases) {
    Type(QString::number(++row));
    Failing window;
    window.OnKey = c.Throw;
    window.show();
    dialogs.Press(QMessageBox::Ok);
    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_EQ(dialogs.Said.back(), c.Said + kept);
    dialogs.Press(QMessageBox::Ok);
    QTimer::singleShot(0, &window, c.Throw);
    QTest::qWait(10);
    dialogs.Press(QMessageBox::Ok);
    window.OnPaint = c.Throw;
    for (int i = 0; i < 3; ++i) {  // told once
      window.update();
      QTest::qWait(20);
    }
    EXPECT_EQ(dialogs.Said.size(), 3u * static_cast<std::size_t>(row));
    window.hide();
    // What was typed before is in the copy that a crash would leave now.
    std::string copy;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder.Path("state")))
      if (file.path().extension() == ".qvx") copy = file.path();
    EXPECT_EQ(ReadProject(copy, {})->Sheet.Cells.GridLastRow(), static_cast<std::size_t>(row));
  }
  // A dialog stays open, and whoever is told may fail, too.
  const auto failsAgain =
      QObject::connect(application, &DesktopApplication::Failed, frame.get(), [] { throw std::bad_alloc(); });
  dialogs.Do([&](QDialog& form) {
    Failing within;
    within.OnKey = kCases[0].Throw;
    dialogs.Press(QMessageBox::Ok);
    QTest::keyClick(&within, Qt::Key_A);
    EXPECT_TRUE(form.isVisible());
    form.reject();
  });
  Trigger("mnuFileNewKind");
  QObject::disconnect(failsAgain);
  dialogs.Press(QMessageBox::No);
  EXPECT_TRUE(frame->close());
}

TEST(DesktopApplication, LeavesAnExceptionAloneThatNobodyIsToldOf) {
  Failing window;
  window.OnKey = [] { throw std::runtime_error("no folder"); };
  QKeyEvent key(QEvent::KeyPress, Qt::Key_A, {});
  EXPECT_THROW(QApplication::sendEvent(&window, &key), std::runtime_error);
}

}  // namespace
}  // namespace quorvex
