#include "desktop/ShowResults.h"

#include "desktop/quorvexWindow.h"
#include "results/ui/frmResults.h"
#include "results/ui/reginit.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

void Follow(const quorvexWindow& window, frmResults& results) {
  if (const auto& limits = window.Solver().LimitsOfLastSolve()) results.SetLimits(*limits);
  results.Refresh();
}

}  // namespace

void ShowResults(quorvexWindow& window, int position) {
  auto* results = window.findChild<frmResults*>();
  if (results == nullptr) {
    results = new frmResults(window.Document(), window.Preferences(), window.User(), &window);
    results->setWindowFlag(Qt::Window);
    results->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&window, &quorvexWindow::SolutionsChanged, results,
                     [&window, results] { Follow(window, *results); });
  }
  Follow(window, *results);
  results->Show(window.Solved()[static_cast<std::size_t>(position)]);
  results->show();
  results->raise();
  results->activateWindow();
}

void SpecifyEstimates(quorvexWindow& window, QWidget* over, ModelClass& model) {
  Result<GatheredData> data = GatherData(window.Document().Sheet);
  if (!data) return window.User().Refuse(data.error());
  reginit(over, window.Document(), window.Editor(), model, std::move(data->Points), window.Preferences()).exec();
}

}  // namespace quorvex
