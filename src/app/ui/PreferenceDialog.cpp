#include "app/ui/PreferenceDialog.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include "core/ui/ChooseFiles.h"
#include "core/ui/ColorButton.h"

namespace quorvex {
namespace {

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// "txtundolevels", "ckShowTipsatStartup".
QString ControlName(const char* kind, const Preference& row) { return kind + Text(row.Key).remove(' '); }

}  // namespace

PreferenceDialog::PreferenceDialog(QWidget* parent, const QString& title, std::span<const PreferencePage> pages,
                                   Session& session, Prompter& user)
    : QDialog(parent), session_(session), user_(user), rows_(pages), pages_(new QTabWidget(this)) {
  setWindowTitle(title);
  pages_->setObjectName("SSTab");
  pages_->setUsesScrollButtons(false);
  for (const PreferencePage& page : pages) AddPage(page);

  auto* buttons =
      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults, this);
  QPushButton* defaults = buttons->button(QDialogButtonBox::RestoreDefaults);
  defaults->setText("&Restore Defaults");
  defaults->setObjectName("cmdDefaults");
  defaults->setToolTip("Shows what Quorvex does where nothing was chosen; OK stores it");
  connect(buttons, &QDialogButtonBox::accepted, this, &PreferenceDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(defaults, &QPushButton::clicked, this, [this] {
    Show(EntriesOf(rows_, Settings(), session_.Locale));
    RestoreMore();
  });

  auto* column = new QVBoxLayout(this);
  column->addWidget(pages_);
  column->addWidget(buttons);
  Show(EntriesOf(rows_, session_.Preferences, session_.Locale));
}

void PreferenceDialog::AddPage(const PreferencePage& page) {
  auto* widget = new QWidget(pages_);
  auto* form = new QFormLayout(widget);
  for (const Preference& row : page.Rows) AddRow(*form, row);
  pages_->addTab(widget, Text(page.Title));
}

void PreferenceDialog::AddRow(QFormLayout& form, const Preference& row) {
  QWidget* page = form.parentWidget();
  QWidget* field = nullptr;  // what stands in the form, the control or a box with the control
  QWidget*& control = controls_[std::string(row.Key)];
  switch (row.Kind) {
    case PreferenceKind::OneOrZero:
    case PreferenceKind::TrueOrFalse:
      control = new QCheckBox(Text(row.Label), page);
      control->setObjectName(ControlName("ck", row));
      form.addRow(control);
      return;
    case PreferenceKind::Integer:
    case PreferenceKind::Real:
      field = control = new QLineEdit(page);
      control->setObjectName(ControlName("txt", row));
      control->setMaximumWidth(control->fontMetrics().averageCharWidth() * 20);
      break;
    case PreferenceKind::Choice: {
      auto* choices = new QComboBox(page);
      for (const PreferenceChoice& choice : row.Choices) choices->addItem(Text(choice.Label), Text(choice.Stored));
      choices->setObjectName(ControlName("cmb", row));
      field = control = choices;
      break;
    }
    case PreferenceKind::Color:
      field = control = new ColorButton(page);
      control->setObjectName(ControlName("cmd", row));
      break;
    case PreferenceKind::Pattern:
      field = AddPattern(row, page);
      break;
    case PreferenceKind::File:
      field = AddFile(row, page);
      break;
  }
  control->setAccessibleName(QString::fromStdString(NameOf(row)));
  auto* label = new QLabel(Text(row.Label), page);
  label->setBuddy(control);
  form.addRow(label, field);
}

QWidget* PreferenceDialog::AddPattern(const Preference& row, QWidget* page) {
  auto* box = new QWidget(page);
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  auto* edit = new QLineEdit(box);
  edit->setObjectName(ControlName("txt", row));
  edit->setToolTip("0 is a digit that is always shown, # one that is shown when needed; General chooses by itself");
  auto* sample = new QLabel(box);
  sample->setObjectName(ControlName("sample", row));
  sample->setTextFormat(Qt::PlainText);
  sample->setMinimumWidth(sample->fontMetrics().averageCharWidth() * 28);
  connect(edit, &QLineEdit::textChanged, sample, [this, sample](const QString& text) {
    sample->setText("such as " + QString::fromStdString(PatternSample(text.toStdString(), session_.Locale)));
  });
  line->addWidget(edit, 1);
  line->addWidget(sample, 1);
  controls_[std::string(row.Key)] = edit;
  return box;
}

QWidget* PreferenceDialog::AddFile(const Preference& row, QWidget* page) {
  auto* box = new QWidget(page);
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  auto* edit = new QLineEdit(box);
  edit->setObjectName(ControlName("txt", row));
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 30);
  auto* browse = new QPushButton("&Browse...", box);
  browse->setObjectName(ControlName("cmd", row));
  browse->setAccessibleName("Browse for the " + QString::fromStdString(NameOf(row)));
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, edit, [this, edit] {
    if (const auto name = ChooseFile(this, "Choose a File", edit->text(), {}, user_)) edit->setText(*name);
  });
  line->addWidget(edit, 1);
  line->addWidget(browse);
  controls_[std::string(row.Key)] = edit;
  return box;
}

