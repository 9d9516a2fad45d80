#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/DerivativeKind.h"
#include "core/SolveData.h"
#include "diagnosis/Bands.h"
#include "engine/DataClass.h"
#include "engine/InterpClass.h"
#include "engine/ModelClass.h"
#include "plot/SeriesStyle.h"

namespace quorvex {

// A series of a plot: raw data, an interpolation or a model. The plot owns it, so what a project does later with the
// original leaves the plot alone. Copies have looks of their own but one content, and so the table that one of them
// made last.
class PlotSeries {
 public:
  PlotSeries(DataClass data, SeriesStyle style = {});
  PlotSeries(InterpClass interpolation);
  PlotSeries(std::unique_ptr<ModelClass> model);

  // The object itself, none where it is of another type.
  const DataClass* Data() const { return std::get_if<DataClass>(content_.get()); }
  const InterpClass* Interpolation() const { return std::get_if<InterpClass>(content_.get()); }
  const ModelClass* Model() const;

  SeriesStyle& Style() { return style_; }
  const SeriesStyle& Style() const { return style_; }
  bool Displayed() const { return style_.DisplayLine || style_.DisplayMarker; }

  // The limits of the input. Variables count from 1, here and below; an interpolation has one.
  double InputXMin(int variable = 1) const;
  double InputXMax(int variable = 1) const;
  double InputYMin() const;
  double InputYMax() const;

  std::size_t NumInputX() const;
  std::size_t NumTablePoints() const { return CopyDataTo().Y.size(); }
  SeriesTable CopyDataTo(int variable = 1) const;
  ErrorTable CopyMaXMinErrorDataTo() const;  // of data alone

  // The value of a model of one variable or an interpolation. False where it has none, and of other series.
  bool Evaluate(double x, double& y) const;

  // Lets the curve of a model have bands: of the points that it was fitted to, which they are computed from when they
  // are first asked for, or of those that a file kept. Copies that were made before have none.
  void FittedTo(std::shared_ptr<const SolveData> points, DerivativeKind derivativeMethod);
  void KeepBands(Bands bands);
  bool MayHaveBands() const { return bands_ != nullptr; }
  // Null where it has none, for which `WhyNoBands` has a sentence.
  const Bands* ErrorBands() const;
  std::string WhyNoBands() const;
  // The limits of one kind at the level of the style, NaN where there are none.
  Interval BandAt(BandKind kind, double x) const;
  // The kinds that are shown, those first that lie behind others.
  std::vector<BandKind> ShownBands() const;
  // Takes what is shown of them over the input into the limits of Y, by half of their range at most on either side, or
  // by a decade on a logarithmic axis: a band that tells of a poor fit is not to flatten its points.
  void WidenByBands(bool log, double& min, double& max) const;

  // Makes the table of a curve or surface anew, of the models and interpolations that have as many variables as there
  // are ranges; other series keep theirs. False where the model has no value at some point.
  bool GenerateTable(const std::vector<TableRange>& ranges, bool Extrapolate);
  // Makes Model()->FittedData() anew, where residual bars end that begin at the input points. False as above; series
  // without a model have nothing to make.
  bool GenerateErrorTable();

 private:
  using Content = std::variant<DataClass, InterpClass, std::unique_ptr<ModelClass>>;
  // Bands are a matter of the model, as it is when somebody first wants to see them.
  struct BandSource {
    std::shared_ptr<const SolveData> Points;
    DerivativeKind DerivativeMethod = DerivativeKind::Richardson;
    std::optional<Result<Bands>> Computed;
  };
  const Result<Bands>* ComputedBands() const;

  std::shared_ptr<Content> content_;
  std::shared_ptr<BandSource> bands_;
  SeriesStyle style_;
};

}  // namespace quorvex
