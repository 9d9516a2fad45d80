#include "files/ModelRecord.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "files/InputRecord.h"
#include "files/UserModelRecord.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

constexpr int kFirstWithFreedomCounts = 71;  // older files' statistics are computed anew

// Which model a record is of. Its lines are those that the model of that ID has.
struct ModelName {
  std::string Description;
  std::vector<std::string> Lines = std::vector<std::string>(kMostFunctionLines);
  std::string id;
  bool UserType = false;
};

template <typename Io, typename Name>
void ListName(Io& io, Name& name) {
  io(name.Description);
  for (auto& line : name.Lines) io(ModelText{line});
  io(name.id);
  io(name.UserType);
}

// What a model keeps behind accessors.
struct FitDetails {
  struct Coefficient {
    std::int32_t Constant = 0;
    double Value = 0;
    ICRange Range;
  };

  FitDetails(std::size_t coefficients, std::size_t variables) : Coefficients(coefficients), Covariance(coefficients) {
    Input.X.assign(variables, {});
  }

  std::vector<Coefficient> Coefficients;
  std::vector<SweepRow> Sweep;
  DataStatistics Input;
  std::vector<double> Covariance;
};

template <typename Io, typename Model>
void ListStatistics(Io& io, Model& model) {
  io.Since(60, model.RSS);
  io(model.RssNorm);
  io(model.RST);
  io(model.ResAvg);
  io(model.ResSum);
  io(model.Durbin);
  io(model.R2);
  io(model.R2Adjust);
  io(model.StdErr);
  io.Since(kFirstWithFreedomCounts, RealForm{model.DOFError});
  io.Since(kFirstWithFreedomCounts, RealForm{model.DOFRegression});
}

// Models of one variable have their points, those of several share the sheet's.
template <typename Io, typename Input, typename Points>
void ListInput(Io& io, Input& input, Points& points) {
  if (input.X.size() == 1)
    io.Columns(points.X[0], points.Y);
  else
    io.Count(points.Y.size());
  ListInputLimits(io, input);
  ListInputMoments(io, input);
}

template <typename Io, typename Model, typename Details, typename Points>
void ListFit(Io& io, Model& model, Details& details, Points& points) {
  const std::size_t n = details.Coefficients.size();
  io(model.SpecifyIC);
  io(model.SpecifyICComplete);
  io(model.Solve);
  io(model.Solved);
  io(model.SolveType);
  ListStatistics(io, model);
  io.Known(n);
  for (auto& c : details.Coefficients) io(c.Constant, c.Value, c.Range.Min, c.Range.Max, c.Range.Steps);
  io.Counted(details.Sweep, SweepRow{.Start = std::vector<double>(n), .Final = {}}, [&](auto& set) {
    for (auto& start : set.Start) io(start);
  });
  ListInput(io, details.Input, points);
  io(model.ErrorInfo);
  io.Known(n);
  for (auto& variance : details.Covariance) io(Computed{variance});
  io(model.NumIterations);
}

// The sets of the sweep that the solution comes from, if it comes from one.
std::span<const SweepRow> SweepOf(const ModelClass& model) {
  if (model.SweepCount == 0) return {};
  return model.GetSweepInfo();
}

// What each start of a sweep led to.
template <typename Io, typename Set>
void ListSweepResults(Io& io, Set& set) {
  io(std::span(set.Final), set.RSS, set.R2Adjust, set.R2, set.StdErr, set.RssNorm);
}

template <typename Io, typename End>
void ListSearchEnd(Io& io, End& end) {
  io.Bounded(end, SearchEnd::Unchanged, SearchEnd::Paused);
}

// The bounds of a coefficient. A file has no infinite numbers.
struct BoundsRecord {
  BoundsRecord() = default;
  BoundsRecord(double least, double most)
      : HasMinimum(std::isfinite(least)),
        HasMaximum(std::isfinite(most)),
        Minimum(HasMinimum ? least : 0),
        Maximum(HasMaximum ? most : 0) {}

  bool HasMinimum = false, HasMaximum = false;
  double Minimum = 0, Maximum = 0;
};

template <typename Io, typename Record>
void ListBounds(Io& io, Record& bounds) {
  io(bounds.HasMinimum, bounds.Minimum, bounds.HasMaximum, bounds.Maximum);
}

// Squares have no record.
template <typename Io, typename Model>
void ListLoss(Io& io, Model& model) {
  io.Bounded(model.Loss, LossKind::Huber, LossKind::Bisquare);
  io.Clamped(model.LossScale, 0, HUGE_VAL);
  io(model.LossScaleGiven);
}

std::size_t CoefficientCount(const ModelClass& model) { return static_cast<std::size_t>(model.NumDependentVar()); }

