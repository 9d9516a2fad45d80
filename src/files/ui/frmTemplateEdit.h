#pragma once

#include <QDialog>
#include <string>

#include "core/Prompter.h"

class QPlainTextEdit;

namespace quorvex {

// The text of a plot template, to be edited and saved. Closing asks about changes.
class frmTemplateEdit : public QDialog {
 public:
  // `text` is what the file holds. The prompter outlives the form.
  frmTemplateEdit(std::string fileName, const std::string& text, Prompter& user, QWidget* parent);

  void reject() override;

 private:
  bool Save();

  const std::string fileName_;
  Prompter& user_;
  QPlainTextEdit* text_;
};

// Asks for a template and opens it in the form.
void EditTemplate(const std::string& filter, Prompter& user, QWidget* parent);

}  // namespace quorvex
