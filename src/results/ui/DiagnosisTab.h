#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "core/SolveData.h"
#include "results/FitInformation.h"
#include "results/KeptDiagnoses.h"
#include "solve/SolvedList.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QShortcut;
class QSpinBox;
class QStackedWidget;

namespace quorvex {

class DiagnosisRun;
class PlotView;
class ResultPlot;
class TableView;

// The page of a results window that says whether an answer can be trusted. What is quick is computed when the page is
// first looked at, the rest by its button, on a thread that can be cancelled; the window stays alive. What was computed
// is kept while the solutions and the points stay as they are.
class DiagnosisTab : public QWidget {
  Q_OBJECT

 public:
  DiagnosisTab(Settings& settings, const LocaleText& locale, Prompter& user, QWidget* parent);
  ~DiagnosisTab() override;

  // The solutions as they are now, the best first, and the points as fits take them. Ends a computation that rests
  // upon others.
  void Follow(const std::vector<SolvedItem>& solved, SolveData points);
  // Shows one of them; none where nothing is solved.
  void Show(const SolvedItem* solution, const NumberPatterns& patterns);

  // What has been computed so far.
  const KeptDiagnoses& Kept() const { return kept_; }

  TableView& Book() const { return *DiagnosisBook; }
  // Whether the profile of a coefficient is in front of that, and its plot, null where there is none.
  bool ShowsProfile() const;
  PlotView* Plot() const;

 signals:
  void FrontChanged();                       // to the table or the profile
  void QuantitiesChosen(ModelClass& model);  // the user wants to say which are reported

 private:
  void LayOut(Prompter& user);
  QWidget* Choices();
  QWidget* Commands();
  DiagnosisChoices Chosen() const;
  void Remember();
  void Fill();
  void OfferProfiles();
  void ShowProfile();
  void ToggleProfile();
  void Say(const QString& text);
  void LookAtAll();
  void Compute();
  void Start(const std::vector<const ModelClass*>& models, const DiagnosisChoices& choices);
  void TakeAnswer();
  void ShowProgress();
  void SetStage(const QString& text);
  void EnableControls();

  Settings& settings_;
  const LocaleText& locale_;
  KeptDiagnoses kept_;
  std::vector<SolvedItem> solved_;
  SolveData points_;
  std::optional<SolvedItem> shown_;
  NumberPatterns patterns_;
  std::vector<CoefficientDiagnosis> profiles_;  // of the solution that is shown, in the order of `profiled_`
  std::unique_ptr<DiagnosisRun> run_;
  bool runsOverAll_ = false;  // else over the solution that was shown when it began
  bool thenFurther_ = false;  // it was only to make ready for what the user asked for
  QString note_;              // why something is not there
  QTimer progress_;

  QCheckBox *ckProfile, *ckBootstrap, *ckCrossValidation;
  QSpinBox *samples_, *parts_;
  QComboBox* kind_;
  QPushButton *cmdCompute, *cmdProfile, *cmdQuantities, *cmdCancel;
  QComboBox* profiled_;  // the coefficients that have a profile
  QShortcut* escape_;
  QProgressBar* bar_;
  QLabel* stage_;
  QStackedWidget* front_;
  TableView* DiagnosisBook;
  ResultPlot* pctProfile;
};

}  // namespace quorvex
