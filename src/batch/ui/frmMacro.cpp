#include "batch/ui/frmMacro.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "batch/MacroSetup.h"

namespace quorvex {
namespace {

// "Parameter &file:" as what a screen reader says.
QString Spoken(QString label) { return label.remove('&').remove(':'); }

QPlainTextEdit* Paragraph(QWidget* page, const char* name, const QString& spoken, int lines) {
  auto* text = new QPlainTextEdit(page);
  text->setObjectName(name);
  text->setAccessibleName(spoken);
  text->setTabChangesFocus(true);
  text->setFixedHeight(text->fontMetrics().lineSpacing() * lines + 2 * text->frameWidth() + 8);
  return text;
}

}  // namespace

frmMacro::frmMacro(QWidget* parent, const MacroFields& fields, const ModelCollection& models, const Settings& settings,
                   const LocaleText& locale, Prompter& user)
    : QDialog(parent), models_(models), settings_(settings), locale_(locale), user_(user) {
  setObjectName("frmMacro");
  setWindowTitle("Macro Editor");
  auto* pages = new QTabWidget(this);
  pages->setObjectName("SSTab");
  pages->addTab(ConfigurationPage(), "&Configuration");
  pages->addTab(InputPage(), "&Input");
  pages->addTab(OutputPage(), "&Output");
  pages->addTab(ModelsPage(), "&Models");

  auto* hint = new QLabel("A macro that was exported is run by: quorvex -runcfg FILE", this);
  hint->setObjectName("hint");
  hint->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* view = buttons->addButton("&View Macro", QDialogButtonBox::ActionRole);
  QPushButton* save = buttons->addButton("E&xport Macro...", QDialogButtonBox::ActionRole);
  view->setObjectName("cmdView");
  save->setObjectName("cmdExport");
  connect(view, &QPushButton::clicked, this, &frmMacro::cmdView_clicked);
  connect(save, &QPushButton::clicked, this, &frmMacro::cmdExport_clicked);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  for (auto* button : findChildren<QPushButton*>()) button->setAutoDefault(false);

  auto* column = new QVBoxLayout(this);
  column->addWidget(pages);
  column->addWidget(hint);
  column->addWidget(buttons);
  Show(fields);
}

QLineEdit* frmMacro::AddText(QFormLayout& form, const QString& label, const char* name) {
  auto* edit = new QLineEdit(form.parentWidget());
  edit->setObjectName(name);
  edit->setAccessibleName(Spoken(label));
  form.addRow(label, edit);
  return edit;
}

QLineEdit* frmMacro::AddFile(QFormLayout& form, const QString& label, const char* name, const QString& title,
                             bool toWrite) {
  auto* box = new QWidget(form.parentWidget());
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  auto* edit = new QLineEdit(box);
  edit->setObjectName(name);
  edit->setAccessibleName(Spoken(label));
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 40);
  auto* browse = new QPushButton("...", box);
  browse->setObjectName(QString("cmd") + (name + 3));
  browse->setAccessibleName(title);
  browse->setToolTip(title);
  browse->setFixedWidth(browse->fontMetrics().horizontalAdvance("......") + 12);
  connect(browse, &QPushButton::clicked, edit, [this, edit, title, toWrite] {
    const QString file = toWrite ? QFileDialog::getSaveFileName(this, title, edit->text())
                                 : QFileDialog::getOpenFileName(this, title, edit->text());
    if (!file.isEmpty()) edit->setText(file);
  });
  line->addWidget(edit, 1);
  line->addWidget(browse);
  auto* caption = new QLabel(label, form.parentWidget());
  caption->setBuddy(edit);
  form.addRow(caption, box);
  return edit;
}

QCheckBox* frmMacro::AddCheck(const QString& label, const char* name) {
  auto* box = new QCheckBox(label, this);
  box->setObjectName(name);
  return box;
}

