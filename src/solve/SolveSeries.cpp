#include "solve/SolveSeries.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"
#include "diagnosis/CrossValidation.h"
#include "engine/FitEach.h"
#include "engine/RankModels.h"
#include "sheet/ComputeWeights.h"
#include "solve/FailedFit.h"

namespace quorvex {
namespace {

const char* EndText(SearchEnd end) {
  switch (end) {
    case SearchEnd::Converged:
      return "Converged";
    case SearchEnd::Unchanged:
      return "Unchanged";
    case SearchEnd::IterationLimit:
      return "Iteration limit";
    case SearchEnd::Paused:
      break;
  }
  return "Paused";
}

std::string NameOf(const ModelClass& model) { return model.cfgID.empty() ? model.id : model.cfgID; }

SeriesFit FitOf(const ModelClass& model, std::size_t column, std::size_t rank, std::size_t points) {
  SeriesFit fit;
  fit.Column = column;
  fit.Model = NameOf(model);
  fit.Rank = rank;
  fit.Points = points;
  fit.Status = rank > 0 ? EndText(model.Ended) : model.Failure;
  if (rank == 0) return fit;
  fit.R2 = model.R2;
  fit.StdErr = model.StdErr;
  fit.RSS = model.RSS;
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    fit.Coefficients.push_back({model.Variables(i), model.Values(i), model.StandardError(i)});
  return fit;
}

}  // namespace

bool SeriesAnswers::AnySolved() const {
  return std::ranges::any_of(Fits, [](const SeriesFit& fit) { return fit.Rank > 0; });
}

SeriesAnswers SolveSeries(const SeriesData& series, const ModelCollection& models, const Settings& settings,
                          int sortKey, std::string& log, SolveProgress& form) {
  SeriesAnswers answers;
  answers.Names = series.Names();
  std::vector<FailedFit> starts;
  for (const auto& model : models) {
    if (!model->Solve) continue;
    ++answers.Models;
    starts.push_back({{model.get(), nullptr},
                      model->SpecifyICComplete,
                      model->CoefficientValues,
                      model->ICRanges,
                      settings.TryHarder});
    for (int i = 1; i <= model->NumDependentVar(); ++i)
      if (std::ranges::find(answers.Coefficients, model->Variables(i)) == answers.Coefficients.end())
        answers.Coefficients.push_back(model->Variables(i));
  }
  form.Show(true);
  const auto count = static_cast<int>(series.Size());
  for (std::size_t column = 0; column < series.Size(); ++column) {
    const std::string name = "column " + std::to_string(column + 1) + ", '" + series.Names()[column] + "'";
    form.SetProgress(static_cast<int>(column), count);
    form.Yield();
    if (form.Aborted) break;
    log.append("Taking ").append(name).append(" of the series").append(NL);
    Result<LoadedGrid> loaded = series.Points(column);
    if (!loaded) {
      log.append(loaded.error()).append(NL).append(NL);
      SeriesFit& none = answers.Fits.emplace_back();
      none.Column = column;
      none.Status = loaded.error();
      continue;
    }
    SolveData& data = loaded->Points;
    TakeWeights(data);
    for (const FailedFit& start : starts) {
      start.Object.Model->Solved = false;
      TakeStart(start, *start.Object.Model);
    }
    const auto begin = [&](const ModelClass& model) {
      form.SetParameterCount(model.NumDependentVar());
      form.SetStatusLabel("Solving " + FirstCharacters(name, 30) + ": " + FirstCharacters(NameOf(model), 20));
    };
    FitEach(models, data, settings, log, form, begin, [] {});
    if (!form.Aborted && sortKey == kSortByCV) CrossValidate(models, data, 0, 0, settings, form);
    if (form.Aborted) break;  // half of a column is none
    std::size_t rank = 0;
    for (const ModelClass* model : RankModels(models, sortKey))
      answers.Fits.push_back(FitOf(*model, column, ++rank, data.N()));
    for (const FailedFit& start : starts)
      if (!start.Object.Model->Solved) answers.Fits.push_back(FitOf(*start.Object.Model, column, 0, data.N()));
  }
  answers.Aborted = form.Aborted;
  if (!form.Aborted) form.SetProgress(count, count);
  form.Show(false);
  if (answers.Aborted) LogAbort(log);
  return answers;
}

}  // namespace quorvex
