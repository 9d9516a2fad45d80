#include "app/ui/frmTip.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>

#include "app/SettingsStore.h"
#include "app/Tips.h"

namespace quorvex {
namespace {

constexpr std::string_view kAtStartup = "Show Tips at Startup";

}  // namespace

frmTip::frmTip(QWidget* parent, Session& session, std::size_t first)
    : QDialog(parent),
      session_(session),
      current_(first),
      lblTip(new QLabel(this)),
      chkLoadTipsAtStartup(new QCheckBox("&Show tips at startup", this)) {
  setObjectName("frmTip");
  setWindowTitle("Tip of the Day");
  lblTip->setObjectName("lblTip");
  lblTip->setTextFormat(Qt::PlainText);
  lblTip->setWordWrap(true);
  lblTip->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  // Room for the longest tip, so that the buttons stay where they are.
  const QFontMetrics metrics = lblTip->fontMetrics();
  lblTip->setFixedWidth(metrics.averageCharWidth() * 62);
  lblTip->setMinimumHeight(metrics.lineSpacing() * 4);
  chkLoadTipsAtStartup->setObjectName("chkLoadTipsAtStartup");
  chkLoadTipsAtStartup->setChecked(session_.Preferences.Integer(kAtStartup) != 0);

  auto* buttons = new QDialogButtonBox(this);
  QPushButton* previous = buttons->addButton("&Previous Tip", QDialogButtonBox::ActionRole);
  QPushButton* next = buttons->addButton("&Next Tip", QDialogButtonBox::ActionRole);
  QPushButton* close = buttons->addButton("&Close", QDialogButtonBox::AcceptRole);
  previous->setObjectName("cmdPreviousTip");
  next->setObjectName("cmdNextTip");
  close->setObjectName("cmdOK");
  close->setDefault(true);
  connect(previous, &QPushButton::clicked, this, [this] { Go(Tips().size() - 1); });
  connect(next, &QPushButton::clicked, this, [this] { Go(1); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* column = new QVBoxLayout(this);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addWidget(lblTip);
  column->addWidget(chkLoadTipsAtStartup);
  column->addWidget(buttons);
  Go(0);
  close->setFocus();
}

void frmTip::Go(std::size_t step) {
  current_ = (current_ + step) % Tips().size();
  const std::string_view tip = Tips()[current_];
  lblTip->setText(QString::fromUtf8(tip.data(), static_cast<qsizetype>(tip.size())));
}

void frmTip::done(int result) {
  session_.Preferences.Set(kAtStartup, chkLoadTipsAtStartup->isChecked() ? "1" : "0");
  constexpr std::string_view kKeys[] = {kAtStartup};
  SaveSettings(session_.Preferences, "startup", kKeys);
  QDialog::done(result);
}

}  // namespace quorvex
