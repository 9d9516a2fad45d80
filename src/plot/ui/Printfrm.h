#pragma once

#include <QDialog>

#include "plot/PrintPages.h"

class QLabel;

namespace quorvex {

// The small window that stands there while pages are printed. While it does, nothing else of the program takes keys or
// clicks; Cancel stops before the next page.
class Printfrm : public QDialog, public PrintProgress {
 public:
  explicit Printfrm(QWidget* parent);

  bool Show(const std::string& text) override;

  void reject() override { cancelled_ = true; }

 private:
  bool cancelled_ = false;
  QLabel* what_;
};

}  // namespace quorvex
