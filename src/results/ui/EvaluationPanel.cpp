#include "results/ui/EvaluationPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "results/SaveResults.h"
#include "sheet/ColumnNames.h"

namespace quorvex {
namespace {

QLineEdit* Field(const char* name, QWidget* parent) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  return field;
}

}  // namespace

EvaluationPanel::EvaluationPanel(const DataSheet& sheet, const SolveData& points, const LocaleText& locale,
                                 Prompter& user, QWidget* parent)
    : QWidget(parent), sheet_(sheet), points_(points), locale_(locale), user_(user) {
  LayOut();
  SetSolution(nullptr);
}

void EvaluationPanel::LayOut() {
  auto* entries = new QVBoxLayout;
  entries->addWidget(EntryBox());
  search_ = SearchBox();
  entries->addWidget(search_);
  evalCommand_ = new QPushButton("&Evaluate", this);
  evalCommand_->setObjectName("EvalCommand");
  auto* clear = new QPushButton("Clea&r", this);
  clear->setObjectName("ClearCommand");
  clear->setToolTip("Empty the list of results");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(evalCommand_);
  buttons->addWidget(clear);
  entries->addLayout(buttons);
  entries->addStretch(1);

  txtEval = new QPlainTextEdit(this);
  txtEval->setObjectName("txtEval");
  txtEval->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  txtEval->setReadOnly(true);
  txtEval->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  txtEval->setTabChangesFocus(true);
  auto* label = new QLabel("&History:", this);
  label->setBuddy(txtEval);
  auto* results = new QVBoxLayout;
  results->addWidget(label);
  results->addWidget(txtEval);

  auto* row = new QHBoxLayout(this);
  row->addLayout(entries);
  row->addLayout(results, 1);
  connect(evalCommand_, &QPushButton::clicked, this, &EvaluationPanel::EvalCommand_clicked);
  for (const QLineEdit* field : {YVal_text, txtSearchMin, txtSearchMax, txtSearchIntervals})
    connect(field, &QLineEdit::returnPressed, this, &EvaluationPanel::EvalCommand_clicked);
  connect(clear, &QPushButton::clicked, txtEval, &QPlainTextEdit::clear);
}

// What to evaluate, and at which X.
QWidget* EvaluationPanel::EntryBox() {
  auto* box = new QWidget(this);
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(0, 0, 0, 0);
  const char* const actions[] = {"Value o&f Y at Xn", "Roo&t at Y, Xn"};
  for (int i = 0; i < 2; ++i) {
    optnAction[i] = new QRadioButton(actions[i], box);
    optnAction[i]->setObjectName(QString("optnAction%1").arg(i));
    column->addWidget(optnAction[i]);
  }
  optnAction[0]->setChecked(true);

  auto* scroll = new QScrollArea(box);  // there may be twenty variables
  scroll->setObjectName("variables");
  scroll->setAccessibleName("Variables");
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  auto* variables = new QWidget(scroll);
  variables_ = new QFormLayout(variables);
  variables_->setContentsMargins(0, 0, 0, 0);
  scroll->setWidget(variables);
  column->addWidget(scroll);

  YVal_text = Field("YVal_text", box);
  cmboRoot = new QComboBox(box);
  cmboRoot->setObjectName("cmboRoot");
  cmboRoot->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  cmboRoot->setMinimumContentsLength(8);
  root_ = new QFormLayout;
  root_->addRow("&Given Y:", YVal_text);
  root_->addRow("&Which X:", cmboRoot);
  column->addLayout(root_);

  ckDyDX = new QCheckBox("D&Y/DXn", box);
  ckDyDX->setObjectName("ckDyDX");
  ckDYDParam = new QCheckBox("Parameter Deri&vatives", box);
  ckDYDParam->setObjectName("ckDYDParam");
  column->addWidget(ckDyDX);
  column->addWidget(ckDYDParam);

  connect(optnAction[1], &QRadioButton::toggled, this, &EvaluationPanel::EnableEntries);
  connect(cmboRoot, &QComboBox::currentIndexChanged, this, [this] {
    EnableEntries();
    cmdDefaults_clicked();
  });
  return box;
}

QGroupBox* EvaluationPanel::SearchBox() {
  auto* box = new QGroupBox("Search for roots", this);
  auto* form = new QFormLayout(box);
  txtSearchMin = Field("txtSearchMin", box);
  txtSearchMax = Field("txtSearchMax", box);
  txtSearchIntervals = Field("txtSearchIntervals", box);
  form->addRow("&Minimum:", txtSearchMin);
  form->addRow("M&aximum:", txtSearchMax);
  form->addRow("&Intervals:", txtSearchIntervals);
  auto* defaults = new QPushButton("&Defaults", box);
  defaults->setObjectName("cmdDefaults");
  defaults->setToolTip("Search the range of the input");
  form->addRow(defaults);
  connect(defaults, &QPushButton::clicked, this, &EvaluationPanel::cmdDefaults_clicked);
  return box;
}

