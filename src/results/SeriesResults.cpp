#include "results/SeriesResults.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>

#include "core/NumberText.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

const SeriesFit::Coefficient* Find(const SeriesFit& fit, const std::string& name) {
  const auto found = std::ranges::find(fit.Coefficients, name, &SeriesFit::Coefficient::Name);
  return found == fit.Coefficients.end() ? nullptr : &*found;
}

double ValueOf(const SeriesFit& fit, const std::string& name) {
  const auto* const coefficient = Find(fit, name);
  return coefficient != nullptr ? coefficient->Value : SeriesFit::kNone;
}

double ErrorOf(const SeriesFit& fit, const std::string& name) {
  const auto* const coefficient = Find(fit, name);
  return coefficient != nullptr ? coefficient->StdErr : SeriesFit::kNone;
}

// What a fit has besides its coefficients.
struct Statistic {
  const char* Name;
  double (*Of)(const SeriesFit& fit, const std::string&);
};
constexpr Statistic kStatistics[] = {
    {"R^2", [](const SeriesFit& fit, const std::string&) { return fit.R2; }},
    {"StdErr", [](const SeriesFit& fit, const std::string&) { return fit.StdErr; }},
    {"RSS", [](const SeriesFit& fit, const std::string&) { return fit.RSS; }},
};

// A heading as a number, with a decimal point or the locale's separator.
double NumberIn(const std::string& heading, const LocaleText& locale) {
  if (const auto number = NumericText(heading)) return *number;
  return NumericText(heading, locale.DecimalSeparator).value_or(SeriesFit::kNone);
}

}  // namespace

SeriesAnswersTable::SeriesAnswersTable(std::shared_ptr<const SeriesAnswers> answers, const LocaleText& locale,
                                       const NumberPatterns& patterns)
    : answers_(std::move(answers)), locale_(locale), patterns_(patterns), order_(answers_->Fits.size()) {
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  const auto count = [&](const char* heading, double (*number)(const SeriesFit&, const std::string&)) {
    columns_.push_back({heading, nullptr, number, {}, true});
  };
  const auto text = [&](const char* heading, std::string (*of)(const SeriesFit&, const SeriesAnswers&)) {
    columns_.push_back({heading, of, nullptr});
  };
  count("No.", [](const SeriesFit& fit, const std::string&) { return static_cast<double>(fit.Column + 1); });
  text("Column", [](const SeriesFit& fit, const SeriesAnswers& all) { return all.Names[fit.Column]; });
  text("Model", [](const SeriesFit& fit, const SeriesAnswers&) { return fit.Model; });
  count("Rank", [](const SeriesFit& fit, const std::string&) {
    return fit.Rank > 0 ? static_cast<double>(fit.Rank) : SeriesFit::kNone;
  });
  text("Status", [](const SeriesFit& fit, const SeriesAnswers&) { return fit.Status; });
  for (const std::string& name : answers_->Coefficients) {
    columns_.push_back({name, nullptr, ValueOf, name});
    columns_.push_back({"StdErr of " + name, nullptr, ErrorOf, name});
  }
  for (const Statistic& statistic : kStatistics) columns_.push_back({statistic.Name, nullptr, statistic.Of});
  count("Points", [](const SeriesFit& fit, const std::string&) {
    return fit.Model.empty() ? SeriesFit::kNone : static_cast<double>(fit.Points);
  });
}

std::string SeriesAnswersTable::Cell(std::size_t row, std::size_t column) const {
  const SeriesFit& fit = answers_->Fits[order_[row]];
  const Column& what = columns_[column];
  if (what.Text != nullptr) return what.Text(fit, *answers_);
  const double number = what.Number(fit, what.Coefficient);
  if (!std::isfinite(number)) return {};
  return what.IsCount ? GeneralNumber(number) : patterns_.Text(number, patterns_.Values, locale_);
}

void SeriesAnswersTable::Sort(std::size_t column, bool descending) {
  const Column& what = columns_[column];
  struct Key {
    double Number;
    std::string Text;
  };
  std::vector<Key> keys;
  for (const SeriesFit& fit : answers_->Fits) {
    const std::string text = what.Text != nullptr ? what.Text(fit, *answers_) : "";
    keys.push_back({what.Text != nullptr ? NumberIn(text, locale_) : what.Number(fit, what.Coefficient), text});
  }
  const auto isNothing = [](const Key& key) { return std::isnan(key.Number) && key.Text.empty(); };
  const auto isBefore = [](const Key& a, const Key& b) {
    if (std::isnan(a.Number) != std::isnan(b.Number)) return std::isnan(b.Number);
    return std::isnan(a.Number) ? a.Text < b.Text : a.Number < b.Number;
  };
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  std::ranges::stable_sort(order_, [&](std::size_t i, std::size_t j) {
    const Key &a = keys[i], &b = keys[j];
    if (isNothing(a) || isNothing(b)) return !isNothing(a) && isNothing(b);
    return descending ? isBefore(b, a) : isBefore(a, b);
  });
}

std::vector<std::string> SeriesQuantities(const SeriesAnswers& answers) {
  std::vector<std::string> names = answers.Coefficients;
  for (const Statistic& statistic : kStatistics) names.emplace_back(statistic.Name);
  return names;
}

Result<PlotClass> SeriesPlot(const SeriesAnswers& answers, std::size_t quantity, SeriesAxis axis,
                             const Settings& settings, const LocaleText& locale) {
  const std::size_t coefficients = answers.Coefficients.size();
  const bool isCoefficient = quantity < coefficients;
  const std::string name = SeriesQuantities(answers)[quantity];
  std::vector<std::string> models;  // in the order in which they come
  std::map<std::string, SolveData> points;
  bool anyHeading = false;
  for (const SeriesFit& fit : answers.Fits) {
    const double x =
        axis == SeriesAxis::Number ? static_cast<double>(fit.Column + 1) : NumberIn(answers.Names[fit.Column], locale);
    anyHeading = anyHeading || std::isfinite(x);
    const double y = isCoefficient ? ValueOf(fit, name) : kStatistics[quantity - coefficients].Of(fit, name);
    if (!std::isfinite(x) || !std::isfinite(y)) continue;
    if (!points.contains(fit.Model)) models.push_back(fit.Model);
    SolveData& data = points[fit.Model];
    data.X.resize(1);
    data.X[0].push_back(x);
    data.Y.push_back(y);
    const double error = isCoefficient ? ErrorOf(fit, name) : 1;
    data.SD.push_back(std::isfinite(error) ? error : 0);
  }
  if (!anyHeading) return Failure{"No heading of a column is a number. Please plot over the numbers of the columns."};
  std::erase_if(models, [&](const std::string& model) { return points[model].N() < 2; });
  if (models.empty()) return Failure{"There are fewer than two columns with a value of " + name + "."};
  const std::string xTitle = axis == SeriesAxis::Number ? "Number of the column" : "Heading of the column";
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Series";
  plot.X.AxisTitle = xTitle;
  plot.Y.AxisTitle = name;
  for (const std::string& model : models) {
    Result<PlotSeries> series = PointSeries(model, points[model], settings);
    if (!series) return Failure{series.error()};
    if (models.size() > 1) TellApart(series->Style(), plot.PlotData.size());
    plot.PlotData.push_back(std::move(*series));
  }
  return plot;
}

}  // namespace quorvex
