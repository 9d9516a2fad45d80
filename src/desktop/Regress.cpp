#include "desktop/Regress.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "core/ui/Controls.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/usereq.h"
#include "results/ui/reginit.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

class Regress : public QDialog {
 public:
  Regress(quorvexWindow& window, ModelPick& pick);

 private:
  void LayOut();
  void ListModels();
  void ShowModel();
  void EditUserModels();
  void AskForEstimates();
  void Accept();
  ModelClass* Chosen() const;

  quorvexWindow& window_;
  ModelPick& pick_;
  std::vector<ModelClass*> listed_;

  QButtonGroup* optWhichModels;
  QListWidget* eq_list;
  QPlainTextEdit* definition_text;
  QLabel *description_label, *group_label;
  QCheckBox* enforce_override;
  QPushButton *specify_command, *add_command, *solve_command, *cancel_command;
};

Regress::Regress(quorvexWindow& window, ModelPick& pick)
    : QDialog(&window),
      window_(window),
      pick_(pick),
      optWhichModels(new QButtonGroup(this)),
      eq_list(Named(new QListWidget(this), "eq_list")),
      definition_text(Named(new QPlainTextEdit(this), "definition_text")),
      description_label(Named(new QLabel(this), "description_label")),
      group_label(Named(new QLabel(this), "group_label")),
      enforce_override(Named(new QCheckBox("User Specif&y", this), "enforce_override")),
      specify_command(Named(new QPushButton("Initial &Estimates...", this), "specify_command")),
      add_command(Named(new QPushButton("User &Models...", this), "add_command")),
      solve_command(Named(new QPushButton("&Solve", this), "solve_command")),
      cancel_command(Named(new QPushButton("Cancel", this), "cancel_command")) {
  setObjectName("Regress");
  setWindowTitle("Single Model Regression Setup");
  LayOut();
  connect(optWhichModels, &QButtonGroup::idClicked, this, &Regress::ListModels);
  connect(eq_list, &QListWidget::currentRowChanged, this, &Regress::ShowModel);
  connect(eq_list, &QListWidget::itemDoubleClicked, this, &Regress::Accept);
  connect(enforce_override, &QCheckBox::toggled, this, &Regress::ShowModel);
  connect(specify_command, &QPushButton::clicked, this, &Regress::AskForEstimates);
  connect(add_command, &QPushButton::clicked, this, &Regress::EditUserModels);
  ListModels();
  eq_list->setFocus();
}

void Regress::LayOut() {
  auto* rows = new QVBoxLayout(this);
  auto* kinds = new QHBoxLayout;
  for (const char* text : {"&All models", "&Pre-defined models", "&User-defined models"}) {
    auto* kind = new QRadioButton(text, this);
    optWhichModels->addButton(kind, static_cast<int>(optWhichModels->buttons().size()));
    kind->setObjectName("optWhichModels" + QString::number(optWhichModels->id(kind)));
    kinds->addWidget(kind);
  }
  optWhichModels->button(0)->setChecked(true);
  kinds->addStretch();
  rows->addLayout(kinds);

  const int character = fontMetrics().averageCharWidth();
  eq_list->setAccessibleName("Model");
  eq_list->setMinimumSize(44 * character, 16 * fontMetrics().height());
  definition_text->setReadOnly(true);
  definition_text->setAccessibleName("Definition");
  definition_text->setTabChangesFocus(true);
  definition_text->setMinimumWidth(40 * character);
  for (QLabel* text : {description_label, group_label}) {
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    text->setMargin(3);
  }
  auto* grid = new QGridLayout;
  grid->addWidget(LabelFor(eq_list, "M&odel:", this), 0, 0);
  grid->addWidget(eq_list, 1, 0, 5, 1);
  grid->addWidget(LabelFor(definition_text, "&Definition:", this), 0, 1);
  grid->addWidget(definition_text, 1, 1);
  grid->addWidget(new QLabel("Description:", this), 2, 1);
  grid->addWidget(description_label, 3, 1);
  grid->addWidget(new QLabel("Group:", this), 4, 1);
  grid->addWidget(group_label, 5, 1);
  grid->setRowStretch(1, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  rows->addLayout(grid);

  enforce_override->setToolTip("Begin with estimates of your own instead of those that the program finds");
  auto* estimates = new QHBoxLayout;
  estimates->addWidget(enforce_override);
  estimates->addWidget(specify_command);
  estimates->addStretch();
  rows->addLayout(estimates);

  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(solve_command, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel_command, QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &Regress::Accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* last = new QHBoxLayout;
  last->addWidget(add_command);
  last->addStretch();
  last->addWidget(buttons);
  rows->addLayout(last);
  solve_command->setDefault(true);
}

// Keeps the choice where it is in the new list too.
void Regress::ListModels() {
  const ModelClass* const chosen = listed_.empty() ? pick_.LastSelected() : Chosen();
  listed_ = pick_.Listed(static_cast<ModelKind>(optWhichModels->checkedId()));
  {
    const QSignalBlocker quiet(eq_list);
    eq_list->clear();
    for (const ModelClass* model : listed_) eq_list->addItem(QString::fromStdString(model->id));
    const auto found = std::find(listed_.begin(), listed_.end(), chosen);
    eq_list->setCurrentRow(found == listed_.end() ? 0 : static_cast<int>(found - listed_.begin()));
  }
  if (QListWidgetItem* current = eq_list->currentItem()) eq_list->scrollToItem(current);
  ShowModel();
}

void Regress::ShowModel() {
  const ModelClass* const model = Chosen();
  definition_text->setPlainText(model != nullptr ? QString::fromStdString(DefinitionText(*model)).remove('\r')
                                                 : QString());
  description_label->setText(model != nullptr ? QString::fromStdString(model->Description) : QString());
  group_label->setText(model != nullptr ? QString::fromStdString(model->Group) : QString());
  specify_command->setEnabled(model != nullptr && enforce_override->isChecked());
}

ModelClass* Regress::Chosen() const {
  const int row = eq_list->currentRow();
  return row < 0 ? nullptr : listed_[static_cast<std::size_t>(row)];
}

// Models may come and go meanwhile: what is chosen is known by its name alone.
void Regress::EditUserModels() {
  const ModelClass* const model = Chosen();
  const std::string id = model != nullptr ? model->id : "";
  ShowUserModels(this, window_.Document(), window_.Preferences());
  window_.Refresh();
  listed_.clear();
  ListModels();
  const QList<QListWidgetItem*> same = eq_list->findItems(QString::fromStdString(id), Qt::MatchFixedString);
  if (!same.isEmpty()) eq_list->setCurrentItem(same.first());
}

void Regress::AskForEstimates() {
  if (ModelClass* const model = Chosen())
    SpecifyEstimates(this, window_.Document(), window_.Editor(), *model, window_.Preferences());
}

// Estimates that are wanted but were not given yet are asked for first.
void Regress::Accept() {
  ModelClass* const model = Chosen();
  const bool specify = enforce_override->isChecked();
  if (model != nullptr && specify && !model->SpecifyICComplete) {
    AskForEstimates();
    if (!model->SpecifyICComplete) return;
  }
  if (pick_.Accept(model, specify, window_.User())) accept();
}

}  // namespace

bool ShowRegress(quorvexWindow& window, ModelPick& pick) { return Regress(window, pick).exec() == QDialog::Accepted; }

}  // namespace quorvex
