// Takes the pictures of the windows for the manual, from real runs of the examples:
//   screenshots FOLDER SUFFIX [dark]
// Run from the project's folder. QT_SCALE_FACTOR sets the scale.

#include <QApplication>
#include <QStyleFactory>

#include "Shots.h"

namespace quorvex {
namespace {

QPalette DarkPalette() {
  QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
  palette.setColor(QPalette::Window, QColor(45, 45, 45));
  palette.setColor(QPalette::WindowText, Qt::white);
  palette.setColor(QPalette::Base, QColor(30, 30, 30));
  palette.setColor(QPalette::Text, Qt::white);
  palette.setColor(QPalette::ButtonText, Qt::white);
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
  return palette;
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
  const Shots shots{arguments[1], arguments[2], session};
  for (const auto take : {TakeProgress, TakeFrame, TakeSolve}) take(shots);
  return EXIT_SUCCESS;
}
