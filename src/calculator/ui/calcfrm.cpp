#include "calculator/ui/calcfrm.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include "calculator/CurvePreview.h"
#include "calculator/NumberEntry.h"
#include "calculator/ui/CalculatorDialogs.h"
#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"
#include "plot/ui/PlotView.h"

namespace quorvex {
namespace {

std::vector<std::size_t> SelectedRows(const QListWidget& list) {
  std::vector<std::size_t> rows;
  for (int row = 0; row < list.count(); ++row)
    if (list.item(row)->isSelected()) rows.push_back(static_cast<std::size_t>(row));
  return rows;
}

QListWidget* NewList(const char* name, const QString& accessibleName, QWidget* parent) {
  auto* list = Named(new QListWidget(parent), name);
  list->setAccessibleName(accessibleName);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setMinimumSize(list->fontMetrics().averageCharWidth() * 16, list->fontMetrics().height() * 5);
  return list;
}

}  // namespace

calcfrm::calcfrm(QWidget* parent, Settings& settings, const LocaleText& locale, Prompter& user, OpenPlot openPlot)
    : QDialog(parent),
      settings_(settings),
      user_(user),
      openPlot_(std::move(openPlot)),
      calculator_(settings, locale, user),
      previewPlot_(settings, locale),
      availablelist(NewList("availablelist", "Available data", this)),
      stacklist(NewList("stacklist", "Stack", this)),
      constant_text(Named(new QLineEdit(this), "constant_text")),
      units_option{Named(new QRadioButton("&rad", this), "units_option0"),
                   Named(new QRadioButton("de&g", this), "units_option1")},
      arc_check(Named(new QCheckBox("&Arc", this), "arc_check")),
      PreviewPicture(Named(new PlotView(previewPlot_, user, settings, this), "PreviewPicture")) {
  setObjectName("calcfrm");
  setWindowTitle("Data Calculator");
  calculator_.Setup.AskSection = [this](const XRange& whole) {
    return ShowSection(this, whole, calculator_.Setup.Locale, user_);
  };
  PreviewPicture->setAccessibleName("Preview of a curve");
  PreviewPicture->SetWithoutPlot("Select a curve of the stack, then Pre.");
  PreviewPicture->setMinimumSize(160, 120);
  units_option[0]->setChecked(true);
  connect(units_option[1], &QRadioButton::toggled, this,
          [this](bool degrees) { calculator_.Setup.Unit = degrees ? AngleUnit::Degrees : AngleUnit::Radians; });
  connect(arc_check, &QCheckBox::toggled, this, [this](bool arc) { calculator_.Setup.Arc = arc; });
  connect(constant_text, &QLineEdit::textChanged, this,
          [this](const QString& text) { calculator_.Entry = text.toStdString(); });
  for (QWidget* widget : std::initializer_list<QWidget*>{constant_text, availablelist, stacklist})
    widget->installEventFilter(this);

  auto* all = new QVBoxLayout(this);
  all->addLayout(Lists(), 1);
  auto* keys = new QHBoxLayout;
  keys->addLayout(EntryPad(), 2);
  keys->addSpacing(fontMetrics().averageCharWidth());
  keys->addLayout(Functions(), 3);
  all->addLayout(keys);
  // The buttons come in the order in which they were made; these belong between them.
  const std::pair<const char*, QWidget*> places[] = {
      {"cmdSample", stacklist},           {"stackops5", PreviewPicture},      {"exitcalc", constant_text},
      {"enterconstant", units_option[0]}, {"units_option0", units_option[1]}, {"units_option1", arc_check}};
  for (const auto& [before, widget] : places) setTabOrder(findChild<QWidget*>(before), widget);
  // The preview would like the room of a plot's own window.
  resize(minimumSizeHint().expandedTo({900, 540}));
  Show();
  constant_text->setFocus();
}

// The view goes before the plot that it shows.
calcfrm::~calcfrm() { delete PreviewPicture; }

void calcfrm::Init(std::vector<PlotSeries> plot, const std::vector<PlotSeries>& project) {
  calculator_.Init(std::move(plot), project);
  for (const PlotSeries& series : calculator_.Available())
    availablelist->addItem(QString::fromStdString(series.Style().LegendText));
  availablelist->setCurrentRow(0);
}

// A button that Enter, which is the key of the entry, leaves alone, and a click without the focus.
QPushButton* calcfrm::AddButton(const QString& name, const QString& caption, const QString& description,
                                std::function<void()> press) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAccessibleDescription(description);
  button->setToolTip(description);
  button->setAutoDefault(false);
  button->setFocusPolicy(Qt::TabFocus);
  // Less than a style gives to the buttons of a dialog, of which there are never so many.
  button->setMinimumWidth(button->fontMetrics().horizontalAdvance(QString(caption).remove('&')) +
                          2 * button->fontMetrics().averageCharWidth());
  connect(button, &QPushButton::clicked, this, [this, press = std::move(press)] {
    press();
    Show();
  });
  return button;
}

