#pragma once

#include <QMainWindow>

class QLabel;
class QLineEdit;
class QToolBar;

namespace quorvex {

class ManualView;

// The manual in a window of its own, which stays in use while a dialog waits for its answer.
class ManualWindow : public QMainWindow {
  Q_OBJECT

 public:
  ManualWindow();

  // Shows a page, or a part of it, as HelpPages names them. False where the manual is not there.
  bool Open(const QString& page);

 protected:
  bool event(QEvent* event) override;

 private:
  void MakeToolbar();
  void MakeFindBar();
  QAction* NewAction(QToolBar& bar, const char* name, const QString& text, const QList<QKeySequence>& keys);
  void ShowFindBar();
  void Find(bool backward);
  void Leave();
  void FollowDialog();

  ManualView* view_;
  QToolBar* findBar_;
  QLineEdit* wanted_;
  QLabel* missing_;
};

}  // namespace quorvex
