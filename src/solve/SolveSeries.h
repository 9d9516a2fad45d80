#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "engine/ModelCollection.h"
#include "engine/SolveProgress.h"
#include "sheet/SeriesData.h"

namespace quorvex {

// A model on a column of a series.
struct SeriesFit {
  struct Coefficient {
    std::string Name;
    double Value = 0, StdErr = 0;
  };
  static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

  std::size_t Column = 0;  // of the series, from 0
  std::string Model;       // empty where the column itself cannot be read
  std::size_t Rank = 0;    // in its column; 0 for a model that was not solved
  std::string Status;      // how the search ended, or why there is no solution
  std::size_t Points = 0;
  double R2 = kNone, StdErr = kNone, RSS = kNone;
  std::vector<Coefficient> Coefficients;
};

struct SeriesAnswers {
  std::vector<std::string> Names;         // of the columns
  std::vector<std::string> Coefficients;  // the different names, in the order of the models
  std::vector<SeriesFit> Fits;            // by column; in each by rank, and behind those what was not solved
  std::size_t Models = 0;                 // that were solved on each
  bool Aborted = false;                   // then the columns before are whole

  bool AnySolved() const;
};

// Solves the models whose `Solve` is set on each column, several columns side by side where the settings allow more
// than one thread; answers and log are those of one column after the other. Each column begins with the setup and the
// estimates that the models have now, so that its answers are those of the column alone. `log` grows by an account of
// each fit. What the models are solved to at the end is not said.
SeriesAnswers SolveSeries(const SeriesData& series, const ModelCollection& models, const Settings& settings,
                          int sortKey, std::string& log, SolveProgress& form);

}  // namespace quorvex
