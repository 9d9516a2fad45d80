#include "plot/ui/frmPlotInfo.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/ui/Controls.h"

namespace quorvex {
namespace {

constexpr const char* kHide = "hideplotinfo";

constexpr const char* kGuidance =
    "A plot has a window of its own and keeps what it shows, whatever becomes of its project.\n\n"
    "Zoom with the mouse, read coordinates, and drag the legend; a surface turns with the mouse or the arrow keys. The "
    "right mouse button has the commands of the plot.\n\n"
    "To open a plot in a plot window, choose 'Open' from the 'Plot' menu.";

}  // namespace

void ShowPlotInfo(QWidget* parent, Settings& settings) {
  if (settings.Integer(kHide) != 0) return;
  QDialog dialog(parent);
  dialog.setObjectName("frmPlotInfo");
  dialog.setWindowTitle("Plot Windows");
  auto* text = new QLabel(kGuidance, &dialog);
  text->setWordWrap(true);
  text->setFixedWidth(text->fontMetrics().averageCharWidth() * 62);
  auto* hide = Named(new QCheckBox("&Do not show this again", &dialog), kHide);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  auto* column = new QVBoxLayout(&dialog);
  column->setSizeConstraint(QLayout::SetFixedSize);
  for (QWidget* widget : std::initializer_list<QWidget*>{text, hide, buttons}) column->addWidget(widget);
  buttons->button(QDialogButtonBox::Ok)->setFocus();
  dialog.exec();
  if (hide->isChecked()) settings.Set(kHide, "1");
}

}  // namespace quorvex
