#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/BlockTeam.h"
#include "engine/FitResult.h"
#include "engine/SolveForm.h"
#include "linear/Matrix.h"

namespace quorvex {

class ModelClass;

// One fit of a model: the work of ModelClass::Fit, with its stopping rules and its account in the log. The answers say
// whether the solution stands; where the form is aborted it doesn't, and the log says nothing of that.
class FitRun {
 public:
  FitRun(ModelClass& model, const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form)
      : model_(model), data_(data), settings_(settings), log_(LogString), form_(form) {}

  bool Linear();
  bool Nonlinear();

 private:
  // How one nonlinear search ended.
  struct Search {
    int iter = 1;
    SearchEnd ended = SearchEnd::IterationLimit;
    double change = 0, chisq = 0;
    Matrix covar;
  };

  // What a set of initial estimates led to.
  struct SetEnd {
    enum class How { Solved, BrokeDown, Aborted } Ended = How::Aborted;
    std::vector<double> Start;
    SearchEnd Search = SearchEnd::Converged;  // of a solved one
  };
  struct SetOfTwin;

  bool EnoughPoints();
  bool BoundsStand();
  void TakeStart();
  bool FitStarts();
  bool FitOneStart();
  bool FitSweep(const std::vector<std::vector<double>>& sets);
  bool SweepSideBySide(const std::vector<std::vector<double>>& sets, const std::function<void(const SetEnd&)>& keep);
  SetEnd FitSet(std::size_t k, const std::vector<double>& set);
  void TakeSet(SetOfTwin& set);
  std::optional<Search> FitOneSet(std::vector<double>& a);
  void Take(const SweepRow& row);
  bool Judge(int numcoef, SolveForm& form);
  ThreadTeam* Threads();
  BlockTeam& Team();

  void BringInside(std::vector<double>& a);
  void ReportBounds();
  std::vector<int> FreeFlags() const;
  void Store(const std::vector<double>& a, const Matrix& covar);
  void ShowParameters(const std::vector<double>& a);
  void ReportEnd(const Search& search);
  void ReportParameters();
  void Line(std::string_view text);
  void LineAndBlank(std::string_view text);
  void Fail(std::string_view why);

  ModelClass& model_;
  const SolveData& data_;
  const Settings& settings_;
  std::string& log_;
  SolveForm& form_;
  std::shared_ptr<ThreadTeam> threads_;  // null for one
  std::unique_ptr<BlockTeam> team_;      // of a search, once it has its start
};

}  // namespace quorvex
