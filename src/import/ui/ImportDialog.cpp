#include "import/ui/ImportDialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "core/SolveData.h"
#include "core/ui/Controls.h"
#include "import/ui/PreviewModel.h"

namespace quorvex {

ImportDialog::ImportDialog(const SheetEdit& edit, ForSheet sheet, QWidget* parent)
    : QDialog(parent),
      edit_(edit),
      kindChosen_(sheet != ForSheet::New),
      model_(new PreviewModel(edit.Locale, this)),
      DataPreview(Named(new QTableView, "DataPreview")),
      txtVariables(Named(new QSpinBox, "txtVariables")),
      UpDnStartRow(Named(new QSpinBox, "UpDnStartRow")),
      chkStDev(Named(new QCheckBox("Standard deviation of &Y"), "chkStDev")),
      ckMissingData(Named(new QCheckBox("Missing data is &written as"), "ckMissingData")),
      txtMissingData(Named(new QLineEdit, "txtMissingData")),
      ckHeadings(Named(new QCheckBox("Name the variables &by the headings"), "ckHeadings")),
      ckTextMissing(Named(new QCheckBox, "ckTextMissing")),
      ckComments(Named(new QCheckBox, "ckComments")),
      lblOffer(Named(new QLabel, "lblOffer")),
      cmdOffer(Named(new QPushButton("Read &otherwise"), "cmdOffer")),
      ckDayFirst(Named(new QCheckBox, "ckDayFirst")),
      lstColumns(Named(new QListWidget, "lstColumns")),
      lstHeaders(Named(new QListWidget, "lstHeaders")),
      cmdAssign(Named(new QPushButton("&Assign"), "cmdAssign")),
      cmdUnAssign(Named(new QPushButton("&Unassign"), "cmdUnAssign")),
      Finish(Named(new QPushButton("&Finish"), "Finish")),
      CancelCommand(Named(new QPushButton("Cance&l"), "CancelCommand")) {
  body_ = Body(sheet);
  // A sheet that nobody has begun takes the names; in one that is in use they are for the user to choose.
  const DataSheet& target = edit.Sheet;
  ckHeadings->setChecked(target.Cells.GridLastRow() == 0 &&
                         target.Headers == DefaultHeaders(target.IndependentVariables, target.HasStandardDeviation));
  connect(UpDnStartRow, &QSpinBox::valueChanged, this, [this] {
    startRowChosen_ = true;
    ShowChoices();
  });
  connect(ckMissingData, &QCheckBox::toggled, this, &ImportDialog::ShowChoices);
  connect(ckHeadings, &QCheckBox::toggled, this, &ImportDialog::ShowChoices);
  connect(ckTextMissing, &QCheckBox::toggled, this, &ImportDialog::ShowChoices);
  connect(ckComments, &QCheckBox::toggled, this, [this](bool checked) {
    import_->ckComments = checked;
    Reload();
  });
  connect(cmdOffer, &QPushButton::clicked, this, &ImportDialog::TakeOffer);
  connect(ckDayFirst, &QCheckBox::toggled, this, [this](bool checked) {
    import_->ckDayFirst = checked;
    ShowChoices();
  });
  connect(txtMissingData, &QLineEdit::textChanged, this, &ImportDialog::ShowChoices);
  connect(DataPreview->selectionModel(), &QItemSelectionModel::currentColumnChanged, this,
          [this](const QModelIndex& current) { lstColumns->setCurrentRow(current.column()); });
  connect(lstHeaders, &QListWidget::currentRowChanged, this, &ImportDialog::ShowAssignments);
  for (QListWidget* list : {lstColumns, lstHeaders})
    connect(list, &QListWidget::itemDoubleClicked, this, &ImportDialog::Assign);
  connect(cmdAssign, &QPushButton::clicked, this, &ImportDialog::Assign);
  connect(cmdUnAssign, &QPushButton::clicked, this, &ImportDialog::UnAssign);
  connect(Finish, &QPushButton::clicked, this, &ImportDialog::FinishImport);
  connect(CancelCommand, &QPushButton::clicked, this, &QDialog::reject);
}

// The controls come into the dialog from top to bottom, which is the order that Tab goes through them.
void ImportDialog::LayOut(QLayout* source) {
  auto* all = new QVBoxLayout(this);
  all->addLayout(source);
  all->addWidget(body_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(Finish);
  buttons->addWidget(CancelCommand);
  all->addLayout(buttons);
  for (QPushButton* button : {cmdAssign, cmdUnAssign, cmdOffer, CancelCommand}) button->setAutoDefault(false);
  resize(64 * fontMetrics().averageCharWidth() + 280, 40 * fontMetrics().height());
}

QWidget* ImportDialog::Body(ForSheet sheet) {
  DataPreview->setModel(model_);
  DataPreview->setAccessibleName("Preview");
  DataPreview->setSelectionMode(QAbstractItemView::SingleSelection);
  DataPreview->setTabKeyNavigation(false);
  DataPreview->horizontalHeader()->setAccessibleName("Columns");
  DataPreview->horizontalHeader()->setMinimumSectionSize(fontMetrics().horizontalAdvance("Column 100") + 16);
  DataPreview->horizontalHeader()->setMaximumSectionSize(40 * fontMetrics().averageCharWidth());
  DataPreview->horizontalHeader()->setResizeContentsPrecision(-1);  // all lines
  DataPreview->verticalHeader()->setAccessibleName("Lines");
  DataPreview->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  DataPreview->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  DataPreview->setMinimumHeight(7 * fontMetrics().height());
  UpDnStartRow->setRange(1, std::numeric_limits<int>::max());
  UpDnStartRow->findChild<QLineEdit*>()->setObjectName("ImportText");
  UpDnStartRow->setAccessibleName("First line of data");
  UpDnStartRow->setMinimumWidth(fontMetrics().horizontalAdvance("00000000") + 40);
  txtMissingData->setAccessibleName("Text of missing data");
  ckTextMissing->setAccessibleName("Read texts as missing");  // its words tell which they are
  ckComments->setAccessibleName("Skip comments");
  ckComments->setChecked(true);
  lblOffer->setTextFormat(Qt::PlainText);
  for (QWidget* widget : {static_cast<QWidget*>(ckTextMissing), static_cast<QWidget*>(ckComments),
                          static_cast<QWidget*>(lblOffer), static_cast<QWidget*>(cmdOffer)})
    widget->hide();  // until there is any of it

  ckDayFirst->setAccessibleName("Read the day first");
  ckDayFirst->hide();

  auto* choices = new QHBoxLayout;
  choices->addWidget(LabelFor(UpDnStartRow, "Fi&rst line of data:"));
  choices->addWidget(UpDnStartRow);
  choices->addSpacing(24);
  choices->addWidget(ckMissingData);
  choices->addWidget(txtMissingData, 1);

  txtVariables->setRange(1, kMostIndependentVariables);
  txtVariables->setValue(static_cast<int>(edit_.Sheet.IndependentVariables));
  txtVariables->setAccessibleName("Independent variables");
  chkStDev->setChecked(edit_.Sheet.HasStandardDeviation);
  connect(txtVariables, &QSpinBox::valueChanged, this, &ImportDialog::ChangeKind);
  connect(chkStDev, &QCheckBox::toggled, this, &ImportDialog::ChangeKind);

  auto* offer = new QHBoxLayout;
  offer->addWidget(lblOffer);
  offer->addWidget(cmdOffer);
  offer->addStretch();

  auto* body = new QWidget;
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addLayout(offer);
  rows->addWidget(LabelFor(DataPreview, "&Preview:"));
  rows->addWidget(DataPreview, 3);
  rows->addLayout(choices);
  rows->addWidget(ckComments);
  rows->addWidget(ckHeadings);
  rows->addWidget(ckTextMissing);
  rows->addWidget(ckDayFirst);
  QWidget* kind = Kind();
  kind->setVisible(sheet != ForSheet::InUse);
  rows->addWidget(kind);
  rows->addWidget(Lists(), 2);
  return body;
}

QWidget* ImportDialog::Kind() {
  auto* kind = new QWidget;
  auto* row = new QHBoxLayout(kind);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(LabelFor(txtVariables, "Independent variables (&X):"));
  row->addWidget(txtVariables);
  row->addSpacing(24);
  row->addWidget(chkStDev);
  row->addStretch();
  return kind;
}

// Nothing is assigned yet in the other sheet, and the line that the user has chosen stays.
void ImportDialog::ChangeKind() {
  kindChosen_ = true;
  edit_.Sheet = DataSheet(static_cast<std::size_t>(txtVariables->value()), chkStDev->isChecked());
  ShowSheet();
}

void ImportDialog::ProposeKind() {
  if (kindChosen_) return;
  edit_.Sheet = SheetForColumns(import_->Columns.lstColumns());
  const QSignalBlocker quietVariables(txtVariables), quietDeviation(chkStDev);
  txtVariables->setValue(static_cast<int>(edit_.Sheet.IndependentVariables));
  chkStDev->setChecked(edit_.Sheet.HasStandardDeviation);
  ShowSheet();
}

QWidget* ImportDialog::Lists() {
  auto* assign = new QVBoxLayout;
  assign->addStretch();
  assign->addWidget(cmdAssign);
  assign->addWidget(cmdUnAssign);
  assign->addStretch();
  auto* lists = new QWidget;
  auto* grid = new QGridLayout(lists);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(LabelFor(lstColumns, "Columns &of the source:"), 0, 0);
  grid->addWidget(lstColumns, 1, 0);
  grid->addLayout(assign, 1, 1);
  grid->addWidget(LabelFor(lstHeaders, "&Variables of the sheet:"), 0, 2);
  grid->addWidget(lstHeaders, 1, 2);
  lstColumns->setAccessibleName("Columns of the source");
  lstHeaders->setAccessibleName("Variables of the sheet");
  lists->setMinimumHeight(7 * fontMetrics().height());
  return lists;
}

void ImportDialog::Show(DataImport* import) {
  import_ = import;
  startRowChosen_ = false;
  body_->setEnabled(import != nullptr);
  Finish->setEnabled(import != nullptr);
  Finish->setDefault(import != nullptr);
  if (import == nullptr) {
    lstHeaders->clear();
    lstColumns->clear();
    model_->Show({});
    return;
  }
  const std::size_t comments = import->CommentCount();
  if (comments > 0)
    ckComments->setText(QString::fromStdString(import->CommentSentence()).replace('&', "&&") +
                        (comments == 1 ? " S&kip it" : " S&kip them"));
  ckComments->setVisible(comments > 0);
  ShowSheet();
}

void ImportDialog::ShowSheet() {
  import_->Columns = ColumnAssignment(edit_.Sheet);
  {
    const QSignalBlocker quiet(lstHeaders);  // the lists don't belong together yet
    lstHeaders->clear();
    for (const std::string& line : import_->Columns.lstHeaders()) lstHeaders->addItem(QString::fromStdString(line));
  }
  Reload();
  lstHeaders->setCurrentRow(0);
}

void ImportDialog::Reload() {
  Result<GridCells> rows = import_->Preview(&edit_.User);
  if (!rows) {
    TellFailure(rows.error(), edit_.User);
    rows = GridCells();
  }
  if (!startRowChosen_) {
    // The signal stands for a choice of the user's, after which nothing is proposed any more.
    const QSignalBlocker quiet(UpDnStartRow);
    UpDnStartRow->setValue(static_cast<int>(import_->FirstDataLine(edit_.Locale)));
  }
  import_->ImportText = UpDnStartRow->findChild<QLineEdit*>()->text().toStdString();
  import_->ReadHeadings(edit_.Locale);
  import_->Columns.AssignInOrder();
  std::vector<bool> comments;
  for (std::size_t line = 1; line <= rows->GridLastRow(); ++line) comments.push_back(import_->IsComment(line));
  DataPreview->clearSpans();
  model_->Show(std::move(*rows), comments);
  for (std::size_t line = 0; line < comments.size(); ++line)
    if (comments[line] && model_->columnCount() > 1)
      DataPreview->setSpan(static_cast<int>(line), 0, 1, model_->columnCount());
  model_->ShowVariables(import_->Columns);
  DataPreview->resizeColumnsToContents();
  DataPreview->setCurrentIndex(model_->index(0, 0));
  const int column = lstColumns->currentRow();
  lstColumns->clear();
  for (const std::string& line : import_->Columns.lstColumns()) lstColumns->addItem(QString::fromStdString(line));
  lstColumns->setCurrentRow(column >= 0 && column < lstColumns->count() ? column : 0);
  ShowChoices();
}

void ImportDialog::ShowChoices() {
  txtMissingData->setEnabled(ckMissingData->isChecked());
  if (import_ == nullptr) return;
  import_->ImportText = UpDnStartRow->findChild<QLineEdit*>()->text().toStdString();
  import_->ckMissingData = ckMissingData->isChecked();
  import_->txtMissingData = txtMissingData->text().toStdString();
  import_->ckTextMissing = ckTextMissing->isChecked();
  model_->SetKept(import_->StartRow(edit_.Locale),
                  import_->ckMissingData ? txtMissingData->text().trimmed().toStdString() : "", import_->ckTextMissing,
                  import_->Dates(edit_.Locale));
  import_->ckHeadings = ckHeadings->isChecked();
  import_->ReadHeadings(edit_.Locale);
  ShowOffer();
  ShowAssignments();
}

void ImportDialog::ShowTexts() {
  const TextCells texts = import_->TextsToImport(edit_.Locale);
  // The words are the file's, and a letter behind an "&" of theirs would be a key.
  ckTextMissing->setText(QString::fromStdString(texts.Sentence()).replace('&', "&&") +
                         (texts.Count == 1 ? " Read it as missin&g?" : " Read them as missin&g?"));
  ckTextMissing->setVisible(texts.Count > 0);
  if (texts.Count == 0) ckTextMissing->setChecked(false);
  const DateOrderQuestion dates = import_->AskDateOrder(edit_.Locale);
  const QSignalBlocker quiet(ckDayFirst);  // what the locale expects is no choice of the user's
  ckDayFirst->setChecked(dates.DayFirst);
  ckDayFirst->setText(QString::fromStdString(dates.Sentence).replace('&', "&&") + " Read the da&y first");
  ckDayFirst->setVisible(!dates.Sentence.empty());
}

void ImportDialog::ShowOffer() {
  const auto offer = import_->Offer(edit_.Locale);
  lblOffer->setVisible(offer.has_value());
  cmdOffer->setVisible(offer.has_value());
  if (!offer) return;
  lblOffer->setText(QString::fromStdString(offer->Notice));
  cmdOffer->setText(QString::fromStdString(offer->Command));
  cmdOffer->setAccessibleDescription(lblOffer->text());
}

void ImportDialog::TakeOffer() {
  import_->TakeOffer(edit_.Locale);
  DataPreview->setFocus();  // the button is gone
  ShowReading();
  Reload();
  ProposeKind();
}

void ImportDialog::ShowAssignments() {
  if (import_ == nullptr) return;
  const std::vector<std::string> lines = import_->Columns.lstHeaders();
  for (int v = 0; v < lstHeaders->count(); ++v)
    lstHeaders->item(v)->setText(QString::fromStdString(lines[static_cast<std::size_t>(v)]));
  const std::vector<std::string> columns = import_->Columns.lstColumns();
  bool named = false;
  for (int col = 0; col < lstColumns->count(); ++col) {
    const auto column = static_cast<std::size_t>(col);
    lstColumns->item(col)->setText(QString::fromStdString(columns[column]));
    named = named || !import_->Columns.NameOf(column + 1).empty();
  }
  ckHeadings->setEnabled(named);
  model_->ShowVariables(import_->Columns);
  const int variable = lstHeaders->currentRow();
  ShowTexts();
  cmdAssign->setEnabled(lstColumns->count() > 0);
  cmdUnAssign->setEnabled(variable >= 0 && import_->Columns.ColumnOf(static_cast<std::size_t>(variable) + 1) != 0);
}

// Goes on to the next pair, so that a few clicks on the button assign a whole file.
void ImportDialog::Assign() {
  const int column = lstColumns->currentRow(), variable = lstHeaders->currentRow();
  if (column < 0 || variable < 0) return;
  import_->Columns.Assign(static_cast<std::size_t>(column) + 1, static_cast<std::size_t>(variable) + 1);
  lstColumns->setCurrentRow(std::min(column + 1, lstColumns->count() - 1));
  lstHeaders->setCurrentRow(std::min(variable + 1, lstHeaders->count() - 1));
  ShowAssignments();
}

void ImportDialog::UnAssign() {
  import_->Columns.UnAssign(static_cast<std::size_t>(lstHeaders->currentRow()) + 1);
  ShowAssignments();
}

void ImportDialog::FinishImport() {
  ShowChoices();
  switch (import_->Finish(edit_)) {
    case ImportOutcome::Imported:
      return accept();
    case ImportOutcome::Failed:
      return reject();
    case ImportOutcome::CorrectStartRow:
      UpDnStartRow->setFocus();
      return UpDnStartRow->selectAll();
    case ImportOutcome::Stay:
      return lstColumns->setFocus();
  }
}

}  // namespace quorvex
