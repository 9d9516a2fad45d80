#include "batch/ui/frmMacro.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>
#include <QTextBlock>
#include <algorithm>
#include <utility>

#include "core/ui/BusyCursor.h"
#include "core/ui/ChooseFiles.h"
#include "macro/MacroStatements.h"

namespace quorvex {
namespace {

// "Parameter &file:" as what a screen reader says.
QString Spoken(QString label) { return label.remove('&').remove(':'); }

const MacroStatement& Statement(const QString& keyword) { return *FindStatement(keyword.toStdString()); }

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

// The pages are as high as the highest; the rows of the others stay together.
void LeaveRoomBelow(QFormLayout& form) {
  form.addItem(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding));
}

// Scrolls where the screen is too low for the page.
class ScrolledPage final : public QScrollArea {
 public:
  explicit ScrolledPage(QWidget* page) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(page);
    page->setAutoFillBackground(false);  // the tabs have a background of their own
    viewport()->setAutoFillBackground(false);
  }
  QSize sizeHint() const override { return widget()->sizeHint(); }
};

}  // namespace

frmMacro::frmMacro(QWidget* parent, const MacroFields& fields, const ModelCollection& models, const Settings& settings,
                   const LocaleText& locale, Prompter& user)
    : QDialog(parent), models_(models), settings_(settings), locale_(locale), user_(user) {
  setObjectName("frmMacro");
  setWindowTitle("Macro Editor");
  auto* pages = new QTabWidget(this);
  pages->setObjectName("SSTab");
  pages->addTab(new ScrolledPage(ConfigurationPage()), "&Configuration");
  pages->addTab(new ScrolledPage(InputPage()), "&Input");
  pages->addTab(new ScrolledPage(OutputPage()), "&Output");
  pages->addTab(new ScrolledPage(DiagnosisPage()), "Dia&gnosis");
  pages->addTab(new ScrolledPage(ModelsPage()), "&Models");

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
  // Else Enter in any field would press a button.
  for (auto* button : findChildren<QPushButton*>()) button->setAutoDefault(false);

  auto* column = new QVBoxLayout(this);
  column->addWidget(pages);
  column->addWidget(hint);
  column->addWidget(buttons);
  Show(fields);
  constexpr int kAround = 60;  // for the frame and title of the window
  resize(sizeHint().boundedTo(screen()->availableSize() - QSize(0, kAround)));
}

QLineEdit* frmMacro::NewText(QWidget* parent, const QString& spoken, const QString& keyword) {
  auto* edit = new QLineEdit(parent);
  edit->setObjectName("txt" + keyword);
  edit->setAccessibleName(spoken);
  texts_.push_back({edit, TypedField(Statement(keyword))});
  return edit;
}

QLineEdit* frmMacro::AddText(QFormLayout& form, const QString& label, const QString& keyword) {
  QLineEdit* edit = NewText(form.parentWidget(), Spoken(label), keyword);
  form.addRow(label, edit);
  return edit;
}

QLineEdit* frmMacro::AddFile(QFormLayout& form, const QString& label, const QString& keyword, const QString& title,
                             bool toWrite) {
  auto* box = new QWidget(form.parentWidget());
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  QLineEdit* edit = NewText(box, Spoken(label), keyword);
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 40);
  auto* browse = new QPushButton("...", box);
  browse->setObjectName("cmd" + keyword);
  browse->setAccessibleName(title);
  browse->setToolTip(title);
  browse->setFixedWidth(browse->fontMetrics().horizontalAdvance("......") + 12);
  connect(browse, &QPushButton::clicked, edit, [this, edit, title, toWrite] {
    const auto mode = toWrite ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen;
    if (const auto file = ChooseFile(this, title, edit->text(), {}, user_, mode)) edit->setText(*file);
  });
  line->addWidget(edit, 1);
  line->addWidget(browse);
  box->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);  // beside its caption, whatever room a page has
  auto* caption = new QLabel(label, form.parentWidget());
  caption->setBuddy(edit);
  form.addRow(caption, box);
  return edit;
}

QPlainTextEdit* frmMacro::NewParagraph(QWidget* page, const QString& spoken, const QString& keyword,
                                       const QString& name, int lines) {
  auto* text = new QPlainTextEdit(page);
  text->setObjectName(name);
  text->setAccessibleName(spoken);
  // Tab leads on as in all other fields; a statement could not hold it anyway.
  text->setTabChangesFocus(true);
  text->setFixedHeight(text->fontMetrics().lineSpacing() * lines + 2 * text->frameWidth() + 8);
  paragraphs_.push_back({text, TypedField(Statement(keyword))});
  return text;
}

