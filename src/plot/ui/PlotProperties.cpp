#include "plot/ui/PlotProperties.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <algorithm>

#include "core/ui/Controls.h"
#include "core/ui/TabOrder.h"
#include "drawing/PlotText.h"
#include "plot/ui/FieldDialog.h"
#include "plot/ui/FieldPanel.h"
#include "plot/ui/SeriesPanel.h"

namespace quorvex {
namespace {

// Where the screen has room, so that the plot is seen to change.
void PlaceBeside(QDialog& dialog, const QWidget& plot) {
  dialog.adjustSize();
  const QRect shown = plot.frameGeometry(), screen = plot.screen()->availableGeometry();
  const QSize borders = shown.size() - plot.geometry().size();  // that the window manager will put around
  QRect place(shown.topLeft(), dialog.size() + borders);
  const int right = shown.right() + 1, left = shown.left() - place.width();
  if (right + place.width() <= screen.right() + 1)
    place.moveLeft(right);
  else if (left >= screen.left())
    place.moveLeft(left);
  else
    return;
  if (place.bottom() > screen.bottom()) place.moveBottom(screen.bottom());
  dialog.move(place.left(), std::max(place.top(), screen.top()));
}

}  // namespace

PlotProperties::PlotProperties(PlotPage& plot, Settings& settings, Prompter& prompter, PlotWatcher watcher,
                               QWidget* parent)
    : QDialog(parent),
      plot_(plot),
      settings_(settings),
      prompter_(prompter),
      watcher_(std::move(watcher)),
      entries_(plot),
      pages_(Named(new QTabWidget(this), "SSTab")) {
  setObjectName(plot.Axes().size() == 2 ? "Properties2D" : "Properties3D");
  setProperty(kOwnTabOrder, true);  // the pages are made in their order
  setWindowTitle(tr("Graph Properties"));
  pages_->setUsesScrollButtons(false);
  for (std::size_t page = 0; page < entries_.Pages.size(); ++page)
    if (!entries_.Pages[page].OfSeries || !entries_.Series.empty()) AddPage(page);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(pages_);
  rows->addLayout(MakeCommands());
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &PlotProperties::Preview);
}

void PlotProperties::AddPage(std::size_t page) {
  const FieldPage& fields = entries_.Pages[page];
  auto* widget = new QWidget(pages_);
  auto* rows = new QVBoxLayout(widget);
  if (fields.OfSeries) {
    series_ = new SeriesPanel(entries_.Series, plot_.Locale, widget);
    connect(series_, &SeriesPanel::Edited, this, &PlotProperties::Edited);
    rows->addWidget(series_, 1);
  } else {
    AddColumns(*rows, page);
  }
  if (!fields.CodeButtons.empty()) rows->addLayout(MakeCodeButtons(QString::fromStdString(fields.CodeButtons), widget));
  pages_->addTab(widget, QString::fromStdString(fields.Title));
}

// Two columns of groups, about as many fields in each.
void PlotProperties::AddColumns(QBoxLayout& rows, std::size_t page) {
  const std::vector<FieldGroup>& groups = entries_.Pages[page].Groups;
  const auto count = [](const FieldGroup& group) { return group.Dialog ? 1 : group.Fields.size(); };
  std::size_t all = 0, placed = 0;
  for (const FieldGroup& group : groups) all += count(group);
  auto* columns = new QHBoxLayout;
  rows.addLayout(columns);
  QBoxLayout* column = nullptr;
  const auto next = [&] {
    if (column != nullptr) column->addStretch();
    columns->addLayout(column = new QVBoxLayout, 1);
  };
  next();
  for (std::size_t i = 0; i < groups.size(); ++i) {
    if (columns->count() == 1 && placed > 0 && 2 * placed + count(groups[i]) > all && !groups[i].Dialog) next();
    AddGroup(*column, page, i);
    placed += count(groups[i]);
  }
  column->addStretch();
}

void PlotProperties::AddGroup(QBoxLayout& column, std::size_t page, std::size_t group) {
  FieldGroup& fields = entries_.Pages[page].Groups[group];
  if (fields.Dialog) {
    auto* button = new QPushButton(QString::fromStdString(fields.Dialog->Label), this);
    button->setObjectName(QString::fromStdString(fields.Dialog->Button));
    button->setAccessibleName(QString::fromStdString(fields.Title));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this,
            [this, page, group] { EditGroup(entries_.Pages[page].Groups[group]); });
    column.addWidget(button, 0, Qt::AlignLeft);
    return;
  }
  auto* panel = new FieldPanel(fields, plot_.Locale, this);
  connect(panel, &FieldPanel::Edited, this, &PlotProperties::Edited);
  panels_.push_back({panel, page, group});
  column.addWidget(panel);
}

// The buttons leave the focus where it is: they are for the text that is being edited.
QBoxLayout* PlotProperties::MakeCodeButtons(const QString& name, QWidget* page) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (const auto& [kind, suffix, text] : {std::tuple{0, "Up", "Supe&rscript"}, {1, "Down", "Su&bscript"}}) {
    auto* button = new QPushButton(tr(text), page);
    button->setObjectName(name + suffix);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QPushButton::clicked, this, [this, code = kind] { ApplyCode(code); });
    row->addWidget(button);
  }
  return row;
}

