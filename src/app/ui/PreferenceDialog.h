#pragma once

#include <QDialog>
#include <map>
#include <span>
#include <string>

#include "app/Preferences.h"
#include "core/Session.h"

class QFormLayout;
class QTabWidget;

namespace quorvex {

// A tabbed dialog over the rows of preference pages: one control for each, named by its kind and key, such as
// "txtundolevels". OK checks all rows, goes to the first that cannot be stored, and stores them.
class PreferenceDialog : public QDialog {
  Q_OBJECT

 public:
  PreferenceDialog(QWidget* parent, const QString& title, std::span<const PreferencePage> pages, Session& session,
                   Prompter& user);

  void accept() override;
  // Whether what was accepted is in the store, which the user was told where it is not.
  bool Stored() const { return stored_; }

 protected:
  // For further pages of a dialog, which stand before the buttons.
  QTabWidget& Pages() { return *pages_; }
  virtual int StoreMore() { return 0; }  // 0 or the file error's number
  virtual void RestoreMore() {}

  Session& session_;
  Prompter& user_;

 private:
  void AddPage(const PreferencePage& page);
  void AddRow(QFormLayout& form, const Preference& row);
  QWidget* AddPattern(const Preference& row, QWidget* page);
  QWidget* AddFile(const Preference& row, QWidget* page);
  void Show(const PreferenceEntries& entries);
  PreferenceEntries Typed() const;
  void GoTo(const Preference& row);

  std::span<const PreferencePage> rows_;
  QTabWidget* pages_;
  bool stored_ = true;
  std::map<std::string, QWidget*, std::less<>> controls_;  // by key
};

// The preferences of solves and their results.
class FilePref : public PreferenceDialog {
  Q_OBJECT

 public:
  FilePref(QWidget* parent, Session& session, Prompter& user);
};

}  // namespace quorvex