QCheckBox* frmMacro::NewCheck(const QString& label, const QString& name, bool MacroFields::*field) {
  auto* box = new QCheckBox(label, this);
  box->setObjectName(name);
  checks_.push_back({box, field});
  return box;
}

QCheckBox* frmMacro::NewFlag(const QString& label, const QString& keyword) {
  return NewCheck(label, "ck" + keyword, std::get<FlagValue>(Statement(keyword).Value).Ticked);
}

QCheckBox* frmMacro::NewUse(const QString& label, const QString& keyword) {
  return NewCheck(label, "ck" + keyword, Statement(keyword).Only);
}

QCheckBox* frmMacro::NewWord(const QString& label, const QString& keyword, const QString& word, const QString& name) {
  const std::span<const MacroWord> words = std::get<WordsValue>(Statement(keyword).Value).Words;
  return NewCheck(label, name, std::ranges::find(words, word.toStdString(), &MacroWord::Word)->Ticked);
}

QComboBox* frmMacro::AddChoice(QFormLayout& form, const QString& label, const QString& keyword, const QString& name) {
  const auto& choice = std::get<ChoiceValue>(Statement(keyword).Value);
  auto* box = new QComboBox(form.parentWidget());
  box->setObjectName(name);
  box->setAccessibleName(Spoken(label));
  for (const std::string_view word : choice.Words) box->addItem(Text(word));
  box->setEditable(!choice.Otherwise.empty());
  form.addRow(label, box);
  choices_.push_back({box, choice.Chosen});
  return box;
}

QWidget* frmMacro::ConfigurationPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  form->addRow("Comme&nts:", NewParagraph(page, "Comments", "Comment", "txtComments", 4));

  auto* dde = NewWord("Tell the &status to the calling program", "HandShake", "UseDDE", "ckUseDDE");
  auto* progress = NewWord("Show the &progress", "HandShake", "ShowProgress", "ckShowProgress");
  auto* messages = NewWord("Show message &boxes", "HandShake", "ShowMessageBox", "ckShowMessageBox");
  form->addRow(new QLabel("Interactive:", page), dde);
  form->addRow("", progress);
  form->addRow("", messages);

  AddText(*form, "&Regression tolerance:", "RegressionTolerance");
  AddText(*form, "M&aximum iterations:", "MaxIterations");
  AddText(*form, "&Unchanged iterations:", "UnchangedIterations");

  auto* richardson = new QRadioButton("Use Richar&dson's Extrapolation (Most Accurate)", page);
  richardson->setObjectName("optnRichardson");
  optnCentral = new QRadioButton("Use C&entral Difference (Quickest)", page);
  optnCentral->setObjectName("optnCentral");
  richardson->setChecked(true);
  form->addRow(new QLabel("Derivatives:", page), richardson);
  form->addRow("", optnCentral);
  optnExact = new QRadioButton("Use Exact Derivatives (b&y the Rules of Calculus)", page);
  optnExact->setObjectName("optnExact");
  form->addRow("", optnExact);
  auto* threads = AddText(*form, "Threads at &work:", "Threads");
  threads->setPlaceholderText("As many as the process may use, or a number");
  threads->setToolTip("The answers are the same for any number");
  form->addRow("", NewFlag("&Try harder where a search fails", "TryHarder"));
  auto* deviations = AddChoice(*form, "T&he data's deviations are:", "StandardDeviations", "cmbStandardDeviations");
  deviations->setToolTip(
      "Relative standard deviations tell which points count more, absolute ones are the errors of the points");
  auto* loss = AddChoice(*form, "&Loss of a residual:", "Loss", "cmbLoss");
  loss->setToolTip("All but squares keep a few wild points from deciding");
  auto* scale = AddText(*form, "Scale o&f the loss:", "LossScale");
  scale->setPlaceholderText("From the residuals, or a number");
  scale->setToolTip("The residual beyond which a point counts less, in the unit of Y");
  connect(loss, &QComboBox::currentIndexChanged, scale, [scale](int kind) { scale->setEnabled(kind > 0); });
  scale->setEnabled(false);
  LeaveRoomBelow(*form);
  return page;
}

