#include "files/ui/frmPltTemplate.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/ui/Controls.h"
#include "files/PlotTemplateKeys.h"

namespace quorvex {
namespace {

class frmPltTemplate : public QDialog {
 public:
  frmPltTemplate(const PlotPage& plot, QWidget* parent)
      : QDialog(parent),
        all_(Named(new QRadioButton(tr("&All settings")), "optnSelect0")),
        some_(Named(new QRadioButton(tr("&Only these:")), "optnSelect1")) {
    setObjectName("frmPltTemplate");
    setWindowTitle(tr("Plot Template Settings"));
    auto* groups = new QWidget(this);
    auto* list = new QVBoxLayout(groups);
    list->setContentsMargins(20, 0, 0, 0);
    for (int i = 0; const std::string& group : TemplateFormatOf(plot).Groups()) {
      auto* box = new QCheckBox(QString::fromStdString(group), groups);
      box->setObjectName(QString("ckOptions%1").arg(i++));
      box->setChecked(true);
      connect(box, &QCheckBox::toggled, this, &frmPltTemplate::Check);
      list->addWidget(box);
      groups_ << box;
    }
    groups->setEnabled(false);
    all_->setChecked(true);
    connect(some_, &QRadioButton::toggled, groups, &QWidget::setEnabled);
    connect(some_, &QRadioButton::toggled, this, &frmPltTemplate::Check);
    buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    for (QWidget* row : std::initializer_list<QWidget*>{all_, some_, groups, buttons_}) column->addWidget(row);
    column->setSizeConstraint(QLayout::SetFixedSize);
  }

  TemplateSelection Selection() const {
    TemplateSelection selection;
    for (const QCheckBox* group : groups_)
      if (all_->isChecked() || group->isChecked()) selection.insert(group->text().toStdString());
    return selection;
  }

 private:
  // A template of nothing would do nothing.
  void Check() { buttons_->button(QDialogButtonBox::Ok)->setEnabled(!Selection().empty()); }

  QRadioButton *all_, *some_;
  QList<QCheckBox*> groups_;
  QDialogButtonBox* buttons_;
};

}  // namespace

std::optional<TemplateSelection> ChooseTemplateGroups(const PlotPage& plot, QWidget* parent) {
  frmPltTemplate form(plot, parent);
  if (form.exec() != QDialog::Accepted) return std::nullopt;
  return form.Selection();
}

}  // namespace quorvex
