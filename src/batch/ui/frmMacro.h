#pragma once

#include <QDialog>
#include <functional>

#include "batch/MacroCheck.h"
#include "macro/MacroWriter.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QRadioButton;
class QTabWidget;

namespace quorvex {

// The macro editor: the fields of a macro on five pages, over the models of a project. All that is handed over outlives
// the dialog.
class frmMacro : public QDialog {
  Q_OBJECT

 public:
  frmMacro(QWidget* parent, const MacroFields& fields, const ModelCollection& models, const Settings& settings,
           const LocaleText& locale, Prompter& user);

  // The fields as they stand.
  MacroFields Fields() const;

 private:
  QWidget* ConfigurationPage();
  QWidget* InputPage();
  QWidget* OutputPage();
  void AddPlots(QFormLayout& form);
  QWidget* DiagnosisPage();
  QWidget* ModelsPage();
  // Controls for the statement of a keyword, each bound to the field that the statement is written from: of its value,
  // of one word of its list, or, by NewUse, of whether it is written at all.
  QLineEdit* AddText(QFormLayout& form, const QString& label, const QString& keyword);
  QLineEdit* AddFile(QFormLayout& form, const QString& label, const QString& keyword, const QString& title,
                     bool toWrite);
  QComboBox* AddChoice(QFormLayout& form, const QString& label, const QString& keyword, const QString& name);
  QLineEdit* NewText(QWidget* parent, const QString& spoken, const QString& keyword);
  QPlainTextEdit* NewParagraph(QWidget* page, const QString& spoken, const QString& keyword, const QString& name,
                               int lines);
  QCheckBox* NewFlag(const QString& label, const QString& keyword);
  QCheckBox* NewWord(const QString& label, const QString& keyword, const QString& word, const QString& name);
  QCheckBox* NewUse(const QString& label, const QString& keyword);
  QCheckBox* NewCheck(const QString& label, const QString& name, bool MacroFields::*field);
  void Show(const MacroFields& fields);
  void EnableWhatCounts();

  void cmdView_clicked();
  void cmdExport_clicked();

  // A control and the field that it shows.
  template <typename Control, typename Value>
  struct Binding {
    Control* Shown;
    Value MacroFields::*Field;
  };

  const ModelCollection& models_;
  const Settings& settings_;
  const LocaleText& locale_;
  Prompter& user_;
  std::vector<Binding<QLineEdit, std::string>> texts_;
  std::vector<Binding<QPlainTextEdit, std::string>> paragraphs_;
  std::vector<Binding<QCheckBox, bool>> checks_;
  std::vector<Binding<QComboBox, std::string>> choices_;
  std::vector<QRadioButton*> optnModels;  // in the order of MacroModels
  std::vector<QWidget*> outputOptions_;   // that a project file has no use for
  QRadioButton* optnCentral;
  QRadioButton* optnExact;
  QListWidget* lstSource;
};

// A macro as it would be exported, and what was found in it. What a run of it would stumble over is looked for when the
// user asks, since that goes over all files that it names.
class frmViewMacro : public QDialog {
  Q_OBJECT

 public:
  frmViewMacro(QWidget* parent, const std::string& macro, const MacroFindings& findings,
               std::function<MacroCheck()> check);

 private:
  void cmdCheck_clicked();
  void GoToLineOf(int row);

  const std::function<MacroCheck()> check_;
  const int findings_;  // the first rows of the list, which are the editor's
  QPlainTextEdit* txtMacro;
  QListWidget* lstFindings;
  QLabel* lblCheck;
};

}  // namespace quorvex