QWidget* frmMacro::InputPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  AddFile(*form, "&Data file:", "DataFile", "Input Data File", false);
  AddText(*form, "&First line with data:", "DataFirstLine");
  AddText(*form, "I&ndependent variables:", "IndependentVariables");
  AddText(*form, "Co&lumn order:", "ColumnOrder")->setPlaceholderText("Default, or a list such as x1, x2, y, sd");

  form->addRow("", NewFlag("The data have a column of &standard deviations", "Weighted"));
  const struct {
    const char *Label, *Word, *Name;
  } delimiters[] = {{"&Tab", "Tab", "ckDelimitTab"},
                    {"Comm&a", "Comma", "ckDelimitComma"},
                    {"S&emicolon", "SemiColon", "ckDelimitSemicolon"},
                    {"S&pace", "Space", "ckDelimitSpace"}};
  auto* row = new QHBoxLayout;
  for (const auto& delimiter : delimiters)
    row->addWidget(NewWord(delimiter.Label, "InputDelimit", delimiter.Word, delimiter.Name));
  row->addStretch();
  form->addRow("Delimiters:", row);
  auto* consecutive =
      NewWord("R&uns of delimiters count as one", "InputDelimit", "IgnoreConsecutive", "ckIgnoreConsecutive");
  auto* decimal = NewFlag("Read \".\" as the decimal point &whatever the locale says", "OverrideDecimal");
  form->addRow("", consecutive);
  form->addRow("", decimal);

  auto* missing = NewUse("Mar&ker of missing data:", "MissingData");
  auto* marker = NewText(page, "Marker of missing data", "MissingData");
  form->addRow(missing, marker);
  form->addRow("", NewFlag("A series: run once for eac&h column of Y", "DataSeries"));
  auto* useParameters = NewUse("Run once for each line of a ta&ble of parameters", "ParameterFile");
  form->addRow("", useParameters);
  auto* parameters = AddFile(*form, "Pa&rameter file:", "ParameterFile", "Parameter File", false);
  auto* each = NewFlag("Solve at each line, whatever changes", "SolveEachRun");
  each->setAccessibleDescription("Where only outputs change, too");  // all letters have gone to others
  form->addRow("", each);
  auto* useSql = NewUse("Read from a database by a &query", "SQLQuery");
  form->addRow("", useSql);
  auto* sql = NewParagraph(page, "Query", "SQLQuery", "txtSQLQuery", 3);
  form->addRow("Quer&y:", sql);

  for (const auto& [box, field] : {std::pair<QCheckBox*, QWidget*>{missing, marker},
                                   {useParameters, parameters->parentWidget()},
                                   {useParameters, each},
                                   {useSql, sql}}) {
    field->setEnabled(false);
    connect(box, &QCheckBox::toggled, field, &QWidget::setEnabled);
  }
  LeaveRoomBelow(*form);
  return page;
}

QWidget* frmMacro::OutputPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  AddFile(*form, "Output &file:", "OutputFile", "Output File", true);
  AddFile(*form, "A line of &JSON a run:", "ResultFile", "Result File", true);
  auto* format = AddChoice(*form, "Fo&rmat:", "OutputFormat", "cmbOutput");
  connect(format, &QComboBox::currentTextChanged, this, &frmMacro::EnableWhatCounts);
  auto* delimiter = AddChoice(*form, "&Delimiter:", "OutputDelimit", "cmbOutputDelimit");
  auto* sort = AddChoice(*form, "&Sort by:", "SortKey", "cmbSortBy");
  outputOptions_ = {delimiter, sort};

  QString caption = "Write:";
  const auto addOption = [&](QCheckBox* box) {
    form->addRow(new QLabel(caption, page), box);
    caption.clear();
    outputOptions_.push_back(box);
  };
  addOption(NewWord("The input d&ata", "TableOutput", "DataFile", "ckTableDataFile"));
  addOption(NewWord("Ca&lculated values", "TableOutput", "CalcData", "ckTableCalcData"));
  addOption(NewWord("Resid&uals", "TableOutput", "ErrorData", "ckTableErrorData"));
  auto* minMax = NewWord("Smallest and largest residual", "TableOutput", "MinMaxError", "ckTableMinMaxError");
  minMax->setAccessibleDescription("Written for each model");  // all letters have gone to others
  addOption(minMax);
  addOption(NewFlag("Fit s&tatistics", "OutputFitInfo"));

  form->addRow(new QLabel("Status:", page), NewFlag("Fail where no model can &be solved (410)", "RequireSolution"));
  form->addRow("", NewFlag("Tell of models that fail (&420) or reach the limit (430)", "StrictStatus"));

  auto* useLog = NewUse("&Write a log", "LogFile");
  form->addRow(new QLabel("Log:", page), useLog);
  auto* log = AddFile(*form, "Log fil&e:", "LogFile", "Log File", true);
  auto* summary = NewFlag("Only the summar&y", "LogSummaryOnly");
  form->addRow("", summary);
  for (QWidget* field : {log->parentWidget(), static_cast<QWidget*>(summary)}) {
    field->setEnabled(false);
    connect(useLog, &QCheckBox::toggled, field, &QWidget::setEnabled);
  }
  AddPlots(*form);
  LeaveRoomBelow(*form);
  return page;
}

