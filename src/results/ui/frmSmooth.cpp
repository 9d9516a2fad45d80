#include "results/ui/frmSmooth.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>
#include <string>

#include "plot/ui/PlotBar.h"
#include "plot/ui/PlotView.h"
#include "results/SmoothPlot.h"

namespace quorvex {

frmSmooth::frmSmooth(QWidget* parent, SmoothCommand& command, const SheetEdit& edit, Settings& settings)
    : QDialog(parent), command_(command), edit_(edit), settings_(settings), plot_(settings, edit.Locale) {
  setObjectName("frmSmooth");
  setWindowTitle("Lowess Smooth");
  ShowCurve();
  LayOut();
  resize(QSize(760, 600).boundedTo(screen()->availableSize() * 0.95));
}

// The view goes before the plot that it shows.
frmSmooth::~frmSmooth() { delete pctSmooth; }

void frmSmooth::LayOut() {
  pctSmooth = new PlotView(plot_, edit_.User, settings_, this);
  pctSmooth->setObjectName("pctSmooth");
  pctSmooth->setAccessibleName("Input data and smoothed curve");
  for (const char* axis : {"X", "Y"})  // the coordinates under the pointer
    pctSmooth->findChild<QLabel*>(QString("label") + axis)->setObjectName(QString(axis).toLower() + "_text");
  auto* bar = new PlotBar(*pctSmooth, pctSmooth->actions(), this);
  bar->findChild<QToolBar*>()->setObjectName("tbSmooth");
  txtPercent = new QLineEdit(SmoothCommand::kDefaultPercent, this);
  txtPercent->setObjectName("txtPercent");
  txtPercent->setMaximumWidth(12 * fontMetrics().averageCharWidth());
  txtPercent->selectAll();
  auto* label = new QLabel("Smoothing &window (% of the points):", this);
  label->setBuddy(txtPercent);
  auto* cmdApply = new QPushButton("&Apply", this);
  cmdApply->setObjectName("cmdApply");
  cmdApply->setAutoDefault(false);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  connect(cmdApply, &QPushButton::clicked, this, &frmSmooth::Apply);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmSmooth::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* entry = new QHBoxLayout;
  entry->addWidget(label);
  entry->addWidget(txtPercent);
  entry->addWidget(cmdApply);
  entry->addStretch();
  entry->addWidget(buttons);
  auto* all = new QVBoxLayout(this);
  all->addWidget(bar);
  all->addWidget(pctSmooth, 1);
  all->addLayout(entry);
  txtPercent->setFocus();
}

// A refusal leads back to the percentage; a text that was none has become one.
bool frmSmooth::Try(bool (SmoothCommand::*step)(std::string& percent)) {
  std::string percent = txtPercent->text().toStdString();
  const bool done = (command_.*step)(percent);
  txtPercent->setText(QString::fromStdString(percent));
  if (done) return true;
  txtPercent->setFocus();
  txtPercent->selectAll();
  return false;
}

void frmSmooth::Apply() {
  if (!Try(&SmoothCommand::Apply)) return;
  ShowCurve();
  pctSmooth->Redraw();
}

void frmSmooth::ShowCurve() {
  plot_.Assign(SmoothPlot(command_.X(), command_.Y(), command_.SmoothY(), edit_.Sheet, settings_, edit_.Locale));
  plot_.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, edit_.User);
}

void frmSmooth::accept() {
  if (Try(&SmoothCommand::Finish)) QDialog::accept();
}

bool ShowSmooth(const SheetEdit& edit, QWidget* parent, Settings& settings) {
  SmoothCommand command(edit);
  std::string percent = SmoothCommand::kDefaultPercent;
  if (command.Begin()) {
    command.Apply(percent);  // so that there is something to see at once
    frmSmooth(parent, command, edit, settings).exec();
  }
  return command.Changed();
}

}  // namespace quorvex
