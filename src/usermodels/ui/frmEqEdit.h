#pragma once

#include <QDialog>
#include <array>

#include "core/ui/MessageBoxPrompter.h"
#include "usermodels/UserModelDraft.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace quorvex {

// The editor of a user-defined model. Accepted: the project, which outlives it, has the model.
class frmEqEdit : public QDialog {
  Q_OBJECT

 public:
  // Begins with `start`: a new model, or the present text of `edited`.
  frmEqEdit(QWidget* parent, Project& project, const UserModelDraft& start, const ModelClass* edited);

  // The model of the project, once accepted.
  ModelClass& Model() const { return *stored_; }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void LayOut();
  void Init(const UserModelDraft& draft);
  UserModelDraft Draft() const;
  void ShowCount();
  void ShowStatus();
  void Refuse(const ModelCheck& check);

  void cmdAdd_clicked();
  void cmdRemove_clicked();
  void cmdTemplate_clicked();
  void cmdCopyModel_clicked();
  void cmdPartial_clicked();
  void cmdRules_clicked();
  void cmdOK_clicked();

  Project& project_;
  const ModelClass* edited_;
  ModelClass* stored_ = nullptr;
  MessageBoxPrompter user_;
  UserModelDraft draft_;   // for the rules and derivatives; the rest is in the boxes
  std::size_t count_ = 1;  // lines that are shown
  std::size_t line_ = 0;   // the one that had the focus last

  QLineEdit* TxtID;
  std::array<QLabel*, kMostFunctionLines> lblFn;
  std::array<QLineEdit*, kMostFunctionLines> TxtFn;
  QLabel* lblStatus;
  QPlainTextEdit* TxtDesc;
  QPushButton *cmdAdd, *cmdRemove;
};

}  // namespace quorvex