QWidget* frmMacro::ConfigurationPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  auto* comments = Paragraph(page, "txtComments", "Comments", 4);
  form->addRow("Comme&nts:", comments);
  paragraphs_ = {{comments, &MacroFields::Comments}};

  auto* dde = AddCheck("Tell the &status to the calling program", "ckUseDDE");
  auto* progress = AddCheck("Show the &progress", "ckShowProgress");
  auto* messages = AddCheck("Show message &boxes", "ckShowMessageBox");
  form->addRow(new QLabel("Interactive:", page), dde);
  form->addRow("", progress);
  form->addRow("", messages);
  checks_ = {
      {dde, &MacroFields::UseDDE}, {progress, &MacroFields::ShowProgress}, {messages, &MacroFields::ShowMessageBox}};

  texts_ = {{AddText(*form, "&Regression tolerance:", "txtRegressionTolerance"), &MacroFields::RegressionTolerance},
            {AddText(*form, "M&aximum iterations:", "txtMaxIterations"), &MacroFields::MaxIterations},
            {AddText(*form, "&Unchanged iterations:", "txtUnchangedIterations"), &MacroFields::UnchangedIterations}};

  auto* richardson = new QRadioButton("Use Richar&dson's Extrapolation (Most Accurate)", page);
  richardson->setObjectName("optnRichardson");
  optnCentral = new QRadioButton("Use C&entral Difference (Quickest)", page);
  optnCentral->setObjectName("optnCentral");
  richardson->setChecked(true);
  form->addRow(new QLabel("Derivatives:", page), richardson);
  form->addRow("", optnCentral);
  return page;
}

QWidget* frmMacro::InputPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  texts_.push_back({AddFile(*form, "&Data file:", "txtDataFile", "Input Data File", false), &MacroFields::DataFile});
  texts_.push_back({AddText(*form, "&First line with data:", "txtDataFirstLine"), &MacroFields::DataFirstLine});
  texts_.push_back(
      {AddText(*form, "I&ndependent variables:", "txtIndependentVariables"), &MacroFields::IndependentVariables});
  texts_.push_back({AddText(*form, "Co&lumn order:", "txtColumnOrder"), &MacroFields::ColumnOrder});
  texts_.back().Shown->setPlaceholderText("Default, or a list such as x1, x2, y, sd");

  auto* weighted = AddCheck("The data have a column of &standard deviations", "ckWeighted");
  form->addRow("", weighted);
  const struct {
    const char *Label, *Name;
    bool MacroFields::*Field;
  } delimiters[] = {{"&Tab", "ckDelimitTab", &MacroFields::DelimitTab},
                    {"Comm&a", "ckDelimitComma", &MacroFields::DelimitComma},
                    {"S&emicolon", "ckDelimitSemicolon", &MacroFields::DelimitSemicolon},
                    {"S&pace", "ckDelimitSpace", &MacroFields::DelimitSpace}};
  auto* row = new QHBoxLayout;
  for (const auto& delimiter : delimiters) {
    auto* box = AddCheck(delimiter.Label, delimiter.Name);
    row->addWidget(box);
    checks_.push_back({box, delimiter.Field});
  }
  row->addStretch();
  form->addRow("Delimiters:", row);
  auto* consecutive = AddCheck("R&uns of delimiters count as one", "ckIgnoreConsecutive");
  auto* decimal = AddCheck("Read \".\" as the decimal point &whatever the locale says", "ckOverrideDecimal");
  form->addRow("", consecutive);
  form->addRow("", decimal);

  auto* missing = AddCheck("Mar&ker of missing data:", "ckMissingData");
  auto* marker = new QLineEdit(page);
  marker->setObjectName("txtMissingData");
  marker->setAccessibleName("Marker of missing data");
  form->addRow(missing, marker);
  auto* useParameters = AddCheck("Run once for each line of a ta&ble of parameters", "ckParameterFile");
  form->addRow("", useParameters);
  auto* parameters = AddFile(*form, "Pa&rameter file:", "txtParameterFile", "Parameter File", false);
  auto* useSql = AddCheck("Read from a database by a &query", "ckSQLQuery");
  form->addRow("", useSql);
  auto* sql = Paragraph(page, "txtSQLQuery", "Query", 3);
  form->addRow("Quer&y:", sql);

  checks_.insert(checks_.end(), {{weighted, &MacroFields::Weighted},
                                 {consecutive, &MacroFields::IgnoreConsecutive},
                                 {decimal, &MacroFields::OverrideDecimal},
                                 {missing, &MacroFields::UseMissingData},
                                 {useParameters, &MacroFields::UseParameterFile},
                                 {useSql, &MacroFields::UseSQLQuery}});
  texts_.push_back({marker, &MacroFields::MissingData});
  texts_.push_back({parameters, &MacroFields::ParameterFile});
  paragraphs_.push_back({sql, &MacroFields::SQLQuery});
  for (const auto& [box, field] :
       {std::pair<QCheckBox*, QWidget*>{missing, marker}, {useParameters, parameters->parentWidget()}, {useSql, sql}}) {
    field->setEnabled(false);
    connect(box, &QCheckBox::toggled, field, &QWidget::setEnabled);
  }
  return page;
}