void calcfrm::AddKeys(QGridLayout* grid, const char* name, std::span<const OperationKey> keys, int columns,
                      void (Calculator::*press)(int)) {
  for (int i = 0; const OperationKey& key : keys) {
    grid->addWidget(AddButton(name + QString::number(key.Index), key.Caption, key.Description,
                              [this, press, index = key.Index] { Compute(press, index); }),
                    i / columns, i % columns);
    grid->setColumnStretch(i % columns, 1);
    ++i;
  }
}

QLayout* calcfrm::Lists() {
  auto* copies = new QHBoxLayout;
  copies->addWidget(AddButton("copy", "&Copy to Stack", "Copy what is selected to the stack", [this] {
    const BusyCursor busy;
    calculator_.copy(SelectedRows(*availablelist));
  }));
  copies->addWidget(
      AddButton("cmdSample", "&Sample to Stack", "Push values of the selected equation", [this] { cmdSample(); }));
  auto* available = new QVBoxLayout;
  available->addWidget(LabelFor(availablelist, "A&vailable data:", this));
  available->addWidget(availablelist, 1);
  available->addLayout(copies);

  auto* stack = new QVBoxLayout;
  stack->addWidget(LabelFor(stacklist, "Stac&k, the top first:", this));
  stack->addWidget(stacklist, 1);
  stack->addLayout(StackCommands());

  auto* picture = new QVBoxLayout;
  picture->addWidget(PreviewPicture, 1);
  auto* commands = new QHBoxLayout;
  commands->addWidget(AddButton("preview", "&Pre", "Preview the selected curve", [this] { preview(); }));
  commands->addWidget(AddButton("plotnew", "&New Plot", "Plot the selected curves and close", [this] { plotnew(); }));
  commands->addWidget(AddButton("exitcalc", "E&xit", "Close the calculator", [this] { close(); }));
  picture->addLayout(commands);

  auto* row = new QHBoxLayout;
  row->addLayout(available, 3);
  row->addLayout(stack, 3);
  row->addLayout(picture, 3);
  return row;
}

QLayout* calcfrm::StackCommands() {
  auto* grid = new QGridLayout;
  AddKeys(grid, "stackops", StackKeys(), 6, &Calculator::stackops);
  return grid;
}

QLayout* calcfrm::EntryPad() {
  auto* grid = new QGridLayout;
  const auto number = [&](int index, const QString& caption, const char* description, const std::string& key, int row,
                          int column) {
    auto* button = AddButton(QString("numbers%1").arg(index), caption, description, [this, key] {
      calculator_.Entry = WithNumberKey(calculator_.Entry, key, calculator_.Setup.Locale);
    });
    if (key != "pi") button->setFocusPolicy(Qt::NoFocus);  // the keyboard has these keys itself
    grid->addWidget(button, row, column);
  };
  for (int digit = 1; digit <= 9; ++digit)
    number(digit, QString::number(digit), "Digit", std::to_string(digit), 2 - (digit - 1) / 3, (digit - 1) % 3);
  number(0, "0", "Digit", "0", 3, 0);
  number(10, QChar(calculator_.Setup.Locale.DecimalSeparator), "Decimal separator", ".", 3, 1);
  number(11, "pi", "The number pi", "pi", 4, 0);
  grid->addWidget(AddButton("changesign", "(-)", "Change the sign of the entry, or of its exponent",
                            [this] { calculator_.Entry = WithSignChanged(calculator_.Entry); }),
                  3, 2);
  grid->addWidget(AddButton("exponential", "e", "The exponent of the entry, a power of ten",
                            [this] { calculator_.Entry = WithExponent(calculator_.Entry); }),
                  4, 1);
  undo_ = AddButton("cmdUndo", "&Undo", "Take the last operation back (Ctrl+Z)", [this] { calculator_.Undo(); });
  grid->addWidget(undo_, 4, 2);
  for (const OperationKey& key : ArithmeticKeys())
    grid->addWidget(AddButton("arithmetic" + QString::number(key.Index), key.Caption, key.Description,
                              [this, index = key.Index] { Compute(&Calculator::arithmetic, index); }),
                    3 - key.Index, 3);
  auto* enter = AddButton("enterconstant", "&Enter", "Push the number, or name the top entry",
                          [this] { calculator_.enterconstant(); });
  enter->setDefault(true);
  grid->addWidget(enter, 4, 3);
  for (int column = 0; column < grid->columnCount(); ++column) grid->setColumnStretch(column, 1);

  auto* line = new QHBoxLayout;
  line->addWidget(LabelFor(constant_text, "Num&ber or name:", this));
  line->addWidget(constant_text);
  auto* column = new QVBoxLayout;
  column->addLayout(line);
  column->addLayout(grid);
  return column;
}

