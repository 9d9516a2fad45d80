#include "import/ui/frmDataBase.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "import/ConnectString.h"
#include "import/OdbcSource.h"
#include "import/ui/ImportDialog.h"

namespace quorvex {
namespace {

class frmDataBase : public ImportDialog {
 public:
  frmDataBase(const SheetEdit& edit, ForSheet sheet, const DatabaseUse& use, QWidget* parent);

 private:
  QLayout* SourceFields();
  void ChooseSource(int index);
  void ConnectionChanged();
  void Connect();
  void ChooseTable(int index);

  const DatabaseUse use_;
  std::unique_ptr<DatabaseImport> import_;
  QComboBox* cboSource;
  QLineEdit *txtConnect, *txtUser, *txtPassword;
  QPushButton* cmdConnect;
  QComboBox* cboTable;
};

frmDataBase::frmDataBase(const SheetEdit& edit, ForSheet sheet, const DatabaseUse& use, QWidget* parent)
    : ImportDialog(edit, sheet, parent),
      use_(use),
      cboSource(new QComboBox),
      txtConnect(new QLineEdit),
      txtUser(new QLineEdit),
      txtPassword(new QLineEdit),
      cmdConnect(new QPushButton("&Connect")),
      cboTable(new QComboBox) {
  setObjectName("frmDataBase");
  setWindowTitle("Import from Database");
  LayOut(SourceFields());
  cboSource->addItem("By its connection string");
  // Without a driver manager there are none; the attempt to connect says why.
  if (const auto sources = ListDataSources())
    for (const std::string& source : *sources) cboSource->addItem(QString::fromStdString(source));
  connect(cboSource, &QComboBox::currentIndexChanged, this, &frmDataBase::ChooseSource);
  // Edited and not changed: choosing a source sets the text, too.
  connect(txtConnect, &QLineEdit::textEdited, this, [this] {
    const QSignalBlocker quiet(cboSource);
    cboSource->setCurrentIndex(0);
  });
  for (QLineEdit* field : {txtConnect, txtUser, txtPassword})
    connect(field, &QLineEdit::textChanged, this, &frmDataBase::ConnectionChanged);
  connect(cmdConnect, &QPushButton::clicked, this, &frmDataBase::Connect);
  connect(cboTable, &QComboBox::currentIndexChanged, this, &frmDataBase::ChooseTable);
  ConnectionChanged();
}

QLayout* frmDataBase::SourceFields() {
  struct Field {
    QWidget* Control;
    const char *Name, *Label;
    int Row, Column, Width;
  };
  const Field fields[] = {
      {cboSource, "cboSource", "&Data source:", 0, 0, 4},
      {txtConnect, "txtConnect", "Co&nnection string:", 1, 0, 4},
      {txtUser, "txtUser", "Us&er:", 2, 0, 1},
      {txtPassword, "txtPassword", "Pa&ssword:", 2, 2, 1},
      {cboTable, "cboTable", "&Table or view:", 3, 0, 4},
  };
  auto* grid = new QGridLayout;
  for (const Field& field : fields) {
    field.Control->setObjectName(field.Name);
    auto* label = new QLabel(field.Label);
    label->setBuddy(field.Control);
    field.Control->setAccessibleName(QString(field.Label).remove('&').remove(':'));
    grid->addWidget(label, field.Row, field.Column);
    grid->addWidget(field.Control, field.Row, field.Column + 1, 1, field.Width);
  }
  grid->addWidget(cmdConnect, 2, 4);
  cmdConnect->setObjectName("cmdConnect");
  txtConnect->setPlaceholderText("Driver=SQLite3;Database=/data/lab.db");
  txtPassword->setEchoMode(QLineEdit::Password);
  // The lists that drop down are windows of their own.
  for (QComboBox* combo : {cboSource, cboTable}) combo->view()->setAccessibleName(combo->accessibleName());
  return grid;
}

void frmDataBase::ChooseSource(int index) {
  txtConnect->setText(index == 0 ? "" : "DSN=" + cboSource->itemText(index));
}

// What is shown belongs to a connection that is no longer the one asked for.
void frmDataBase::ConnectionChanged() {
  Show(nullptr);
  import_ = nullptr;
  const QSignalBlocker quiet(cboTable);
  cboTable->clear();
  cboTable->setEnabled(false);
  cmdConnect->setEnabled(!txtConnect->text().trimmed().isEmpty());
  cmdConnect->setDefault(true);
}

void frmDataBase::Connect() {
  ConnectionChanged();
  const std::string source = txtConnect->text().toStdString();
  auto import = std::make_unique<DatabaseImport>(
      SourceName(source), ConnectString(source, txtUser->text().toStdString(), txtPassword->text().toStdString()),
      Edit().Sheet, use_);
  const Result<std::vector<DatabaseTable>> tables = import->Tables(&Edit().User);
  if (!tables) return TellFailure(tables.error(), Edit().User);
  import_ = std::move(import);
  {
    const QSignalBlocker quiet(cboTable);
    for (const DatabaseTable& table : *tables)
      cboTable->addItem(QString::fromStdString(table.Name), QString::fromStdString(table.Quoted));
  }
  cboTable->setEnabled(true);
  cboTable->setFocus();
  ChooseTable(0);
}

void frmDataBase::ChooseTable(int index) {
  import_->Table = cboTable->itemData(index).toString().toStdString();
  Show(import_.get());
}

}  // namespace

bool ImportTable(QWidget* over, const SheetEdit& edit, ForSheet sheet, const DatabaseUse& use) {
  return frmDataBase(edit, sheet, use, over).exec() == QDialog::Accepted;
}

}  // namespace quorvex