QWidget* frmMacro::OutputPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  texts_.push_back({AddFile(*form, "Output &file:", "txtOutputFile", "Output File", true), &MacroFields::OutputFile});
  const auto addChoice = [&](const QString& label, const char* name, const QStringList& items,
                             std::string MacroFields::*field) {
    auto* box = new QComboBox(page);
    box->setObjectName(name);
    box->setAccessibleName(Spoken(label));
    box->addItems(items);
    form->addRow(label, box);
    choices_.push_back({box, field});
    return box;
  };
  auto* format =
      addChoice("Fo&rmat:", "cmbOutput", {"Quorvex", "Structured", "Spreadsheet"}, &MacroFields::OutputFormat);
  connect(format, &QComboBox::currentTextChanged, this, &frmMacro::EnableWhatCounts);
  auto* delimiter =
      addChoice("&Delimiter:", "cmbOutputDelimit", {"Tab", "Comma", "SemiColon", "Space"}, &MacroFields::OutputDelimit);
  QStringList keys;
  for (const std::string_view key : kSortKeys) keys << QString::fromUtf8(key.data(), qsizetype(key.size()));
  auto* sort = addChoice("&Sort by:", "cmbSortBy", keys, &MacroFields::SortKey);
  outputOptions_ = {delimiter, sort};

  const struct {
    const char *Label, *Name;
    bool MacroFields::*Field;
  } tables[] = {{"The input d&ata", "ckTableDataFile", &MacroFields::TableDataFile},
                {"Ca&lculated values", "ckTableCalcData", &MacroFields::TableCalcData},
                {"Resid&uals", "ckTableErrorData", &MacroFields::TableErrorData},
                {"Smallest and lar&gest residual", "ckTableMinMaxError", &MacroFields::TableMinMaxError},
                {"Fit s&tatistics", "ckOutputFitInfo", &MacroFields::OutputFitInfo}};
  QString caption = "Write:";
  for (const auto& table : tables) {
    auto* box = AddCheck(table.Label, table.Name);
    form->addRow(new QLabel(caption, page), box);
    caption.clear();
    checks_.push_back({box, table.Field});
    outputOptions_.push_back(box);
  }

  auto* useLog = AddCheck("&Write a log", "ckLogFile");
  form->addRow(new QLabel("Log:", page), useLog);
  auto* log = AddFile(*form, "Log fil&e:", "txtLogFile", "Log File", true);
  auto* summary = AddCheck("Only the summar&y", "ckLogSummaryOnly");
  form->addRow("", summary);
  texts_.push_back({log, &MacroFields::LogFile});
  checks_.push_back({useLog, &MacroFields::UseLogFile});
  checks_.push_back({summary, &MacroFields::LogSummaryOnly});
  for (QWidget* field : {log->parentWidget(), static_cast<QWidget*>(summary)}) {
    field->setEnabled(false);
    connect(useLog, &QCheckBox::toggled, field, &QWidget::setEnabled);
  }
  return page;
}

QWidget* frmMacro::ModelsPage() {
  auto* page = new QWidget(this);
  auto* column = new QVBoxLayout(page);
  auto* group = new QGroupBox("Models to write", page);
  auto* options = new QVBoxLayout(group);
  const char* labels[] = {"Models from the available &solution list", "&User defined models", "&Pre-defined models",
                          "&All models", "Models &ticked below"};
  for (const char* label : labels) {
    auto* option = new QRadioButton(label, group);
    option->setObjectName("optnModels" + QString::number(optnModels.size()));
    connect(option, &QRadioButton::toggled, this, &frmMacro::EnableWhatCounts);
    options->addWidget(option);
    optnModels.push_back(option);
  }
  lstSource = new QListWidget(page);
  lstSource->setObjectName("lstSource");
  lstSource->setAccessibleName("Models of the project");
  lstSource->setUniformItemSizes(true);
  for (const auto& model : models_) {
    auto* item = new QListWidgetItem(QString::fromStdString(model->id), lstSource);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
  }
  if (lstSource->count() > 0) lstSource->setCurrentRow(0);
  auto* caption = new QLabel("Mode&ls of the project:", page);
  caption->setBuddy(lstSource);
  column->addWidget(group);
  column->addWidget(caption);
  column->addWidget(lstSource, 1);
  return page;
}