QLayout* calcfrm::Functions() {
  auto* angles = new QHBoxLayout;
  for (QRadioButton* unit : units_option) angles->addWidget(unit);
  angles->addWidget(arc_check);
  angles->addStretch();
  angles->addWidget(AddButton("DistribCalc", "&Dist", "Push a normal distribution", [this] {
    if (auto curve = ShowDistribution(this, calculator_.Setup.Locale, user_)) calculator_.Push(std::move(*curve));
  }));
  angles->addWidget(AddButton("equation", "E&q", "Push an equation in X", [this] {
    if (auto curve = ShowExpression(this, calculator_.Setup.Locale, user_)) calculator_.Push(std::move(*curve));
  }));
  angles->addWidget(
      AddButton("ImportCommand", "&Import", "Push what a file holds", [this] { calculator_.ImportCommand(); }));
  angles->addWidget(
      AddButton("ExportCommand", "Exp&ort", "Write the top entry to a file", [this] { calculator_.ExportCommand(); }));
  auto* grid = new QGridLayout;
  AddKeys(grid, "operations", OperationKeys(), 6, &Calculator::operations);
  auto* column = new QVBoxLayout;
  column->addLayout(angles);
  column->addLayout(grid);
  return column;
}

// What may take a while.
void calcfrm::Compute(void (Calculator::*command)(int), int Index) {
  const BusyCursor busy;
  (calculator_.*command)(Index);
}

void calcfrm::Show() {
  const QString entry = QString::fromStdString(calculator_.Entry);
  if (constant_text->text() != entry) constant_text->setText(entry);
  QStringList texts;
  for (const std::string& text : calculator_.StackTexts()) texts << QString::fromStdString(text);
  QStringList shown;
  for (int row = 0; row < stacklist->count(); ++row) shown << stacklist->item(row)->text();
  undo_->setEnabled(calculator_.CanUndo());
  if (texts == shown) return;
  stacklist->clear();
  stacklist->addItems(texts);
  stacklist->setCurrentRow(0);
}

void calcfrm::preview() {
  const std::vector<PlotSeries> curves = calculator_.SelectedCurves(SelectedRows(*stacklist));
  if (curves.empty()) return;
  PreviewCurve(previewPlot_, curves.front(), settings_, user_);
  PreviewPicture->Redraw();
}

void calcfrm::plotnew() {
  std::vector<PlotSeries> curves = calculator_.SelectedCurves(SelectedRows(*stacklist));
  if (!curves.empty() && openPlot_(std::move(curves))) close();
}

void calcfrm::cmdSample() {
  const PlotSeries* equation = calculator_.SampleSource(SelectedRows(*availablelist));
  if (equation == nullptr) return;
  if (auto curve = ShowSample(this, *equation, settings_, calculator_.Setup.Locale, user_))
    calculator_.Push(std::move(*curve));
}

// What a key of the keyboard does, wherever the focus is. False for those that mean what they always do.
bool calcfrm::TakeKey(const QKeyEvent& event) {
  const bool typing = constant_text->hasFocus();
  if (event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo)) {
    const bool undo = event.matches(QKeySequence::Undo);
    // What is being typed comes first.
    if (typing && (undo ? constant_text->isUndoAvailable() : constant_text->isRedoAvailable())) return false;
    undo ? calculator_.Undo() : calculator_.Redo();
    Show();
    return true;
  }
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  if (event.key() == Qt::Key_Delete && (!typing || constant_text->text().isEmpty())) {
    calculator_.stackops(kPopKey);
    Show();
    return true;
  }
  const QString text = event.text();
  if (text.size() != 1 || !text[0].isPrint() || (text[0] == ' ' && !typing)) return false;
  switch (MeaningOf(text[0].toLatin1(), calculator_.Entry, calculator_.Setup.Locale)) {
    case TypedKey::Operator:
      Compute(&Calculator::arithmetic, static_cast<int>(QString("+-*/").indexOf(text)));
      Show();
      return true;
    case TypedKey::Separator:
      constant_text->setFocus();
      constant_text->insert(QString(calculator_.Setup.Locale.DecimalSeparator));
      return true;
    default:
      if (typing) return false;
      constant_text->setFocus();
      constant_text->end(false);
      constant_text->insert(text);
      return true;
  }
}

bool calcfrm::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() == QEvent::KeyPress && TakeKey(*static_cast<QKeyEvent*>(event))) return true;
  return QDialog::eventFilter(receiver, event);
}

void calcfrm::keyPressEvent(QKeyEvent* event) {
  // What the focus had no use for; the filter has seen those of the entry and the lists.
  if (constant_text->hasFocus() || availablelist->hasFocus() || stacklist->hasFocus() || !TakeKey(*event))
    QDialog::keyPressEvent(event);
}

}  // namespace quorvex