void EvaluationPanel::SetSolution(const SolvedItem* solution) {
  const bool solved = solution != nullptr;
  solution_ = solved ? *solution : SolvedItem();
  setEnabled(solved);
  if (!solved) return;
  const int count = solution_.NumIndependentVar();
  if (count != static_cast<int>(XVal_text.size())) MakeVariables(count);
  NameVariables();
  ckDyDX->setEnabled(solution_.Model != nullptr);
  ckDYDParam->setEnabled(solution_.Model != nullptr);
  EnableEntries();
  cmdDefaults_clicked();
}

// The window may be open while the user names a column.
void EvaluationPanel::NameVariables() {
  const std::vector<std::string> names = VariableNames(sheet_);
  for (std::size_t v = 0; v < XVal_text.size() && v < names.size(); ++v) {
    const QString name = QString::fromStdString(names[v]);
    XVal_text[v]->setAccessibleName(name);
    XVal_text[v]->setToolTip(name.toHtmlEscaped());
    cmboRoot->setItemText(static_cast<int>(v), name);
  }
}

void EvaluationPanel::MakeVariables(int count) {
  // Which deletes the widgets of the row as well.
  while (variables_->rowCount() > 0) variables_->removeRow(0);
  XVal_text.clear();
  const QSignalBlocker quiet(cmboRoot);
  cmboRoot->clear();
  for (int v = 1; v <= count; ++v) {
    const QString name = count == 1 ? QString("X") : QString("X%1").arg(v);
    auto* field = Field("", variables_->parentWidget());
    field->setObjectName(QString("XVal_text%1").arg(v));
    auto* label = new QLabel((v == 1 ? "&" : "") + name + ":", variables_->parentWidget());
    label->setObjectName(QString("XLabel%1").arg(v));
    label->setBuddy(field);
    field->setAccessibleName(name);
    connect(field, &QLineEdit::returnPressed, this, &EvaluationPanel::EvalCommand_clicked);
    variables_->addRow(label, field);
    XVal_text.push_back(field);
    cmboRoot->addItem(name);
  }
  root_->setRowVisible(cmboRoot, count > 1);
  // As high as its rows, up to six of them.
  auto* scroll = findChild<QScrollArea*>("variables");
  const int shown = std::min(count, 6);
  const int row = XVal_text[0]->sizeHint().height();
  scroll->setFixedHeight(shown * row + (shown - 1) * std::max(variables_->verticalSpacing(), 0) + 2);
  // Fields that are made anew would come last in the order of Tab.
  QWidget* before = optnAction[1];
  for (QLineEdit* field : XVal_text) {
    setTabOrder(before, field);
    before = field;
  }
  setTabOrder(before, YVal_text);
}

void EvaluationPanel::FocusEntry() {
  if (optnAction[1]->isChecked())
    YVal_text->setFocus();
  else if (!XVal_text.empty())
    XVal_text[0]->setFocus();
}

void EvaluationPanel::EnableEntries() {
  const bool root = optnAction[1]->isChecked();
  for (std::size_t v = 0; v < XVal_text.size(); ++v)
    XVal_text[v]->setEnabled(!root || static_cast<int>(v) != cmboRoot->currentIndex());
  YVal_text->setEnabled(root);
  cmboRoot->setEnabled(root);
  search_->setEnabled(root);
}

void EvaluationPanel::cmdDefaults_clicked() {
  const SearchDefaults search = DefaultSearch(solution_, std::max(cmboRoot->currentIndex(), 0) + 1, locale_);
  txtSearchMin->setText(QString::fromStdString(search.Min));
  txtSearchMax->setText(QString::fromStdString(search.Max));
  txtSearchIntervals->setText(QString::fromStdString(search.Intervals));
}

void EvaluationPanel::EvalCommand_clicked() {
  EvaluationEntries entries;
  for (const QLineEdit* field : XVal_text) entries.X.push_back(field->text().toStdString());
  entries.Y = YVal_text->text().toStdString();
  entries.RootAtY = optnAction[1]->isChecked();
  entries.Variable = cmboRoot->currentIndex() + 1;
  entries.DyDx = ckDyDX->isChecked();
  entries.Parameters = ckDYDParam->isChecked();
  entries.Limits = limits_;
  entries.SearchMin = txtSearchMin->text().toStdString();
  entries.SearchMax = txtSearchMax->text().toStdString();
  entries.SearchIntervals = txtSearchIntervals->text().toStdString();
  const std::optional<std::string> result = EvalCommand(solution_, entries, locale_, user_, points_);
  if (!result) return;
  if (!txtEval->document()->isEmpty()) txtEval->appendPlainText(kEvaluationRule);
  txtEval->appendPlainText(QString::fromStdString(*result).remove('\r'));
}

void EvaluationPanel::Save() { SaveEvaluation(txtEval->toPlainText().replace('\n', "\r\n").toStdString(), user_); }

}  // namespace quorvex