void frmMacro::Show(const MacroFields& fields) {
  for (const auto& text : texts_) text.Shown->setText(QString::fromStdString(fields.*text.Field));
  for (const auto& text : paragraphs_)
    text.Shown->setPlainText(QString::fromStdString(fields.*text.Field).remove('\r'));
  for (const auto& check : checks_) check.Shown->setChecked(fields.*check.Field);
  for (const auto& choice : choices_) choice.Shown->setCurrentText(QString::fromStdString(fields.*choice.Field));
  if (fields.CentralDifference) optnCentral->setChecked(true);
  optnModels[static_cast<std::size_t>(fields.Models)]->setChecked(true);
  for (int row = 0; row < lstSource->count(); ++row)
    for (const std::string& id : fields.TickedModels)
      if (lstSource->item(row)->text().toStdString() == id) lstSource->item(row)->setCheckState(Qt::Checked);
  EnableWhatCounts();
}

MacroFields frmMacro::Fields() const {
  MacroFields fields;
  for (const auto& text : texts_) fields.*text.Field = text.Shown->text().toStdString();
  for (const auto& text : paragraphs_) fields.*text.Field = text.Shown->toPlainText().toStdString();
  for (const auto& check : checks_) fields.*check.Field = check.Shown->isChecked();
  for (const auto& choice : choices_) fields.*choice.Field = choice.Shown->currentText().toStdString();
  fields.CentralDifference = optnCentral->isChecked();
  for (std::size_t i = 0; i < optnModels.size(); ++i)
    if (optnModels[i]->isChecked()) fields.Models = static_cast<MacroModels>(i);
  for (int row = 0; row < lstSource->count(); ++row)
    if (lstSource->item(row)->checkState() == Qt::Checked)
      fields.TickedModels.push_back(lstSource->item(row)->text().toStdString());
  return fields;
}

void frmMacro::EnableWhatCounts() {
  const MacroFields fields = Fields();
  for (QWidget* option : outputOptions_) option->setEnabled(fields.OutputFormat != "Quorvex");
  lstSource->setEnabled(fields.Models == MacroModels::Ticked);
}

void frmMacro::cmdView_clicked() {
  const MacroFields fields = Fields();
  frmViewMacro(this, BuildMacroText(fields, models_, settings_, locale_), CheckMacro(fields, models_, locale_)).exec();
}

void frmMacro::cmdExport_clicked() { ExportMacro(Fields(), models_, settings_, locale_, user_); }

frmViewMacro::frmViewMacro(QWidget* parent, const std::string& macro, const MacroFindings& findings) : QDialog(parent) {
  setObjectName("frmViewMacro");
  setWindowTitle("View Macro");
  auto* text = new QPlainTextEdit(QString::fromStdString(macro).remove('\r'), this);
  text->setObjectName("txtMacro");
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setMinimumSize(text->fontMetrics().averageCharWidth() * 80, text->fontMetrics().lineSpacing() * 18);
  auto* list = new QListWidget(this);
  list->setObjectName("lstFindings");
  list->setWordWrap(true);
  list->setMaximumHeight(list->fontMetrics().lineSpacing() * 9);
  for (const std::string& line : findings.Lines) list->addItem(QString::fromStdString(line));
  if (list->count() > 0) list->setCurrentRow(0);
  auto* count = new QLabel(QString::fromStdString(findings.Count()), this);
  count->setObjectName("lblCount");
  auto* textCaption = new QLabel("&Macro:", this);
  textCaption->setBuddy(text);
  text->setAccessibleName("Macro");
  auto* listCaption = new QLabel("&Warnings and errors:", this);
  listCaption->setBuddy(list);
  list->setAccessibleName("Warnings and errors");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* column = new QVBoxLayout(this);
  column->addWidget(textCaption);
  column->addWidget(text, 1);
  column->addWidget(listCaption);
  column->addWidget(list);
  column->addWidget(count);
  column->addWidget(buttons);
}

}  // namespace quorvex
