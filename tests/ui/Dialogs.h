#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace quorvex {

using Said = std::vector<std::string>;

// Answers the dialogs that open while a test clicks, in the order given, and writes down what message boxes say. A
// dialog that is in front again after another gets the next answer, once its own is at its end. One that nobody expects
// is cancelled and fails the test.
class Dialogs {
 public:
  Dialogs() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(5);
  }
  ~Dialogs() { EXPECT_TRUE(answers_.empty()) << "A dialog did not open."; }

  // Leaves what opens to the test.
  void Rest() { timer_.stop(); }

  quorvex::Said Said;

  void Press(QMessageBox::StandardButton button) {
    answers_.push_back([this, button](QDialog& dialog) {
      auto* box = qobject_cast<QMessageBox*>(&dialog);
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->windowTitle(), "Quorvex");
      Said.push_back(box->text().toStdString());
      ASSERT_NE(box->button(button), nullptr);
      QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
  }

  // Types the name of a file and accepts.
  void ChooseFile(const std::string& name) {
    answers_.push_back([name](QDialog& dialog) {
      auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
      ASSERT_NE(edit, nullptr);
      edit->setText(QString::fromStdString(name));
      QTest::keyClick(edit, Qt::Key_Return);
    });
  }

  // Types a text that is asked for and accepts.
  void Type(const std::string& text) {
    answers_.push_back([text](QDialog& dialog) {
      auto* edit = dialog.findChild<QLineEdit*>();
      ASSERT_NE(edit, nullptr);
      edit->setText(QString::fromStdString(text));
      QTest::keyClick(edit, Qt::Key_Return);
    });
  }

  void Do(std::function<void(QDialog&)> action) { answers_.push_back(std::move(action)); }

 private:
  void Turn() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog == last_ || answering_.contains(dialog) || !dialog->isVisible()) return;
    last_ = dialog;
    QObject::connect(dialog, &QDialog::finished, &timer_, [this, dialog] {
      if (last_ == dialog) last_ = nullptr;
      answering_.erase(dialog);
    });
    if (answers_.empty()) {
      auto* box = qobject_cast<QMessageBox*>(dialog);
      ADD_FAILURE() << "Unexpected: " << (box ? box->text() : dialog->windowTitle()).toStdString();
      dialog->reject();
      return;
    }
    // Not from within this timer, which would rest while the answer opens further dialogs.
    answering_.insert(dialog);
    QTimer::singleShot(0, dialog, [this, dialog, answer = std::move(answers_.front())] {
      answer(*dialog);
      answering_.erase(dialog);
    });
    answers_.pop_front();
  }

  QTimer timer_;
  QDialog* last_ = nullptr;       // answered, and open
  std::set<QDialog*> answering_;  // whose answers are not at their end
  std::deque<std::function<void(QDialog&)>> answers_;
};

}  // namespace quorvex