// The solved models of the project that `has` holds for.
template <typename Condition>
std::vector<const ModelClass*> SolvedModels(const Project& project, const Condition& has) {
  std::vector<const ModelClass*> models;
  for (const auto& model : project.Models)
    if (model->Solved && has(*model)) models.push_back(model.get());
  return models;
}

FitDetails DetailsOf(const ModelClass& model, std::size_t variables) {
  const int n = model.NumDependentVar();
  FitDetails details(static_cast<std::size_t>(n), variables);
  for (int i = 1; i <= n; ++i) {
    const auto at = static_cast<std::size_t>(i - 1);
    details.Coefficients[at] = {model.Constants(i), model.Values(i), model.GetICRange()[at]};
    details.Covariance[at] = model.Covariance(i);
  }
  details.Sweep.assign(SweepOf(model).begin(), SweepOf(model).end());
  details.Input = model.Statistics;
  details.Input.X.resize(variables);
  return details;
}

void TakeDetails(ModelClass& model, FitDetails details) {
  const int n = model.NumDependentVar();
  std::vector<ICRange> ranges;
  for (int i = 1; i <= n; ++i) {
    const FitDetails::Coefficient& coefficient = details.Coefficients[static_cast<std::size_t>(i - 1)];
    model.SetConstant(i, coefficient.Constant);
    model.SetValue(i, coefficient.Value);
    ranges.push_back(coefficient.Range);
    model.SetCovariance(i, details.Covariance[static_cast<std::size_t>(i - 1)]);
  }
  model.SetICRange(std::move(ranges));
  model.SweepCount = static_cast<std::int32_t>(details.Sweep.size());
  model.SetSweepInfo(std::move(details.Sweep));
  model.Statistics = std::move(details.Input);
}

// Versions without the counts of freedom.
void ComputeStatistics(ModelClass& model, const SolveData& points) {
  int adjusted = 0;
  for (int i = 1; i <= model.NumDependentVar(); ++i) adjusted += model.Constants(i) != 0 ? 1 : 0;
  model.Solved =
      model.Solved && model.GetGoodnessOfFit(points, model.SolveType == 0 ? adjusted : model.NumDependentVar());
}

}  // namespace

void WriteSolvedModel(RecordWriter& io, const ModelClass& model, std::size_t variables) {
  static const InputPoints kNoPoints{{{}}, {}};
  const ModelName name{model.Description, FunctionLines(model), model.id, model.UserType};
  const FitDetails details = DetailsOf(model, variables);
  const InputPoints& points = model.NumInputX() == 0 ? kNoPoints : *model.CopyInputDataTo();
  Section(io, kSolvedModel, [&] {
    ListName(io, name);
    ListFit(io, model, details, points);
  });
}

void SolvedModelReader::ReadSolvedModel(RecordReader& io) {
  Section(io, kSolvedModel, [&] {
    ModelName name;
    ListName(io, name);
    ModelClass* const model = io.Good() ? project_.Models.Find(name.id) : nullptr;
    if (model == nullptr || model->UserType != name.UserType || model->NumDependentVar() == 0) return io.Fail();
    model->Description = std::move(name.Description);
    const std::size_t variables = project_.Sheet.IndependentVariables;
    FitDetails details(CoefficientCount(*model), variables);
    InputPoints points{{{}}, {}};
    ListFit(io, *model, details, points);
    if (!io.Good()) return;
    TakeDetails(*model, std::move(details));
    if (variables > 1 && !input_) input_ = std::make_shared<const InputPoints>(InputPoints{Points().X, Points().Y});
    model->CopyInputDataFrom(variables > 1 ? input_ : std::make_shared<const InputPoints>(std::move(points)));
    if (!io.Has(kFirstWithFreedomCounts)) ComputeStatistics(*model, Points());
  });
}

const SolveData& SolvedModelReader::Points() {
  if (points_) return *points_;
  points_ = GatherData(project_.Sheet).Points;
  return *points_;
}

void WriteSweeps(RecordWriter& io, const Project& project) {
  const auto models = SolvedModels(
      project, [](const ModelClass& model) { return !SweepOf(model).empty() && !SweepOf(model)[0].Final.empty(); });
  if (models.empty()) return;
  Section(io, kSweeps, [&] {
    for (const ModelClass* model : models) {
      io(model->id);
      for (const auto& set : SweepOf(*model)) ListSweepResults(io, set);
    }
  });
}

void SolvedModelReader::ReadSweeps(RecordReader& io) {
  Section(io, kSweeps, [&] {
    while (io.GoesOn(kSweeps)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      std::vector<SweepRow> sweep = model->GetSweepInfo();
      for (SweepRow& set : sweep) {
        // This model has had its results: the file names it twice.
        if (!set.Final.empty()) return io.Fail();
        set.Final.resize(set.Start.size());
        ListSweepResults(io, set);
      }
      model->SetSweepInfo(std::move(sweep));
    }
  });
}

