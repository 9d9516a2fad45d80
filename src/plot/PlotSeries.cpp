#include "plot/PlotSeries.h"

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