void frmMacro::AddPlots(QFormLayout& form) {
  QWidget* page = form.parentWidget();
  auto* use = NewUse("Draw &plots", "PlotFile");
  form.addRow(new QLabel("Plots:", page), use);
  auto* names = NewParagraph(page, "Names of plots", "PlotFile", "txtPlotFile", 2);
  names->setPlaceholderText("A name on each line, such as fit.svg, fit.pdf or fit.plt");
  form.addRow("&Names:", names);
  auto* look = AddFile(form, "Template (&qv2, qv3):", "PlotTemplate", "Plot Template", false);
  auto* models = AddChoice(form, "Models s&hown:", "PlotModels", "cmbPlotModels");
  auto* kind = AddChoice(form, "&Kind:", "PlotKind", "cmbPlotKind");
  for (QWidget* field : std::initializer_list<QWidget*>{names, look->parentWidget(), models, kind}) {
    field->setEnabled(false);
    connect(use, &QCheckBox::toggled, field, &QWidget::setEnabled);
  }
  auto* useCode = NewUse("The best model as code", "CodeFile");
  useCode->setAccessibleDescription("As a function in the language that a name ends in");  // all letters have gone
  form.addRow(new QLabel("Code:", page), useCode);
  auto* codes = NewParagraph(page, "Names of code", "CodeFile", "txtCodeFile", 2);
  codes->setPlaceholderText("A name on each line, such as fit.py, fit.r or fit.js");
  form.addRow("", codes);
  codes->setEnabled(false);
  connect(useCode, &QCheckBox::toggled, codes, &QWidget::setEnabled);
  auto* reports = NewParagraph(page, "Names of reports", "ReportFile", "txtReportFile", 2);
  reports->setPlaceholderText("A name on each line, such as fit.html, fit.pdf, fit.tex or fit.ipynb");
  form.addRow(new QLabel("Reports:", page), reports);
}

QWidget* frmMacro::DiagnosisPage() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  auto* use = NewFlag("&Tell of each answer whether it is to be trusted", "Diagnostics");
  form->addRow(use);
  auto* limits = AddChoice(*form, "&Limits of coefficients:", "Limits", "cmbLimits");
  auto* samples = AddText(*form, "&Bootstrap samples:", "Bootstrap");
  samples->setPlaceholderText("None, or a number such as 1000");
  auto* kind = AddChoice(*form, "&Resampled:", "BootstrapKind", "cmbBootstrapKind");
  auto* parts = AddText(*form, "&Parts left out in turn:", "CrossValidation");
  parts->setPlaceholderText("None, or a number such as 10");
  for (QWidget* field : std::initializer_list<QWidget*>{limits, samples, kind, parts}) {
    field->setEnabled(false);
    connect(use, &QCheckBox::toggled, field, &QWidget::setEnabled);
  }
  limits->setToolTip("Profile follows the sum of squares to both sides, which holds where the two differ");
  samples->setToolTip("Limits by so many fits to resampled data");
  kind->setToolTip("The residuals about the curve, or whole points");
  parts->setToolTip("Cross-validation: how well the other points foretell each part");

  auto* curve = NewWord("Limits of the c&urve", "TableOutput", "Confidence", "ckTableConfidence");
  auto* point = NewWord("Limits of a &new point", "TableOutput", "Prediction", "ckTablePrediction");
  form->addRow(new QLabel("Columns at 95 %:", page), curve);
  form->addRow("", point);
  outputOptions_.insert(outputOptions_.end(), {curve, point});
  auto* bands = AddChoice(*form, "B&ands of plots:", "PlotBands", "cmbPlotBands");
  bands->setToolTip("What is shaded around the curves: where they lie, or where a new point would");
  bands->setEnabled(false);
  connect(findChild<QCheckBox*>("ckPlotFile"), &QCheckBox::toggled, bands, &QWidget::setEnabled);
  LeaveRoomBelow(*form);
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
  if (fields.Derivatives == "CentralDifference") optnCentral->setChecked(true);
  if (fields.Derivatives == "Exact") optnExact->setChecked(true);
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
  fields.Derivatives = optnCentral->isChecked() ? "CentralDifference" : optnExact->isChecked() ? "Exact" : "Richardson";
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
  const std::string macro = BuildMacroText(fields, models_, settings_, locale_);
  frmViewMacro(this, macro, CheckMacro(fields, models_, locale_), [&] {
    return CheckMacroText(macro, {settings_, locale_});
  }).exec();
}