void PreferenceDialog::Show(const PreferenceEntries& entries) {
  for (const auto& [key, entry] : entries) {
    QWidget* control = controls_.at(key);
    const QString text = QString::fromStdString(entry);
    if (auto* box = qobject_cast<QCheckBox*>(control)) box->setChecked(text == "1" || text == "true");
    if (auto* edit = qobject_cast<QLineEdit*>(control)) edit->setText(text);
    if (auto* choices = qobject_cast<QComboBox*>(control)) choices->setCurrentIndex(choices->findData(text));
    if (auto* color = qobject_cast<ColorButton*>(control)) color->SetColor(text.toInt());
  }
}

PreferenceEntries PreferenceDialog::Typed() const {
  PreferenceEntries entries;
  for (const PreferencePage& page : rows_)
    for (const Preference& row : page.Rows) {
      const QWidget* control = controls_.find(row.Key)->second;
      QString text;
      if (const auto* box = qobject_cast<const QCheckBox*>(control))
        text = row.Kind == PreferenceKind::OneOrZero ? (box->isChecked() ? "1" : "0")
                                                     : (box->isChecked() ? "true" : "false");
      if (const auto* edit = qobject_cast<const QLineEdit*>(control)) text = edit->text();
      if (const auto* choices = qobject_cast<const QComboBox*>(control)) text = choices->currentData().toString();
      if (const auto* color = qobject_cast<const ColorButton*>(control)) text = QString::number(color->Color());
      entries[std::string(row.Key)] = text.toStdString();
    }
  return entries;
}

void PreferenceDialog::GoTo(const Preference& row) {
  for (std::size_t i = 0; i < rows_.size(); ++i)
    for (const Preference& other : rows_[i].Rows)
      if (&other == &row) pages_->setCurrentIndex(static_cast<int>(i));
  QWidget* control = controls_.find(row.Key)->second;
  control->setFocus();
  if (auto* edit = qobject_cast<QLineEdit*>(control)) edit->selectAll();
}

void PreferenceDialog::accept() {
  const PreferenceEntries entries = Typed();
  if (const Preference* wrong = RefuseFirst(rows_, entries, session_.Locale, user_)) return GoTo(*wrong);
  const int error = StorePreferences(rows_, entries, session_.Preferences, session_.Locale);
  const int more = StoreMore();
  stored_ = error == 0 && more == 0;
  TellWhetherStored(error != 0 ? error : more, user_);
  QDialog::accept();
}

FilePref::FilePref(QWidget* parent, Session& session, Prompter& user)
    : PreferenceDialog(parent, "Solver and Results", SolverPreferences(), session, user) {
  setObjectName("FilePref");
}

}  // namespace quorvex
