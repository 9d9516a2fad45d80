#include "plot/PlotEntries.h"

#include <algorithm>

#include "core/NumberText.h"
#include "core/QuietPrompter.h"

namespace quorvex {

PlotEntries::PlotEntries(const PlotPage& plot) : original_(plot.Clone()) {
  Pages = original_->Fields();
  for (PlotSeries& series : original_->PlotData)
    Series.push_back({.Title = "Line and markers", .Fields = original_->SeriesFields(series)});
  const auto read = [this](FieldGroup& group) {
    for (PropertyField& field : group.Fields) field.Entry = ValueOf(field, Locale());
  };
  for (FieldPage& page : Pages) std::ranges::for_each(page.Groups, read);
  std::ranges::for_each(Series, read);
}

template <typename Predicate>
bool PlotEntries::AnyField(Predicate holds) const {
  const auto any = [&](const FieldGroup& group) { return std::ranges::any_of(group.Fields, holds); };
  return std::ranges::any_of(Series, any) ||
         std::ranges::any_of(Pages, [&](const FieldPage& page) { return std::ranges::any_of(page.Groups, any); });
}

bool PlotEntries::Changed() const {
  return AnyField([this](const PropertyField& field) { return IsChanged(field); });
}

std::optional<PlotEntries::Refusal> PlotEntries::CheckRange(const PropertyField& field) const {
  if (field.OutOfRange.empty() || !IsChanged(field)) return std::nullopt;
  bool passes = false;
  if (field.Kind == FieldKind::Pattern) {
    passes = IsNumberPattern(std::get<std::string>(field.Entry));
  } else {
    const auto value = NumberOf(field, Locale());
    passes = value && *value >= field.Least && *value <= field.Most;
  }
  if (passes) return std::nullopt;
  return Refusal{field.OutOfRange, field.Control, std::nullopt};
}

std::optional<PlotEntries::Refusal> PlotEntries::CheckGroup(const FieldGroup& group) const {
  const std::vector<PropertyField>& fields = group.Fields;
  for (const PropertyField& field : fields)
    if (!field.NotANumber.empty() && !NumberOf(field, Locale()))
      return Refusal{field.NotANumber, field.Control, std::nullopt};
  // Limits next to each other may show the same digits.
  const auto limit = [&](ScaleField which) {
    return IsChanged(fields[which]) ? *NumberOf(fields[which], Locale()) : *std::get<double*>(fields[which].Place);
  };
  if (group.Scale && limit(kMinimum) >= limit(kMaximum))
    return Refusal{group.Scale->Limits, fields[kMinimum].Control, std::nullopt};
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (group.Scale && i == kLogScale && group.IsLogScale() && limit(kMinimum) <= 0)
      return Refusal{group.Scale->LogScale, fields[kMinimum].Control, std::nullopt};
    if (group.IsDecided(i)) continue;
    if (auto refusal = CheckRange(fields[i])) return refusal;
  }
  return std::nullopt;
}

std::optional<PlotEntries::Refusal> PlotEntries::Check() const {
  for (const FieldPage& page : Pages)
    for (const FieldGroup& group : page.Groups)
      if (auto refusal = CheckGroup(group)) return refusal;
  for (std::size_t i = 0; i < Series.size(); ++i)
    for (const PropertyField& field : Series[i].Fields)
      if (const auto refusal = CheckRange(field)) return Refusal{refusal->Message, refusal->Control, i};
  return std::nullopt;
}

void PlotEntries::WriteSeries(PlotPage& plot) const {
  for (std::size_t s = 0; s < Series.size(); ++s) {
    const std::vector<PropertyField> places = plot.SeriesFields(plot.PlotData[s]);
    for (std::size_t i = 0; i < places.size(); ++i)
      if (IsChanged(Series[s].Fields[i])) StoreEntry(Series[s].Fields[i], places[i].Place, Locale());
  }
}

void PlotEntries::Write(PlotPage& plot) const {
  const std::vector<FieldPage> pages = plot.Fields();
  for (std::size_t p = 0; p < Pages.size(); ++p)
    for (std::size_t g = 0; g < Pages[p].Groups.size(); ++g) {
      const FieldGroup& group = Pages[p].Groups[g];
      for (std::size_t i = 0; i < group.Fields.size(); ++i)
        if (IsChanged(group.Fields[i]) && !group.IsDecided(i))
          StoreEntry(group.Fields[i], pages[p].Groups[g].Fields[i].Place, Locale());
    }
  WriteSeries(plot);
  if (const auto angles = plot.Angles()) plot.SetAngles(*angles);
}

// Patterns that the program has chosen for the scales follow these, as long as the user chooses none.
bool PlotEntries::AutoFormat() const {
  return original_->AutoFormatted() &&
         !AnyField([this](const PropertyField& field) { return field.Kind == FieldKind::Pattern && IsChanged(field); });
}

bool PlotEntries::Create(PlotPage& plot, Prompter& prompter) const {
  plot.Assign(*original_);
  Write(plot);
  return plot.CreateGraph({.Regenerate = true, .AutoFormat = AutoFormat()}, prompter);
}

bool PlotEntries::Preview(PlotPage& plot) const {
  QuietPrompter nobody;
  if (Check()) return false;
  if (Create(plot, nobody)) return true;
  TakeBack(plot);
  return false;
}

void PlotEntries::TakeBack(PlotPage& plot) const {
  QuietPrompter nobody;
  plot.Assign(*original_);
  if (plot.PlotCreated) plot.CreateGraph({.Regenerate = true}, nobody);
}

bool PlotEntries::CalcScale() {
  std::vector<bool> log;
  for (const FieldPage& page : Pages)
    for (const FieldGroup& group : page.Groups)
      if (group.Scale) log.push_back(group.IsLogScale());
  const std::unique_ptr<PlotPage> plot = original_->Clone();
  WriteSeries(*plot);  // more or fewer may be shown
  const auto scales = plot->SuggestScale(log);
  if (!scales) return false;
  for (std::size_t axis = 0; axis < scales->size(); ++axis) plot->Axes()[axis]->Take((*scales)[axis]);
  const std::vector<FieldPage> suggested = plot->Fields();
  for (std::size_t p = 0; p < Pages.size(); ++p)
    for (std::size_t g = 0; g < Pages[p].Groups.size(); ++g)
      for (std::size_t i = kMinimum; Pages[p].Groups[g].Scale && i <= kLogScale; ++i)
        Pages[p].Groups[g].Fields[i].Entry = ValueOf(suggested[p].Groups[g].Fields[i], Locale());
  return true;
}

void PlotEntries::SaveDefaults(Settings& settings) const {
  const std::unique_ptr<PlotPage> plot = original_->Clone();
  Write(*plot);
  plot->StoreDefaults(settings);
}

}  // namespace quorvex