QBoxLayout* PlotProperties::MakeCommands() {
  auto* scale = Named(new QPushButton(tr("&Calculate Scale"), this), "CalcScale_command");
  scale->setToolTip(tr("Enters limits and divisions that suit the data"));
  auto* defaults = Named(new QPushButton(tr("Save as &Defaults"), this), "SaveDefaults_command");
  defaults->setToolTip(tr("New plots begin with what is entered here"));
  for (QPushButton* button : {scale, defaults}) button->setAutoDefault(false);
  preview_ = Named(new QCheckBox(tr("Pre&view changes"), this), "Preview_check");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("OKCommand");
  apply_ = Named(buttons->button(QDialogButtonBox::Apply), "ApplyCommand");
  apply_->setText(tr("&Apply"));
  apply_->setEnabled(false);
  connect(scale, &QPushButton::clicked, this, &PlotProperties::CalcScale);
  connect(defaults, &QPushButton::clicked, this, &PlotProperties::SaveDefaults);
  connect(preview_, &QCheckBox::toggled, this, [this](bool on) { on ? Preview() : TakeBack(); });
  connect(buttons, &QDialogButtonBox::accepted, this, &PlotProperties::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &PlotProperties::reject);
  connect(apply_, &QAbstractButton::clicked, this, &PlotProperties::Apply);

  auto* row = new QHBoxLayout;
  row->addWidget(scale);
  row->addWidget(defaults);
  row->addStretch();
  row->addWidget(preview_);
  row->addWidget(buttons);
  return row;
}

void PlotProperties::ApplyCode(int kind) {
  auto* edit = qobject_cast<QLineEdit*>(focusWidget());
  const QString text = edit != nullptr ? edit->text() : QString();
  const auto bytes = [&](qsizetype characters) {
    return static_cast<std::size_t>(text.left(characters).toUtf8().size());
  };
  SelectedText box{text.toStdString()};
  if (edit != nullptr && edit->hasSelectedText()) {
    box.Start = bytes(edit->selectionStart());
    box.Length = bytes(edit->selectionEnd()) - box.Start;
  }
  const Result<SelectedText> coded = ApplyTextCode(kind, box);
  if (!coded) return prompter_.Refuse(coded.error());
  const auto characters = [&](std::size_t count) {
    return static_cast<int>(QString::fromStdString(coded->Text.substr(0, count)).size());
  };
  edit->setText(QString::fromStdString(coded->Text));
  const int start = characters(coded->Start);
  edit->setSelection(start, characters(coded->Start + coded->Length) - start);
}

void PlotProperties::EditGroup(FieldGroup& group) {
  const FieldGroup before = group;
  FieldDialog dialog(group, entries_, prompter_, this);
  const auto take = [&](const FieldGroup& entered) {
    group = entered;
    Edited();
  };
  connect(&dialog, &FieldDialog::Edited, this, [&] {
    if (preview_->isChecked()) take(dialog.Entered());
  });
  take(dialog.exec() == Accepted ? dialog.Entered() : before);
}

void PlotProperties::CalcScale() {
  if (!entries_.CalcScale()) return prompter_.Refuse(kPlotFailure);
  ShowEntries();
  Edited();
}

void PlotProperties::SaveDefaults() {
  if (!Passes()) return;
  entries_.SaveDefaults(settings_);
  prompter_.Inform("New plots begin with what is entered here.");
}

bool PlotProperties::Passes() {
  const auto refusal = entries_.Check();
  if (!refusal) return true;
  prompter_.Refuse(refusal->Message);
  GoTo(*refusal);
  return false;
}

void PlotProperties::GoTo(const PlotEntries::Refusal& refusal) {
  const auto show = [this](QWidget* on) {
    for (int page = 0; page < pages_->count(); ++page)
      if (pages_->widget(page)->isAncestorOf(on)) pages_->setCurrentIndex(page);
  };
  if (refusal.Series) {
    show(series_);
    return series_->GoTo(*refusal.Series, refusal.Control);
  }
  for (const Panel& panel : panels_)
    if (panel.Form->GoTo(refusal.Control)) show(panel.Form);
}

bool PlotProperties::Apply() {
  if (!Passes()) return false;
  soon_.stop();
  previewed_ = false;
  const bool created = entries_.Create(plot_, prompter_);
  const std::unique_ptr<PlotPage> before = entries_.Original().Clone();
  entries_ = PlotEntries(plot_);
  ShowEntries();
  apply_->setEnabled(false);
  watcher_.Redraw();
  watcher_.Applied(*before);
  return created;
}

void PlotProperties::Edited() {
  apply_->setEnabled(entries_.Changed());
  if (preview_->isChecked()) soon_.start();
}

void PlotProperties::Preview() {
  previewed_ = entries_.Preview(plot_) || previewed_;
  watcher_.Redraw();
}

void PlotProperties::TakeBack() {
  soon_.stop();
  if (!previewed_) return;
  previewed_ = false;
  entries_.TakeBack(plot_);
  watcher_.Redraw();
}

void PlotProperties::ShowEntries() {
  for (const Panel& panel : panels_) panel.Form->Bind(entries_.Pages[panel.Page].Groups[panel.Group]);
  if (series_ != nullptr) series_->ShowEntries();
}

void PlotProperties::accept() {
  if (entries_.Changed() && !Apply()) return;
  TakeBack();
  QDialog::accept();
}

void PlotProperties::reject() {
  if (entries_.Changed()) {
    const auto apply =
        prompter_.AskOrCancel("You have made changes that were not applied. Do you want to apply them now?");
    if (!apply) return;
    if (*apply) return accept();
  }
  TakeBack();
  QDialog::reject();
}

void EditProperties(PlotPage& plot, Settings& settings, Prompter& prompter, PlotWatcher watcher, QWidget* parent) {
  PlotProperties dialog(plot, settings, prompter, std::move(watcher), parent);
  if (parent != nullptr) PlaceBeside(dialog, *parent->window());
  dialog.exec();
}

}  // namespace quorvex
