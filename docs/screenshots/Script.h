#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <deque>
#include <functional>

namespace quorvex {

using Step = std::function<void(QDialog& dialog)>;

// Does one thing after the other in the dialogs that a command opens, as each gets its turn.
class Script {
 public:
  explicit Script(std::deque<Step> steps) : steps_(std::move(steps)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(20);
  }

 private:
  void Turn() {
    auto* const window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || window == busy_ || steps_.empty()) return;
    busy_ = window;
    const auto step = std::move(steps_.front());
    steps_.pop_front();
    step(*window);
    busy_ = nullptr;
  }

  QTimer timer_;
  QDialog* busy_ = nullptr;
  std::deque<Step> steps_;
};

}  // namespace quorvex