void WriteSearchEnds(RecordWriter& io, const Project& project) {
  const auto models =
      SolvedModels(project, [](const ModelClass& model) { return model.Ended != SearchEnd::Converged; });
  if (models.empty()) return;
  Section(io, kSearchEnds, [&] {
    for (const ModelClass* model : models) {
      io(model->id);
      ListSearchEnd(io, model->Ended);
    }
  });
}

void SolvedModelReader::ReadSearchEnds(RecordReader& io) {
  Section(io, kSearchEnds, [&] {
    while (io.GoesOn(kSearchEnds)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      ListSearchEnd(io, model->Ended);
    }
  });
}

void WriteFoundBy(RecordWriter& io, const Project& project) {
  const auto models = SolvedModels(project, [](const ModelClass& model) { return !model.FoundBy.empty(); });
  if (models.empty()) return;
  Section(io, kFoundBy, [&] {
    for (const ModelClass* model : models) {
      io(model->id);
      io(model->FoundBy);
    }
  });
}

void SolvedModelReader::ReadFoundBy(RecordReader& io) {
  Section(io, kFoundBy, [&] {
    while (io.GoesOn(kFoundBy)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      io(model->FoundBy);
    }
  });
}

void WriteDeviations(RecordWriter& io, const Project& project) {
  const auto models = SolvedModels(project, [](const ModelClass& model) { return model.GivenDeviation > 0; });
  if (models.empty()) return;
  Section(io, kDeviations, [&] {
    for (const ModelClass* model : models) {
      io(model->id);
      io(model->GivenDeviation);
    }
  });
}

void WriteBounds(RecordWriter& io, const Project& project) {
  if (std::ranges::none_of(project.Models, [](const auto& model) { return model->HasBounds(); })) return;
  Section(io, kBounds, [&] {
    for (const auto& model : project.Models) {
      if (!model->HasBounds()) continue;
      io(model->id);
      io.Known(model->Coefficients.size());
      for (const Coefficient& coefficient : model->Coefficients) {
        const BoundsRecord bounds{coefficient.Minimum, coefficient.Maximum};
        ListBounds(io, bounds);
      }
    }
  });
}

void WriteLosses(RecordWriter& io, const Project& project) {
  const auto models = SolvedModels(project, [](const ModelClass& model) { return model.Loss != LossKind::Squares; });
  if (models.empty()) return;
  Section(io, kLosses, [&] {
    for (const ModelClass* model : models) {
      io(model->id);
      ListLoss(io, *model);
    }
  });
}

void SolvedModelReader::ReadLosses(RecordReader& io) {
  Section(io, kLosses, [&] {
    while (io.GoesOn(kLosses)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      ListLoss(io, *model);
    }
  });
}

void SolvedModelReader::ReadDeviations(RecordReader& io) {
  Section(io, kDeviations, [&] {
    while (io.GoesOn(kDeviations)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      io(model->GivenDeviation);
    }
  });
}

void SolvedModelReader::ReadBounds(RecordReader& io) {
  Section(io, kBounds, [&] {
    while (io.GoesOn(kBounds)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      io.Known(model->Coefficients.size());
      for (Coefficient& coefficient : model->Coefficients) {
        BoundsRecord bounds;
        ListBounds(io, bounds);
        if (bounds.HasMinimum) coefficient.Minimum = bounds.Minimum;
        if (bounds.HasMaximum) coefficient.Maximum = bounds.Maximum;
        if (!BoundsFault(coefficient).empty()) return io.Fail();
      }
    }
  });
}

// A record for each quantity, in their order.
void WriteReports(RecordWriter& io, const Project& project) {
  const auto hasNone = [](const auto& model) { return model->Reports.empty(); };
  if (std::ranges::all_of(project.Models, hasNone)) return;
  Section(io, kReports, [&] {
    for (const auto& model : project.Models)
      for (const DerivedQuantity& report : model->Reports) {
        io(model->id);
        io(report.Name);
        io(report.Expression);
      }
  });
}

void SolvedModelReader::ReadReports(RecordReader& io) {
  Section(io, kReports, [&] {
    while (io.GoesOn(kReports)) {
      ModelClass* const model = FindModel(io);
      if (model == nullptr) return io.Fail();
      DerivedQuantity& report = model->Reports.emplace_back();
      io(report.Name);
      io(report.Expression);
    }
  });
}

ModelClass* SolvedModelReader::FindModel(RecordReader& io) {
  std::string id;
  io(id);
  return project_.Models.Find(id);
}

}  // namespace quorvex
