#include "import/ui/ReadingControls.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include "import/TextImport.h"
#include "import/spreadsheet/SpreadsheetImport.h"

namespace quorvex {

ReadingControls::ReadingControls(DataImport& import, Prompter& user, std::function<void()> reload)
    : user_(user), reload_(std::move(reload)) {
  if (auto* text = dynamic_cast<TextImport*>(&import)) layout_ = Delimiters(*text);
  if (auto* spreadsheet = dynamic_cast<SpreadsheetImport*>(&import)) layout_ = Sheets(*spreadsheet);
}

QLayout* ReadingControls::Delimiters(TextImport& import) {
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
    QObject::connect(check, &QCheckBox::toggled, check, [this, &import, field = choice.Field](bool checked) {
      import.*field = checked;
      reload_();
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

void ReadingControls::ShowReading() {
  for (const auto& [box, field] : boxes_) {
    const QSignalBlocker quiet(box);  // the file is read anew once, after all of them
    box->setChecked(*field);
  }
}

QLayout* ReadingControls::Sheets(SpreadsheetImport& import) {
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
  QObject::connect(cboSheet, &QComboBox::currentIndexChanged, cboSheet, [this, &import, cboSheet](int index) {
    if (import.ChooseSheet(import.Sheets()[static_cast<std::size_t>(index)], user_)) return reload_();
    // The sheet could not be read, so the list goes back to the one that is shown.
    const QSignalBlocker quiet(cboSheet);
    cboSheet->setCurrentText(QString::fromStdString(import.ChosenSheet()));
  });
  return row;
}

}  // namespace quorvex
