#include "files/ui/usereq.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include "core/NumberText.h"
#include "core/ui/ChooseFiles.h"
#include "usermodels/UserModels.h"
#include "usermodels/ui/frmChooseModel.h"
#include "usermodels/ui/frmEqEdit.h"
#include "usermodels/ui/frmRules.h"

namespace quorvex {

namespace {

FileToOpen AskForModelFile(QWidget* over, const QString& title, const Settings& settings, Prompter& user) {
  return [=, &user, folder = QString::fromStdString(settings.Folder("projectdir"))]() -> std::optional<std::string> {
    const std::optional<QString> file = ChooseFile(over, title, folder, kEquationFiles, user);
    return file ? std::optional(file->toStdString()) : std::nullopt;
  };
}

}  // namespace

void LoadUserModels(QWidget* over, Project& project, const Settings& settings, Prompter& user) {
  LoadUserModels(project, user, AskForModelFile(over, "Load User Models", settings, user));
}

void ImportUserModels(QWidget* over, Project& project, const Settings& settings, Prompter& user) {
  ImportUserModels(project, user, AskForModelFile(over, "Import User Models", settings, user),
                   [over](const ModelClass& existing, const ModelClass& imported) {
                     return frmChooseModel(over, existing, imported).exec() == QDialog::Accepted;
                   });
}

usereq::usereq(QWidget* parent, Project& project, const Settings& settings)
    : QDialog(parent),
      project_(project),
      settings_(settings),
      user_(this),
      lstModels(new QListWidget(this)),
      txtModel(new QPlainTextEdit(this)) {
  setObjectName("usereq");
  setWindowTitle("User Models");
  user_.Folder = QString::fromStdString(settings.Folder("projectdir"));
  LayOut();
  ShowModels("");
}

void usereq::LayOut() {
  auto* models = new QLabel("&Models:", this);
  models->setBuddy(lstModels);
  lstModels->setObjectName("lstModels");
  lstModels->setAccessibleName("Models");
  auto* definition = new QLabel("Defi&nition:", this);
  definition->setBuddy(txtModel);
  txtModel->setObjectName("txtModel");
  txtModel->setReadOnly(true);
  txtModel->setTabChangesFocus(true);
  txtModel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  txtModel->setPlaceholderText("This project has no user defined models. Add one here, or load some from a file.");

  auto* side = new QVBoxLayout;
  const struct {
    const char *Name, *Caption;
    bool ForOne;
    std::function<void()> Command;
  } commands[] = {
      {"cmdAdd", "&Add...", false, [this] { Edit({}, nullptr); }},
      {"cmdEdit", "&Edit...", true, [this] { EditChosen(); }},
      {"cmdCopy", "&Copy...", true, [this] { Edit(CopyOf(*Chosen()), nullptr); }},
      {"cmdRules", "R&ules...", true,
       [this] {
         EditRules(*Chosen());
         ShowChosen();
       }},
      {"cmdRemove", "&Remove", true,
       [this] {
         if (RemoveUserModel(project_, *Chosen(), user_)) ShowModels("");
       }},
      {"cmdRemoveAll", "Remo&ve All", true,
       [this] {
         if (RemoveAllUserModels(project_, user_)) ShowModels("");
       }},
      {"cmdLoad", "&Load...", false,
       [this] {
         LoadUserModels(this, project_, settings_, user_);
         ShowModels("");
       }},
      {"cmdImport", "&Import...", false,
       [this] {
         ImportUserModels(this, project_, settings_, user_);
         ShowModels("");
       }},
      {"cmdSave", "&Save...", true, [this] { SaveUserModels(project_, user_); }},
  };
  for (const auto& command : commands) {
    auto* button = new QPushButton(command.Caption, this);
    button->setObjectName(command.Name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, command.Command);
    if (command.ForOne) forOne_ << button;
    side->addWidget(button);
  }
  side->addStretch();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);  // or Enter in the list would also end the dialog
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(lstModels, &QListWidget::currentRowChanged, this, &usereq::ShowChosen);
  connect(lstModels, &QListWidget::itemActivated, this, &usereq::EditChosen);

  auto* all = new QGridLayout(this);
  all->addWidget(models, 0, 0);
  all->addWidget(lstModels, 1, 0);
  all->addWidget(definition, 0, 1);
  all->addWidget(txtModel, 1, 1);
  all->addLayout(side, 1, 2);
  all->addWidget(buttons, 2, 0, 1, 3);
  all->setColumnStretch(0, 2);
  all->setColumnStretch(1, 3);
  resize(680, 400);
}

void usereq::ShowModels(const std::string& current) {
  const int row = lstModels->currentRow();
  const std::vector<ModelClass*> models = UserModels(project_);
  lstModels->clear();
  int select = std::min(std::max(row, 0), static_cast<int>(models.size()) - 1);
  for (const ModelClass* model : models) {
    if (EqualNoCase(model->id, current)) select = lstModels->count();
    lstModels->addItem(QString::fromStdString(model->id));
  }
  lstModels->setCurrentRow(select);
  for (QWidget* button : forOne_) button->setEnabled(!models.empty());
  ShowChosen();
}

ModelClass* usereq::Chosen() const {
  const std::vector<ModelClass*> models = UserModels(project_);
  const auto row = static_cast<std::size_t>(lstModels->currentRow());
  return row < models.size() ? models[row] : nullptr;
}

void usereq::ShowChosen() {
  const ModelClass* model = Chosen();
  txtModel->setPlainText(model == nullptr ? QString() : QString::fromStdString(DescribeModel(*model)).remove('\r'));
}

void usereq::EditChosen() {
  if (const ModelClass* model = Chosen()) Edit(DraftOf(*model), model);
}

void usereq::Edit(const UserModelDraft& start, const ModelClass* edited) {
  frmEqEdit form(this, project_, start, edited);
  if (form.exec() != QDialog::Accepted) return;
  ShowModels(form.Model().id);
  if (edited == nullptr || !AskToCheckRules(user_)) return;
  EditRules(form.Model());
  ShowChosen();
}

void usereq::EditRules(ModelClass& model) {
  if (quorvex::EditRules(this, model, project_.Locale)) project_.Changed = true;
}

void ShowUserModels(QWidget* over, Project& project, const Settings& settings) {
  usereq(over, project, settings).exec();
}

}  // namespace quorvex
