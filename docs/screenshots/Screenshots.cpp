// Takes the pictures of the windows for the manual, from real runs of the examples:
//   screenshots FOLDER SUFFIX [dark]
// Run from the project's folder. QT_SCALE_FACTOR sets the scale.

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QStyleFactory>
#include <QTabWidget>

#include "DarkPalette.h"
#include "app/ui/parentfrm.h"
#include "batch/RunMacro.h"
#include "batch/ui/cfgSolveWindow.h"
#include "project/ui/quorvexWindow.h"

namespace quorvex {
namespace {

// The progress form, taken twice in the search for the third model.
class PhotographedForm : public cfgSolveWindow {
 public:
  PhotographedForm(QString folder, QString suffix) : folder_(std::move(folder)), suffix_(std::move(suffix)) {
    Show(true);
  }

  void SetStatusLabel(const std::string& text) override {
    cfgSolveWindow::SetStatusLabel(text);
    turn_ = 0;
    ++model_;
  }

  void Yield() override {
    cfgSolveWindow::Yield();
    if (model_ != 3 || ++turn_ != 5) return;
    auto* detail = findChild<QPushButton*>("cmdDetail");
    Take("progress-short");
    detail->click();
    Take("progress-detail");
    detail->click();
  }

 private:
  void Take(const QString& name) {
    QApplication::processEvents();  // the new size is in force
    grab().save(folder_ + '/' + name + suffix_ + ".png");
  }

  QString folder_, suffix_;
  int model_ = 0, turn_ = 0;
};

// The main frame as it opens, and with the examples.
void TakeFrame(const QString& folder, const QString& suffix, Session& session) {
  session.Preferences.Set("screenwidth", "12000");  // window units, 15 to the pixel
  session.Preferences.Set("screenheight", "8000");
  parentfrm frame(session, "", "");
  frame.show();
  const auto take = [&](const QString& name) {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();  // the new state is in force and painted
    frame.grab().save(folder + '/' + name + suffix + ".png");
  };
  take("frame-empty");
  const QList<QAction*> examples = frame.findChild<QMenu*>("examples")->actions();
  examples[1]->trigger();
  take("frame-sheet");
  for (QAction* example : {examples[0], examples[2]}) example->trigger();
  frame.findChild<QAction*>("mnuWindowCascade")->trigger();
  frame.ActiveProject()->findChild<QTabWidget*>("pages")->setCurrentIndex(1);
  take("frame-windows");
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  using namespace quorvex;
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) return EXIT_FAILURE;
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (arguments.contains("dark")) QApplication::setPalette(DarkPalette());
  Session session;
  {
    PhotographedForm form(arguments[1], arguments[2]);
    if (const int status = RunMacro("examples/puromycin.cfg", session, form).Status) return status;
  }
  TakeFrame(arguments[1], arguments[2], session);
  return EXIT_SUCCESS;
}
