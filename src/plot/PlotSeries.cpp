#include "plot/PlotSeries.h"

#include <algorithm>
#include <cmath>

namespace quorvex {
namespace {

template <typename... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;  // which not every C++20 compiler deduces by itself

using ModelPointer = std::unique_ptr<ModelClass>;

}  // namespace

PlotSeries::PlotSeries(DataClass data, SeriesStyle style)
    : content_(std::make_shared<Content>(std::move(data))), style_(std::move(style)) {}

PlotSeries::PlotSeries(InterpClass interpolation)
    : content_(std::make_shared<Content>(std::move(interpolation))),
      style_{.LegendText = Interpolation()->LegendText, .ShowErrorBars = Interpolation()->ShowErrorBars} {}

PlotSeries::PlotSeries(std::unique_ptr<ModelClass> model) : content_(std::make_shared<Content>(std::move(model))) {}

const ModelClass* PlotSeries::Model() const {
  const ModelPointer* model = std::get_if<ModelPointer>(content_.get());
  return model != nullptr ? model->get() : nullptr;
}

double PlotSeries::InputXMin(int variable) const {
  return std::visit(Overloaded{[&](const DataClass& data) { return data.InputXMin(variable); },
                               [](const InterpClass& curve) { return curve.InputXMin; },
                               [&](const ModelPointer& model) { return model->InputXMin(variable); }},
                    *content_);
}

double PlotSeries::InputXMax(int variable) const {
  return std::visit(Overloaded{[&](const DataClass& data) { return data.InputXMax(variable); },
                               [](const InterpClass& curve) { return curve.InputXMax; },
                               [&](const ModelPointer& model) { return model->InputXMax(variable); }},
                    *content_);
}

double PlotSeries::InputYMin() const {
  return std::visit(Overloaded{[](const auto& series) { return series.InputYMin; },
                               [](const ModelPointer& model) { return model->Statistics.InputYMin; }},
                    *content_);
}

double PlotSeries::InputYMax() const {
  return std::visit(Overloaded{[](const auto& series) { return series.InputYMax; },
                               [](const ModelPointer& model) { return model->Statistics.InputYMax; }},
                    *content_);
}

std::size_t PlotSeries::NumInputX() const {
  return std::visit(Overloaded{[](const auto& series) { return series.NumInputX(); },
                               [](const ModelPointer& model) { return model->NumInputX(); }},
                    *content_);
}

SeriesTable PlotSeries::CopyDataTo(int variable) const {
  return std::visit(Overloaded{[&](const DataClass& data) { return data.CopyDataTo(variable); },
                               [](const InterpClass& curve) { return curve.CopyDataTo(); },
                               [&](const ModelPointer& model) { return model->CopyDataTo(variable); }},
                    *content_);
}

ErrorTable PlotSeries::CopyMaXMinErrorDataTo() const {
  return Data() != nullptr ? Data()->CopyMaXMinErrorDataTo() : ErrorTable{};
}

bool PlotSeries::Evaluate(double x, double& y) const {
  return std::visit(
      Overloaded{[](const DataClass&) { return false; }, [&](const InterpClass& curve) { return curve.Evaluate(x, y); },
                 [&](const ModelPointer& model) {
                   return model->Statistics.X.size() == 1 && model->Evaluate({&x, 1}, y);
                 }},
      *content_);
}

void PlotSeries::FittedTo(std::shared_ptr<const SolveData> points, DerivativeKind derivativeMethod) {
  const ModelClass* model = Model();
  bands_ = model != nullptr && model->Statistics.X.size() == 1
               ? std::make_shared<BandSource>(BandSource{std::move(points), derivativeMethod, {}})
               : nullptr;
}

void PlotSeries::KeepBands(Bands bands) {
  bands_ =
      std::make_shared<BandSource>(BandSource{nullptr, DerivativeKind::Richardson, Result<Bands>(std::move(bands))});
}

const Result<Bands>* PlotSeries::ComputedBands() const {
  if (bands_ == nullptr) return nullptr;
  if (!bands_->Computed) {
    SolveForm unattended;
    bands_->Computed =
        Bands::Of(*std::get<ModelPointer>(*content_), *bands_->Points, bands_->DerivativeMethod, unattended);
    bands_->Points = nullptr;
  }
  return &*bands_->Computed;
}

const Bands* PlotSeries::ErrorBands() const {
  const Result<Bands>* bands = ComputedBands();
  return bands != nullptr && *bands ? &**bands : nullptr;
}

std::string PlotSeries::WhyNoBands() const {
  if (Interpolation() != nullptr) return kNoBandsOfInterpolation;
  const Result<Bands>* bands = ComputedBands();
  if (Model() != nullptr && Model()->Statistics.X.size() > 1) return "A surface is shown without bands.";
  if (bands == nullptr)
    return "Only the curve of a model in a plot that was made from its solution has confidence or prediction limits.";
  return *bands ? "" : bands->error();
}

Interval PlotSeries::BandAt(BandKind kind, double x) const {
  const Bands* bands = ErrorBands();
  const ModelPointer* model = std::get_if<ModelPointer>(content_.get());
  if (bands == nullptr || model == nullptr) return {};
  return bands->Limits(kind, static_cast<std::size_t>(style_.BandLevel), **model, {&x, 1});
}

std::vector<BandKind> PlotSeries::ShownBands() const {
  std::vector<BandKind> kinds;
  if (!Displayed() || style_.Bands == 0 || ErrorBands() == nullptr) return kinds;
  for (const BandKind kind : {BandKind::Prediction, BandKind::Confidence})
    if ((style_.Bands & static_cast<int>(kind)) != 0) kinds.push_back(kind);
  return kinds;
}

void PlotSeries::WidenByBands(bool log, double& min, double& max) const {
  constexpr int kPlaces = 64;
  const bool decades = log && min > 0;
  const double least = decades ? min / 10 : min - (max - min) / 2, most = decades ? max * 10 : max + (max - min) / 2;
  for (const BandKind kind : ShownBands())
    for (int i = 0; i <= kPlaces; ++i) {
      const Interval limits = BandAt(kind, std::lerp(InputXMin(), InputXMax(), static_cast<double>(i) / kPlaces));
      if (std::isfinite(limits.Upper)) max = std::max(max, std::min(limits.Upper, most));
      if (std::isfinite(limits.Lower) && (limits.Lower > 0 || !decades))
        min = std::min(min, std::max(limits.Lower, least));
    }
}

bool PlotSeries::GenerateTable(const std::vector<TableRange>& ranges, bool Extrapolate) {
  return std::visit(
      Overloaded{[](DataClass&) { return true; },
                 [&](InterpClass& curve) { return ranges.size() != 1 || curve.GenerateTable(ranges[0], Extrapolate); },
                 [&](ModelPointer& model) {
                   return ranges.size() != model->Statistics.X.size() || model->GenerateTable(ranges, Extrapolate);
                 }},
      *content_);
}

bool PlotSeries::GenerateErrorTable() {
  const ModelPointer* model = std::get_if<ModelPointer>(content_.get());
  return model == nullptr || (*model)->GenerateErrorTable();
}

}  // namespace quorvex
