#pragma once

#include <QDialog>

#include "import/DataImport.h"
#include "import/ui/ForSheet.h"
#include "sheet/SheetEdit.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;
class QTableView;

namespace quorvex {

class PreviewModel;

// What the dialogs of all imports share: the preview of the source, which columns go to which variables, where the data
// begins and what marks missing data. exec() is Accepted where the sheet has the data.
class ImportDialog : public QDialog {
 protected:
  // The edit outlives the dialog.
  ImportDialog(const SheetEdit& edit, ForSheet sheet, QWidget* parent);

  // Called once, with what the dialog of a source has above the preview.
  void LayOut(QLayout* source);
  const SheetEdit& Edit() const { return edit_; }

  // The import to work on, which outlives its being shown; nullptr for none.
  void Show(DataImport* import);
  // The source is read in another way, or another part of it is.
  void Reload();
  // The user has taken the offer of another reading: its controls show that, too.
  virtual void ShowReading() {}

 private:
  QWidget* Body(ForSheet sheet);
  QWidget* Kind();  // how many variables the sheet has
  void ChangeKind();
  void ProposeKind();  // by the columns, where the user has not chosen one
  void ShowSheet();    // its variables, with no column yet but what is obvious
  QWidget* Lists();
  void ShowChoices();  // what stands in the controls
  void ShowTexts();    // how many cells are no numbers, and whether dates may be read either way
  void ShowOffer();    // of another reading
  void TakeOffer();
  void ShowAssignments();  // which column goes where, by their names
  void Assign();
  void UnAssign();
  void FinishImport();

  const SheetEdit& edit_;
  DataImport* import_ = nullptr;
  bool startRowChosen_ = false;  // by the user
  bool kindChosen_;

  QWidget* body_;
  PreviewModel* model_;
  QTableView* DataPreview;
  QSpinBox *txtVariables, *UpDnStartRow;
  QCheckBox *chkStDev, *ckMissingData;
  QLineEdit* txtMissingData;
  QCheckBox *ckHeadings, *ckTextMissing, *ckComments;
  QLabel* lblOffer;
  QPushButton* cmdOffer;
  QCheckBox* ckDayFirst;
  QListWidget *lstColumns, *lstHeaders;
  QPushButton *cmdAssign, *cmdUnAssign, *Finish, *CancelCommand;
};

}  // namespace quorvex
