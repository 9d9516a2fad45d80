#include "desktop/SolveDialogs.h"

#include "desktop/ImportCommands.h"
#include "desktop/ProjectMenus.h"
#include "desktop/Regress.h"
#include "desktop/quorvexWindow.h"
#include "files/GroupFileStore.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "results/ResultPlots.h"
#include "results/ui/frmSeries.h"
#include "results/ui/reginit.h"
#include "solve/SeriesPick.h"
#include "solve/ui/ClearFits.h"
#include "solve/ui/Groups.h"
#include "solve/ui/Interp.h"
#include "solve/ui/SeriesSetup.h"
#include "solve/ui/Solve.h"
#include "solve/ui/SolveFailed.h"
#include "solve/ui/SolveLog.h"
#include "solve/ui/SolveSetup.h"

namespace quorvex {

bool SolveDialogs::SolveSetup(SolveChoice& choice) {
  return ShowSolveSetup(&window_, choice, window_.Document().Locale.DecimalSeparator, window_.User());
}
bool SolveDialogs::Regress(ModelPick& pick) { return ShowRegress(window_, pick); }
bool SolveDialogs::Groups(GroupPick& pick) { return ShowGroups(&window_, pick, window_.User()); }

std::vector<InterpClass*> SolveDialogs::Interp(std::vector<InterpClass>& curves) {
  return ChooseInterpolations(&window_, curves);
}

bool SolveDialogs::ClearFits(FitClearing& clearing) { return ShowClearFits(&window_, clearing, window_.User()); }
void SolveDialogs::SolveLog(const std::string& log, std::size_t from) { ShowSolveLog(&window_, log, from); }

std::unique_ptr<SolveProgress> SolveDialogs::OpenProgress() {
  emit window_.SolveBegins();
  return std::make_unique<Solve>(window_.window());
}

WayOn SolveDialogs::SolveFailed(FailedSolve& failed) { return ShowSolveFailed(&window_, failed); }

bool SolveDialogs::InitialEstimates(ModelClass& model) {
  return SpecifyEstimates(&window_, window_.Document(), window_.Editor(), model, window_.Preferences());
}

void SolveDialogs::RunEnded() { window_.Refresh(); }

std::optional<SeriesData> SolveDialogs::ChooseSeries(std::size_t independentVariables) {
  const QString file = ChooseDataFile(window_, "Series");
  if (file.isEmpty()) return std::nullopt;
  const LocaleText& locale = window_.Document().Locale;
  const auto import = OpenImport(file.toStdString(), DataSheet(independentVariables, false), locale, &window_.User());
  if (!import) {
    TellFailure(import.error(), window_.User());
    return std::nullopt;
  }
  SeriesPick pick(**import, independentVariables, locale);
  return ShowSeriesSetup(&window_, pick, window_.User());
}

void SolveDialogs::ShowSeries(SeriesAnswers answers) {
  auto* form =
      new frmSeries(std::move(answers), window_.Preferences(), window_.Document().Locale, window_.User(), &window_);
  form->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(form, &frmSeries::PlotChosen, &window_, [this, form](std::size_t quantity, SeriesAxis axis) {
    OpenPlotOf(window_, PageOf(form->Plot(quantity, axis)));
  });
  form->show();
}

std::unique_ptr<GroupStore> SolveDialogs::OpenGroupStore(std::size_t independentVariables) {
  return OpenGroupFile(independentVariables);
}

void SolveDialogs::GoTo(const CellPlace& cell) { window_.GoTo(cell); }

}  // namespace quorvex