void frmMacro::cmdExport_clicked() { ExportMacro(Fields(), models_, settings_, locale_, user_); }

frmViewMacro::frmViewMacro(QWidget* parent, const std::string& macro, const MacroFindings& findings,
                           std::function<MacroCheck()> check)
    : QDialog(parent), check_(std::move(check)), findings_(static_cast<int>(findings.Lines.size())) {
  setObjectName("frmViewMacro");
  setWindowTitle("View Macro");
  txtMacro = new QPlainTextEdit(QString::fromStdString(macro).remove('\r'), this);
  txtMacro->setObjectName("txtMacro");
  txtMacro->setReadOnly(true);
  txtMacro->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  txtMacro->setTabChangesFocus(true);
  txtMacro->setLineWrapMode(QPlainTextEdit::NoWrap);
  const QFontMetrics letters = txtMacro->fontMetrics();
  txtMacro->setMinimumSize(letters.averageCharWidth() * 60, letters.lineSpacing() * 8);
  lstFindings = new QListWidget(this);
  lstFindings->setObjectName("lstFindings");
  lstFindings->setWordWrap(true);
  lstFindings->setMinimumHeight(lstFindings->fontMetrics().lineSpacing() * 5);
  for (const std::string& line : findings.Lines) lstFindings->addItem(QString::fromStdString(line));
  if (lstFindings->count() > 0) lstFindings->setCurrentRow(0);
  connect(lstFindings, &QListWidget::currentRowChanged, this, &frmViewMacro::GoToLineOf);
  auto* count = new QLabel(QString::fromStdString(findings.Count()), this);
  count->setObjectName("lblCount");
  lblCheck = new QLabel("Check looks at the files that the macro names, too, and runs nothing.", this);
  lblCheck->setObjectName("lblCheck");
  auto* textCaption = new QLabel("&Macro:", this);
  textCaption->setBuddy(txtMacro);
  txtMacro->setAccessibleName("Macro");
  auto* listCaption = new QLabel("&Warnings and errors:", this);
  listCaption->setBuddy(lstFindings);
  lstFindings->setAccessibleName("Warnings and errors");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* run = buttons->addButton("Chec&k (F8)", QDialogButtonBox::ActionRole);
  run->setObjectName("cmdCheck");
  run->setAutoDefault(false);
  connect(run, &QPushButton::clicked, this, &frmViewMacro::cmdCheck_clicked);
  connect(new QShortcut(QKeySequence(Qt::Key_F8), this), &QShortcut::activated, run, &QPushButton::click);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* column = new QVBoxLayout(this);
  column->addWidget(textCaption);
  column->addWidget(txtMacro, 3);
  column->addWidget(listCaption);
  column->addWidget(lstFindings, 1);
  column->addWidget(count);
  column->addWidget(lblCheck);
  column->addWidget(buttons);
  resize(sizeHint().expandedTo(QSize(letters.averageCharWidth() * 90, letters.lineSpacing() * 32)));
}

void frmViewMacro::cmdCheck_clicked() {
  MacroCheck check;
  {
    const BusyCursor busy;
    check = check_();
  }
  // A list of more would be read by nobody.
  constexpr std::size_t kMostShown = 1000;
  while (lstFindings->count() > findings_) delete lstFindings->takeItem(lstFindings->count() - 1);
  const std::size_t shown = std::min(check.Faults.size(), kMostShown);
  for (std::size_t i = 0; i < shown; ++i) {
    auto* item = new QListWidgetItem(QString::fromStdString(ShownFault(check.Faults[i])), lstFindings);
    item->setData(Qt::UserRole, static_cast<int>(check.Faults[i].Line));
  }
  QString count = QString::fromStdString(check.Count());
  if (shown < check.Faults.size()) count += QString(" The first %1 are listed.").arg(shown);
  lblCheck->setText(count);
  if (shown == 0) return;
  lstFindings->setFocus();
  lstFindings->setCurrentRow(findings_);
  GoToLineOf(findings_);
}

void frmViewMacro::GoToLineOf(int row) {
  const QListWidgetItem* const item = lstFindings->item(row);
  const int line = item == nullptr ? 0 : item->data(Qt::UserRole).toInt();
  if (line < 1) return;
  QTextCursor cursor(txtMacro->document()->findBlockByNumber(line - 1));
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  txtMacro->setTextCursor(cursor);
  txtMacro->centerCursor();
}

}  // namespace quorvex
