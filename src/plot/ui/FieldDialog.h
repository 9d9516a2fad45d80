#pragma once

#include <QDialog>

#include "core/Prompter.h"
#include "plot/PlotEntries.h"

namespace quorvex {

class FieldPanel;

// A dialog for one group of a plot's fields, such as the box of its legend. OK checks them.
class FieldDialog : public QDialog {
  Q_OBJECT

 public:
  // Entries and prompter must outlive the dialog.
  FieldDialog(const FieldGroup& group, const PlotEntries& entries, Prompter& prompter, QWidget* parent);

  const FieldGroup& Entered() const { return group_; }

  void accept() override;

 signals:
  void Edited();

 private:
  FieldGroup group_;
  const PlotEntries& entries_;
  Prompter& prompter_;
  FieldPanel* panel_;
};

}  // namespace quorvex
