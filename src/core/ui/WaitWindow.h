#pragma once

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace quorvex {

class LongWork;

// What is seen of work that goes on beside the window: what it is, how far, and a button that cancels it. While it is
// there nothing else of the program takes keys or clicks.
class WaitWindow : public QWidget {
 public:
  WaitWindow(const QString& text, QWidget* parent);

  // Shows how far the work is, and lets the windows live. False where the user cancelled.
  bool Turn(const LongWork& work);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QElapsedTimer since_;
  bool cancelled_ = false;
  QLabel* rows_;
  QProgressBar* bar_;
};

}  // namespace quorvex
