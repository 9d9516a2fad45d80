#pragma once

#include <QDialog>
#include <string>

class QLineEdit;

namespace quorvex {

// Asks for a colour, "(R, G, B)", to be typed or picked.
class frmTemplatePrompt : public QDialog {
 public:
  frmTemplatePrompt(const std::string& text, const std::string& initial, QWidget* parent);

  std::string Text() const;

 private:
  void Pick();

  QLineEdit* txtPrompt;
};

}  // namespace quorvex
