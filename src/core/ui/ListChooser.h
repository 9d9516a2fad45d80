#pragma once

#include <QDialog>
#include <QStringList>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace quorvex {

// Asks for one row of a list, which is searched by typing any part of it.
class ListChooser : public QDialog {
  Q_OBJECT

 public:
  // `label` stands over the list and says with its mnemonic what is chosen.
  ListChooser(QWidget* parent, const QString& title, const QString& label, const QStringList& rows);

  std::size_t Chosen() const;

 private:
  void Find(const QString& part);

  QLineEdit* txtFind;
  QListWidget* lstRows;
  QPushButton* cmdOK;
};

}  // namespace quorvex
