#include "solve/ui/Groups.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "core/ui/Controls.h"

namespace quorvex {
namespace {

QListWidget* NewList(QWidget* parent, const char* name, const QString& accessibleName) {
  auto* list = new QListWidget(parent);
  list->setObjectName(name);
  list->setAccessibleName(accessibleName);
  return list;
}

QListWidgetItem* AddCheck(QListWidget& list, const QString& text, bool checked) {
  auto* item = new QListWidgetItem(text, &list);
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
  item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
  return item;
}

// The list is filled anew, and the row that was current is so again, or the last one.
void Fill(QListWidget& list, const std::vector<std::string>& texts) {
  const int row = std::max(list.currentRow(), 0);
  list.clear();
  for (const std::string& text : texts) list.addItem(QString::fromStdString(text));
  if (list.count() > 0) list.setCurrentRow(std::min(row, list.count() - 1));
}

class Groups : public QDialog {
 public:
  // Both outlive the dialog.
  Groups(QWidget* parent, GroupPick& pick, Prompter& user);

 private:
  void LayOut();
  void ListMembers();
  void ShowState();
  void Add();
  void Remove();
  void TakeChecks();
  void Accept();

  GroupPick& pick_;
  Prompter& user_;
  QListWidget *group_list, *available_list, *member_list;
  QPushButton *add_command, *remove_command;
  QListWidgetItem *userDefined_, *userSpecified_;
};

Groups::Groups(QWidget* parent, GroupPick& pick, Prompter& user)
    : QDialog(parent),
      pick_(pick),
      user_(user),
      group_list(NewList(this, "group_list", "Equation groups")),
      available_list(NewList(this, "available_list", "Available equations")),
      member_list(NewList(this, "member_list", "User specified group")),
      add_command(new QPushButton("A&dd >", this)),
      remove_command(new QPushButton("< &Remove", this)) {
  setObjectName("Groups");
  setWindowTitle("Solve Groups");
  for (const GroupPick::Group& group : pick_.Groups)
    AddCheck(*group_list, QString::fromStdString(group.Name), group.Checked);
  userDefined_ = AddCheck(*group_list, "User Defined Models", pick_.UserDefined);
  userSpecified_ = AddCheck(*group_list, "User Specified Group", pick_.UserSpecified);
  group_list->setCurrentRow(0);
  add_command->setObjectName("add_command");
  remove_command->setObjectName("remove_command");
  LayOut();
  connect(group_list, &QListWidget::itemChanged, this, &Groups::ShowState);
  connect(add_command, &QPushButton::clicked, this, &Groups::Add);
  connect(remove_command, &QPushButton::clicked, this, &Groups::Remove);
  connect(available_list, &QListWidget::itemDoubleClicked, this, &Groups::Add);
  connect(member_list, &QListWidget::itemDoubleClicked, this, &Groups::Remove);
  ListMembers();
  group_list->setFocus();
}

void Groups::LayOut() {
  const int character = fontMetrics().averageCharWidth();
  group_list->setMinimumWidth(group_list->sizeHintForColumn(0) + 5 * character);
  for (QListWidget* list : {group_list, available_list, member_list})
    list->setMinimumHeight(18 * fontMetrics().height());
  for (QListWidget* list : {available_list, member_list}) list->setMinimumWidth(38 * character);
  auto* grid = new QGridLayout(this);
  grid->addWidget(LabelFor(group_list, "&Groups to solve:", this), 0, 0);
  grid->addWidget(group_list, 1, 0);
  grid->addWidget(LabelFor(available_list, "&Available equations:", this), 0, 1);
  grid->addWidget(available_list, 1, 1);
  auto* moves = new QVBoxLayout;
  moves->addStretch();
  moves->addWidget(add_command);
  moves->addWidget(remove_command);
  moves->addStretch();
  grid->addLayout(moves, 1, 2);
  grid->addWidget(LabelFor(member_list, "&User specified group:", this), 0, 3);
  grid->addWidget(member_list, 1, 3);
  for (const int column : {0, 1, 3}) grid->setColumnStretch(column, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &Groups::Accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  for (QPushButton* button : {add_command, remove_command}) button->setAutoDefault(false);
  grid->addWidget(buttons, 2, 0, 1, 4);
}

void Groups::ListMembers() {
  Fill(*available_list, pick_.Available());
  Fill(*member_list, pick_.Members);
  ShowState();
}

void Groups::ShowState() {
  add_command->setEnabled(available_list->currentRow() >= 0);
  remove_command->setEnabled(member_list->currentRow() >= 0);
}

void Groups::Add() {
  const QListWidgetItem* const item = available_list->currentItem();
  if (item == nullptr) return;
  // First of all: the tick below is set to what `pick_` knows, which may not be what the user has set meanwhile.
  TakeChecks();
  pick_.Add(item->text().toStdString());
  userSpecified_->setCheckState(pick_.UserSpecified ? Qt::Checked : Qt::Unchecked);
  ListMembers();
}

void Groups::Remove() {
  const int row = member_list->currentRow();
  if (row < 0) return;
  pick_.Remove(static_cast<std::size_t>(row));
  ListMembers();
}

void Groups::TakeChecks() {
  for (std::size_t i = 0; i < pick_.Groups.size(); ++i)
    pick_.Groups[i].Checked = group_list->item(static_cast<int>(i))->checkState() == Qt::Checked;
  pick_.UserDefined = userDefined_->checkState() == Qt::Checked;
  pick_.UserSpecified = userSpecified_->checkState() == Qt::Checked;
}

void Groups::Accept() {
  TakeChecks();
  if (pick_.Accept(user_)) accept();
}

}  // namespace

bool ShowGroups(QWidget* over, GroupPick& pick, Prompter& user) {
  return Groups(over, pick, user).exec() == QDialog::Accepted;
}

}  // namespace quorvex
