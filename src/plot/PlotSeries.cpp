#include "plot/PlotSeries.h"

#include "engine/EqClass.h"

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

PlotSeries::PlotSeries(DataClass data, SeriesStyle style) : content_(std::move(data)), style_(std::move(style)) {}

PlotSeries::PlotSeries(InterpClass interpolation)
    : content_(std::move(interpolation)),
      style_{.LegendText = Interpolation()->LegendText, .ShowErrorBars = Interpolation()->ShowErrorBars} {}

PlotSeries::PlotSeries(std::unique_ptr<ModelClass> model) : content_(std::move(model)) {}

const ModelClass* PlotSeries::Model() const {
  const ModelPointer* model = std::get_if<ModelPointer>(&content_);
  return model != nullptr ? model->get() : nullptr;
}

double PlotSeries::InputXMin(int variable) const {
  return std::visit(Overloaded{[&](const DataClass& data) { return data.InputXMin(variable); },
                               [](const InterpClass& curve) { return curve.InputXMin; },
                               [&](const ModelPointer& model) {
                                 return model->Statistics.X[static_cast<std::size_t>(variable - 1)].InputXMin;
                               }},
                    content_);
}

double PlotSeries::InputXMax(int variable) const {
  return std::visit(Overloaded{[&](const DataClass& data) { return data.InputXMax(variable); },
                               [](const InterpClass& curve) { return curve.InputXMax; },
                               [&](const ModelPointer& model) {
                                 return model->Statistics.X[static_cast<std::size_t>(variable - 1)].InputXMax;
                               }},
                    content_);
}

double PlotSeries::InputYMin() const {
  return std::visit(Overloaded{[](const auto& series) { return series.InputYMin; },
                               [](const ModelPointer& model) { return model->Statistics.InputYMin; }},
                    content_);
}

double PlotSeries::InputYMax() const {
  return std::visit(Overloaded{[](const auto& series) { return series.InputYMax; },
                               [](const ModelPointer& model) { return model->Statistics.InputYMax; }},
                    content_);
}

std::size_t PlotSeries::NumInputX() const {
  return std::visit(Overloaded{[](const auto& series) { return series.NumInputX(); },
                               [](const ModelPointer& model) { return model->NumInputX(); }},
                    content_);
}

SeriesTable PlotSeries::CopyDataTo() const {
  return std::visit(Overloaded{[](const auto& series) { return series.CopyDataTo(); },
                               [](const ModelPointer& model) { return model->CopyDataTo(); }},
                    content_);
}

ErrorTable PlotSeries::CopyMaXMinErrorDataTo() const {
  return Data() != nullptr ? Data()->CopyMaXMinErrorDataTo() : ErrorTable{};
}

bool PlotSeries::GenerateTable(const TableRange& range, bool Extrapolate) {
  return std::visit(Overloaded{[](DataClass&) { return true; },
                               [&](InterpClass& curve) { return curve.GenerateTable(range, Extrapolate); },
                               [&](ModelPointer& model) {
                                 // A model of several variables has no curve to be computed.
                                 return dynamic_cast<EqClass*>(model.get()) == nullptr ||
                                        model->GenerateTable({range}, Extrapolate);
                               }},
                    content_);
}

}  // namespace quorvex
