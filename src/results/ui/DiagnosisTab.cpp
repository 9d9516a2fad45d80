#include "results/ui/DiagnosisTab.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>
#include <utility>

#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"
#include "results/DiagnosisReport.h"
#include "results/ProfilePlot.h"
#include "results/ResultPlots.h"
#include "results/ui/DiagnosisRun.h"
#include "results/ui/ResultPlot.h"
#include "results/ui/TableView.h"

namespace quorvex {
namespace {

constexpr const char* kSection = "diagnosis";

constexpr int kUnnoticed = 300;  // milliseconds for which nobody has to be told that something is computed
constexpr int kProgressTurn = 100;

QSpinBox* NumberBox(QWidget* parent, const char* name, const QString& tip, const QString& suffix, int least, int most) {
  auto* box = Named(new QSpinBox(parent), name);
  box->setRange(least, most);
  box->setSuffix(suffix);
  box->setToolTip(tip);
  box->setAccessibleName(tip);
  return box;
}

}  // namespace

DiagnosisTab::DiagnosisTab(Settings& settings, const LocaleText& locale, Prompter& user, QWidget* parent)
    : QWidget(parent), settings_(settings), locale_(locale) {
  setObjectName("DiagnosisTab");
  LayOut(user);
  progress_.setInterval(kProgressTurn);
  connect(&progress_, &QTimer::timeout, this, &DiagnosisTab::ShowProgress);
}

DiagnosisTab::~DiagnosisTab() = default;

void DiagnosisTab::LayOut(Prompter& user) {
  front_ = new QStackedWidget(this);
  DiagnosisBook = new TableView("DiagnosisBook", "Diagnosis", front_);
  DiagnosisBook->setShowGrid(false);
  pctProfile = new ResultPlot("pctProfile", "Profile", user, settings_, front_);
  front_->addWidget(DiagnosisBook);
  front_->addWidget(pctProfile);
  auto* column = new QVBoxLayout(this);
  column->addWidget(Choices());
  column->addWidget(Commands());
  column->addWidget(front_, 1);
}

QWidget* DiagnosisTab::Choices() {
  auto* row = new QWidget(this);
  ckProfile = Named(new QCheckBox("Profile lim&its", row), "ckProfile");
  ckProfile->setToolTip("Limits that hold where the coefficients are no straight part of the model");
  ckBootstrap = Named(new QCheckBox("Boots&trap", row), "ckBootstrap");
  ckBootstrap->setToolTip("Limits from fits to data drawn anew from these");
  samples_ = NumberBox(row, "samples", "Samples of the bootstrap", " samples", 20, 1'000'000);
  samples_->setSingleStep(100);
  kind_ = Named(new QComboBox(row), "kind");
  kind_->addItems({"of residuals", "of points"});
  NameAloud(kind_, "What the bootstrap draws");
  kind_->view()->setAccessibleName(kind_->accessibleName());
  kind_->setToolTip(kind_->accessibleName());
  ckCrossValidation = Named(new QCheckBox("Cross-&validation", row), "ckCrossValidation");
  ckCrossValidation->setToolTip("The error of fits at the points that were kept from them");
  parts_ = NumberBox(row, "parts", "Parts of the cross-validation", " parts", 2, 100'000);

  const auto flag = [this](const char* key) { return settings_.Flag(key, kSection); };
  ckProfile->setChecked(flag("profile"));
  ckBootstrap->setChecked(flag("bootstrap"));
  samples_->setValue(settings_.Integer("samples", kSection));
  kind_->setCurrentIndex(flag("points") ? 1 : 0);
  ckCrossValidation->setChecked(flag("crossvalidation"));
  parts_->setValue(settings_.Integer("parts", kSection));
  for (QCheckBox* box : {ckProfile, ckBootstrap, ckCrossValidation})
    connect(box, &QCheckBox::toggled, this, &DiagnosisTab::Remember);
  for (QSpinBox* box : {samples_, parts_}) connect(box, &QSpinBox::valueChanged, this, &DiagnosisTab::Remember);
  connect(kind_, &QComboBox::currentIndexChanged, this, &DiagnosisTab::Remember);

  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  for (QWidget* control :
       {static_cast<QWidget*>(ckProfile), static_cast<QWidget*>(ckBootstrap), static_cast<QWidget*>(samples_),
        static_cast<QWidget*>(kind_), static_cast<QWidget*>(ckCrossValidation), static_cast<QWidget*>(parts_)})
    line->addWidget(control);
  line->addStretch();
  return row;
}

QWidget* DiagnosisTab::Commands() {
  auto* row = new QWidget(this);
  cmdCompute = Named(new QPushButton("Comput&e", row), "cmdCompute");
  cmdCompute->setToolTip("Computes what is ticked for this equation");
  connect(cmdCompute, &QPushButton::clicked, this, &DiagnosisTab::Compute);
  cmdProfile = Named(new QPushButton("Vie&w Profile", row), "cmdProfile");
  cmdProfile->setToolTip("How the fit gets worse as one coefficient is held beside its value");
  cmdProfile->setCheckable(true);
  connect(cmdProfile, &QPushButton::toggled, this, &DiagnosisTab::ToggleProfile);
  profiled_ = Named(new QComboBox(row), "profiled");
  NameAloud(profiled_, "Coefficient of the profile");
  profiled_->view()->setAccessibleName(profiled_->accessibleName());
  profiled_->setToolTip(profiled_->accessibleName());
  connect(profiled_, &QComboBox::currentIndexChanged, this, &DiagnosisTab::ShowProfile);
  cmdQuantities = Named(new QPushButton("Ot&her Quantities...", row), "cmdQuantities");
  cmdQuantities->setToolTip("Quantities of the coefficients that are to be reported");
  connect(cmdQuantities, &QPushButton::clicked, this, [this] {
    if (shown_ && shown_->Model != nullptr) emit QuantitiesChosen(*shown_->Model);
  });
  stage_ = Named(new QLabel(row), "stage");
  stage_->setTextFormat(Qt::PlainText);
  QSizePolicy between(QSizePolicy::Ignored, QSizePolicy::Preferred);  // as long as it may be, the window stays
  between.setRetainSizeWhenHidden(true);                              // and the buttons stay where they are
  stage_->setSizePolicy(between);
  bar_ = Named(new QProgressBar(row), "progress");
  bar_->setAccessibleName("Progress of the computation");
  cmdCancel = Named(new QPushButton("C&ancel", row), "cmdCancel");
  cmdCancel->setToolTip("Ends the computation (Escape)");
  const auto cancel = [this] {
    if (run_) run_->Cancel();
  };
  connect(cmdCancel, &QPushButton::clicked, this, cancel);
  escape_ = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escape_, &QShortcut::activated, this, cancel);

  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(cmdCompute);
  line->addWidget(cmdProfile);
  line->addWidget(profiled_);
  line->addWidget(cmdQuantities);
  line->addWidget(stage_, 1);
  line->addWidget(bar_);
  line->addWidget(cmdCancel);
  return row;
}

DiagnosisChoices DiagnosisTab::Chosen() const {
  DiagnosisChoices choices;
  choices.ProfileLimits = ckProfile->isChecked();
  if (ckBootstrap->isChecked()) {
    choices.Bootstrap = samples_->value();
    choices.ResampleCases = kind_->currentIndex() == 1;
  }
  if (ckCrossValidation->isChecked())
    choices.CrossValidation = std::min(parts_->value(), static_cast<int>(points_.N()));
  return choices;
}

void DiagnosisTab::Remember() {
  settings_.SetFlag("profile", ckProfile->isChecked(), kSection);
  settings_.SetFlag("bootstrap", ckBootstrap->isChecked(), kSection);
  settings_.SetNumber("samples", samples_->value(), kSection);
  settings_.SetFlag("points", kind_->currentIndex() == 1, kSection);
  settings_.SetFlag("crossvalidation", ckCrossValidation->isChecked(), kSection);
  settings_.SetNumber("parts", parts_->value(), kSection);
  EnableControls();
}

void DiagnosisTab::Follow(const std::vector<SolvedItem>& solved, SolveData points) {
  solved_ = solved;
  points_ = std::move(points);
  std::vector<const ModelClass*> models;
  for (const SolvedItem& solution : solved)
    if (solution.Model != nullptr) models.push_back(solution.Model);
  if (!kept_.Follow(models, points_)) return;
  note_.clear();
  run_.reset();
  progress_.stop();
}

void DiagnosisTab::Show(const SolvedItem* solution, const NumberPatterns& patterns) {
  shown_ = solution != nullptr ? std::optional(*solution) : std::nullopt;
  patterns_ = patterns;
  if (shown_ && shown_->Model != nullptr && !kept_.HasAll() && !run_ && note_.isEmpty()) return LookAtAll();
  Fill();
}

void DiagnosisTab::LookAtAll() {
  std::vector<const ModelClass*> models;
  for (const SolvedItem& one : solved_)
    if (one.Model != nullptr) models.push_back(one.Model);
  runsOverAll_ = true;
  Start(models, {});
  const BusyCursor busy;
  run_->wait(kUnnoticed) ? TakeAnswer() : Fill();
}

void DiagnosisTab::Fill() {
  const std::vector<Diagnosis> all = kept_.All();
  const bool model = shown_ && shown_->Model != nullptr;
  const auto found = model ? std::ranges::find(all, shown_->Model->id, &Diagnosis::Id) : all.end();
  profiles_.clear();
  if (found != all.end())
    std::ranges::copy_if(found->Coefficients, std::back_inserter(profiles_),
                         [](const CoefficientDiagnosis& one) { return !one.Curve.Points.empty(); });
  OfferProfiles();
  EnableControls();
  if (!shown_) return DiagnosisBook->SetTable(nullptr);
  if (!model) return Say("An interpolation has no coefficients: there is nothing to diagnose.");
  if (found == all.end()) return Say(run_ ? "The solutions are being looked at..." : note_);
  const DiagnosisCircumstances circumstances{kept_.Choices(found->Id), kept_.Warnings(found->Id)};
  const auto report = [&](const NumberPatterns& patterns) {
    return std::make_unique<Report>(DiagnosisReport(all, static_cast<std::size_t>(found - all.begin()), circumstances,
                                                    settings_, locale_, patterns));
  };
  DiagnosisBook->SetTable(report(patterns_.Shown()), report(patterns_.InFull()));
}

void DiagnosisTab::OfferProfiles() {
  const QString chosen = profiled_->currentText();
  {
    const QSignalBlocker quiet(profiled_);
    profiled_->clear();
    for (const CoefficientDiagnosis& one : profiles_) profiled_->addItem(QString::fromStdString(one.Name));
    if (!profiles_.empty()) profiled_->setCurrentIndex(std::max(profiled_->findText(chosen), 0));
  }
  if (profiles_.empty()) cmdProfile->setChecked(false);
  ShowProfile();
}

void DiagnosisTab::ShowProfile() {
  if (ShowsProfile())
    pctProfile->SetPlot(
        PageOf(ProfilePlot(profiles_[static_cast<std::size_t>(profiled_->currentIndex())], settings_, locale_)));
}

// Of the coefficient whose row of the table is current, where it is one.
void DiagnosisTab::ToggleProfile() {
  const bool profile = cmdProfile->isChecked();
  front_->setCurrentIndex(profile ? 1 : 0);
  if (profile) {
    const QSignalBlocker quiet(profiled_);
    const int row = profiled_->findText(DiagnosisBook->currentIndex().siblingAtColumn(0).data().toString());
    if (row >= 0) profiled_->setCurrentIndex(row);
  }
  ShowProfile();
  EnableControls();
  emit FrontChanged();
}

bool DiagnosisTab::ShowsProfile() const { return front_->currentIndex() == 1; }
PlotView* DiagnosisTab::Plot() const { return ShowsProfile() ? pctProfile->View() : nullptr; }

void DiagnosisTab::Say(const QString& text) {
  auto report = std::make_unique<Report>();
  report->Add(RowKind::Values, {text.toStdString()});  // which its column is wide enough for
  DiagnosisBook->SetTable(std::move(report));
}

void DiagnosisTab::Compute() {
  if (run_ || !shown_ || shown_->Model == nullptr) return;
  note_.clear();
  if (!kept_.HasAll()) {
    thenFurther_ = true;
    return LookAtAll();
  }
  runsOverAll_ = false;
  Start({shown_->Model}, kept_.Missing(shown_->Model->id, Chosen()));
  EnableControls();
  cmdCancel->setFocus();
}

void DiagnosisTab::Start(const std::vector<const ModelClass*>& models, const DiagnosisChoices& choices) {
  run_ = std::make_unique<DiagnosisRun>(models, points_, choices, settings_.Integer("sortindex"), settings_);
  connect(run_.get(), &QThread::finished, this, [this, run = run_.get()] {
    if (run_.get() == run && run->isFinished()) TakeAnswer();
  });
  SetStage({});
  bar_->setRange(0, 0);
  run_->start();
  progress_.start();
}

// Of a run that has finished.
void DiagnosisTab::TakeAnswer() {
  progress_.stop();
  const std::unique_ptr<DiagnosisRun> run = std::move(run_);
  run->wait();
  note_ = run->Work().Cancelled() ? "Cancelled." : QString::fromStdString(run->Fault);
  const bool further = std::exchange(thenFurther_, false);
  if (run->Answers.empty()) {
    if (note_.isEmpty()) note_ = "There is nothing to say about this solution.";
  } else if (runsOverAll_) {
    kept_.KeepAll(std::move(run->Answers), std::move(run->Warnings));
  } else {
    kept_.Keep(std::move(run->Answers.front()), run->Choices(), std::move(run->Warnings));
  }
  const bool focused = cmdCancel->hasFocus();
  Fill();
  if (focused) DiagnosisBook->setFocus();
  if (further && kept_.HasAll()) Compute();
}

void DiagnosisTab::ShowProgress() {
  if (!run_) return;
  const std::size_t total = run_->Work().Total();
  bar_->setRange(0, static_cast<int>(total));
  bar_->setValue(static_cast<int>(run_->Work().Done()));
  QString stage = QString::fromStdString(run_->Stage());
  if (total > 0) stage += QString(" %1 of %2").arg(run_->Work().Done()).arg(total);
  SetStage(run_->Work().Cancelled() ? "Cancelling..." : stage);
}

void DiagnosisTab::SetStage(const QString& text) {
  stage_->setText(text);
  stage_->setVisible(!text.isEmpty());
}

void DiagnosisTab::EnableControls() {
  const bool running = run_ != nullptr, model = shown_ && shown_->Model != nullptr;
  for (QWidget* control :
       {static_cast<QWidget*>(ckProfile), static_cast<QWidget*>(ckBootstrap), static_cast<QWidget*>(ckCrossValidation)})
    control->setEnabled(model && !running);
  for (QWidget* control : {static_cast<QWidget*>(samples_), static_cast<QWidget*>(kind_)})
    control->setEnabled(model && !running && ckBootstrap->isChecked());
  parts_->setEnabled(model && !running && ckCrossValidation->isChecked());
  const bool missing = model && (!kept_.HasAll() || kept_.Missing(shown_->Model->id, Chosen()) != DiagnosisChoices());
  cmdCompute->setEnabled(!running && missing);
  cmdProfile->setEnabled(profiled_->count() > 0);
  profiled_->setVisible(cmdProfile->isChecked());
  cmdQuantities->setEnabled(model && !running);
  bar_->setVisible(running);
  cmdCancel->setVisible(running);
  escape_->setEnabled(running);
  if (!running) SetStage(note_);
}

}  // namespace quorvex
