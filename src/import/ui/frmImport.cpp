#include "import/ui/frmImport.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <utility>
#include <vector>

#include "import/TextImport.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "import/ui/ImportDialog.h"

namespace quorvex {
namespace {

class frmImport : public ImportDialog {
 public:
  frmImport(DataImport& import, const SheetEdit& edit, ForSheet sheet, QWidget* parent);

 private:
  void ShowReading() override;
  QLayout* Delimiters(TextImport& import);
  QLayout* Sheets(SpreadsheetImport& import);

  std::vector<std::pair<QCheckBox*, const bool*>> boxes_;  // with what they stand for
};

frmImport::frmImport(DataImport& import, const SheetEdit& edit, ForSheet sheet, QWidget* parent)
    : ImportDialog(edit, sheet, parent) {
  setObjectName("frmImport");
  setWindowTitle(QString::fromStdString(import.Title()));
  if (auto* text = dynamic_cast<TextImport*>(&import)) LayOut(Delimiters(*text));
  if (auto* spreadsheet = dynamic_cast<SpreadsheetImport*>(&import)) LayOut(Sheets(*spreadsheet));
  Show(&import);
}

QLayout* frmImport::Delimiters(TextImport& import) {
  struct Choice {
    const char *Name, *Text;
    bool TextImport::*Field;
  };
  constexpr Choice kDelimiters[] = {{"Tab", "&Tab", &TextImport::Tab},
                                    {"Comma", "&Comma", &TextImport::Comma},
                                    {"SemiColon", "Se&micolon", &TextImport::SemiColon},
                                    {"Space", "&Space", &TextImport::Space}};
  constexpr Choice kDuplicates = {"DupCheck", "Treat consecutive &delimeters as one", &TextImport::DupCheck};
  constexpr Choice kPoint = {"ckLocale", "&Interpret \".\" as decimal symbol", &TextImport::ckLocale};
  const auto box = [&](const Choice& choice) {
    auto* check = new QCheckBox(choice.Text);
    check->setObjectName(choice.Name);
    check->setChecked(import.*choice.Field);
    boxes_.emplace_back(check, &(import.*choice.Field));
    connect(check, &QCheckBox::toggled, this, [this, &import, field = choice.Field](bool checked) {
      import.*field = checked;
      Reload();
    });
    return check;
  };
  auto* group = new QGroupBox("Columns are separated by");
  group->setObjectName("Delimit_check");
  auto* grid = new QGridLayout(group);
  int column = 0;
  for (const Choice& choice : kDelimiters) grid->addWidget(box(choice), 0, column++);
  grid->addWidget(box(kDuplicates), 1, 0, 1, 4);
  auto* row = new QHBoxLayout;
  row->addWidget(group);
  row->addWidget(box(kPoint), 0, Qt::AlignVCenter);
  return row;
}

void frmImport::ShowReading() {
  for (const auto& [box, field] : boxes_) {
    const QSignalBlocker quiet(box);  // the file is read anew once, after all of them
    box->setChecked(*field);
  }
}

QLayout* frmImport::Sheets(SpreadsheetImport& import) {
  auto* cboSheet = new QComboBox;
  cboSheet->setObjectName("cboSheet");
  for (QWidget* widget : {static_cast<QWidget*>(cboSheet), static_cast<QWidget*>(cboSheet->view())})
    widget->setAccessibleName("Sheet");
  for (const std::string& sheet : import.Sheets()) cboSheet->addItem(QString::fromStdString(sheet));
  auto* label = new QLabel("S&heet:");
  label->setBuddy(cboSheet);
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(cboSheet, 1);
  connect(cboSheet, &QComboBox::currentIndexChanged, this, [this, &import, cboSheet](int index) {
    if (import.ChooseSheet(import.Sheets()[static_cast<std::size_t>(index)], Edit().User)) return Reload();
    // The sheet could not be read, so the list goes back to the one that is shown.
    const QSignalBlocker quiet(cboSheet);
    cboSheet->setCurrentText(QString::fromStdString(import.ChosenSheet()));
  });
  return row;
}

}  // namespace

bool ImportFile(QWidget* over, DataImport& import, const SheetEdit& edit, ForSheet sheet) {
  return frmImport(import, edit, sheet, over).exec() == QDialog::Accepted;
}

}  // namespace quorvex
